#include "host/trust/permission.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

namespace Corvane::PathManagement::host {

namespace {

using Kind = AccessEntry::Kind;

/// Whether all that is `wanted` is among the `rights`.
bool Grants(unsigned rights, unsigned wanted) { return (wanted & ~rights) == 0; }

/// What an access-control list says about a user.
struct ListAnswer {
  bool concerns = false;  // whether an entry is for the user; otherwise the others' rights count
  std::optional<Permission> permission = {};  // empty when such entries do not grant the rights
};

ListAnswer AskList(const AccessFacts& facts, const PermissionSeeker& seeker, unsigned wanted) {
  const auto mask = std::find_if(facts.list.begin(), facts.list.end(),
                                 [](const auto& entry) { return entry.kind == Kind::Mask; });
  // What any entry grants at most; without a mask, everything.
  const unsigned most = mask == facts.list.end() ? R_OK | W_OK | X_OK : mask->rights;
  ListAnswer answer;
  for (const AccessEntry& entry : facts.list) {  // in every list, users come before groups
    const bool isUser = entry.kind == Kind::User;
    const gid_t group = entry.kind == Kind::OwningGroup ? facts.group : entry.id;
    if (entry.kind == Kind::Mask) continue;
    if (isUser ? seeker.user != entry.id : !seeker.isIn(group)) continue;
    answer.concerns = true;
    if (Grants(entry.rights & most, wanted)) {
      answer.permission =
          isUser ? Permission{Capacity::NamedUser} : Permission{Capacity::Group, group};
    }
    // One entry has to grant all that is wanted. After an entry for the user, no group is asked.
    if (isUser || answer.permission) break;
  }
  return answer;
}

}  // namespace

std::optional<Permission> FindPermission(const AccessFacts& facts, const PermissionSeeker& seeker,
                                         unsigned wanted) {
  if (seeker.user == facts.owner) return Permission{Capacity::Owner};
  const unsigned group = (facts.mode & S_IRWXG) >> 3U;  // with the values of R_OK, W_OK and X_OK
  if (!facts.list.empty()) {
    const ListAnswer answer = AskList(facts, seeker, wanted);
    if (answer.concerns) return answer.permission;
  } else if (seeker.isIn(facts.group)) {
    if (Grants(group, wanted)) return Permission{Capacity::Group, facts.group};
    return std::nullopt;
  }
  if (Grants(facts.mode & S_IRWXO, wanted)) return Permission{Capacity::Others};
  return std::nullopt;
}

}  // namespace Corvane::PathManagement::host
