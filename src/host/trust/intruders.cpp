#include "host/trust/intruders.h"

#include "searchpath/model/byte_text.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

constexpr unsigned kToPass = X_OK;
constexpr unsigned kToWrite = W_OK;
constexpr unsigned kToMakeNames = W_OK | X_OK;

/// Whether `seeker` can pass `folder` and those above it.
bool Passes(const PermissionSeeker& seeker, const PassedFolder* folder) {
  for (; folder != nullptr; folder = folder->above.get()) {
    if (!FindPermission(folder->facts, seeker, kToPass)) return false;
  }
  return true;
}

}  // namespace

std::vector<Intruder> Intruders::Join() const {
  std::vector<Intruder> all = owners;
  all.insert(all.end(), others.begin(), others.end());
  return all;
}

Intruders IntruderSearch::FindCreators(const PassedFolder& folder) const {
  return Describe(FindAble(folder.above.get(), folder.facts, kToMakeNames));
}

Intruders IntruderSearch::FindReplacers(const PassedFolder& folder,
                                        const AccessFacts& object) const {
  accounts.AddSuspectsOf(object);  // its owner may not be a suspect yet
  std::vector<Able> able = FindAble(folder.above.get(), folder.facts, kToMakeNames);
  if ((folder.facts.mode & S_ISVTX) != 0) {  // only these two owners may then rename or remove
    std::erase_if(able, [&](const Able& one) {
      return one.suspect->id != object.owner && one.suspect->id != folder.facts.owner;
    });
  }
  return Describe(able);
}

Intruders IntruderSearch::FindWriters(const PassedFolder& folder, const AccessFacts& file) const {
  return Describe(FindAble(&folder, file, kToWrite));
}

/// Those who can pass `above` and the folders above that, and have the rights `wanted` to `object`.
/// `above` is null for the root.
std::vector<IntruderSearch::Able> IntruderSearch::FindAble(const PassedFolder* above,
                                                           const AccessFacts& object,
                                                           unsigned wanted) const {
  const bool isClosed = (object.mode & (S_IWGRP | S_IWOTH)) == 0;
  // The usual case. Nobody need be looked up in the user database.
  if (isClosed && accounts.IsTrusted(object.owner)) return {};
  accounts.AddSuspectsOf(object);
  for (const PassedFolder* folder = above; folder != nullptr; folder = folder->above.get()) {
    accounts.AddSuspectsOf(folder->facts);
  }
  std::vector<Able> able;
  for (const Suspect& suspect : accounts.GetSuspects()) {
    const PermissionSeeker seeker = accounts.GetSeeker(suspect);
    const auto permission = FindPermission(object, seeker, wanted);
    if (permission && Passes(seeker, above)) able.push_back({&suspect, *permission});
  }
  return able;
}

/// Joins the members of a group, and all but owners if everyone is able.
Intruders IntruderSearch::Describe(const std::vector<Able>& able) const {
  Intruders found;
  const bool isEveryone = std::any_of(able.begin(), able.end(),
                                      [](const Able& one) { return !one.suspect->id.has_value(); });
  if (isEveryone) found.others.push_back({.kind = Intruder::Kind::Everyone});
  for (const Able& one : able) {
    const bool isOwner = one.permission.capacity == Capacity::Owner;
    if (isEveryone && !isOwner) continue;  // an owner can whatever the permissions are
    Intruder intruder = Describe(one);
    auto& list = isOwner ? found.owners : found.others;
    const auto same = std::find_if(list.begin(), list.end(), [&](const Intruder& known) {
      return known.kind == Intruder::Kind::Group && intruder.kind == known.kind &&
             known.name == intruder.name;
    });
    if (same == list.end()) {
      list.push_back(std::move(intruder));
    } else {
      same->users.push_back(intruder.users.front());
      same->members.push_back(intruder.members.front());
    }
  }
  return found;
}

Intruder IntruderSearch::Describe(const Able& one) const {
  const ustring name = TextFromBytes(one.suspect->name);
  if (one.permission.capacity != Capacity::Group) {
    return {Intruder::Kind::User, name, {one.suspect->id.value()}};
  }
  return {Intruder::Kind::Group,
          TextFromBytes(accounts.GetGroupName(one.permission.group)),
          {one.suspect->id.value()},
          {name}};
}

}  // namespace Corvane::PathManagement::host
