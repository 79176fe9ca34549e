#ifndef SEARCHPATH_SRC_HOST_TRUST_ACCOUNTS_H
#define SEARCHPATH_SRC_HOST_TRUST_ACCOUNTS_H

#include "host/trust/access_facts.h"
#include "host/trust/permission.h"

#include <sys/types.h>

#include <list>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Corvane::PathManagement::host {

/// A user who is not trusted.
struct Suspect {
  std::optional<uid_t> id;  // empty for somebody without account and group, who stands for everyone
  gid_t primaryGroup = 0;   // of one with an id
  std::string name = {};
};

/// The users and groups of this machine, divided into those who are trusted and those who are not.
///
/// Threads: not synchronised; give each thread its own.
class Accounts {
 public:
  /// Trusts root and `user`.
  ///
  /// Cost: reads the whole user database.
  explicit Accounts(uid_t user);
  Accounts(const Accounts&) = delete;
  Accounts& operator=(const Accounts&) = delete;
  ~Accounts() = default;

  [[nodiscard]] bool IsTrusted(uid_t user) const noexcept { return user == 0 || user == trusted; }

  /// Adds the suspects whom `facts` concern: the owner, users in the list, and the members of the
  /// groups.
  void AddSuspectsOf(const AccessFacts& facts);

  /// All suspects who are known by now. To ask one of their seekers for a group may add more at the
  /// end, even during a loop over them; pointers to them stay valid.
  [[nodiscard]] const std::list<Suspect>& GetSuspects() const noexcept { return suspects; }

  /// `suspect` as `FindPermission` takes users. Precondition: these accounts and `suspect` outlive
  /// the result.
  [[nodiscard]] PermissionSeeker GetSeeker(const Suspect& suspect);

  /// The name of the group, or its number when it has none.
  [[nodiscard]] std::string GetGroupName(gid_t group) { return GroupOf(group).name; }

 private:
  struct Group {
    std::string name;
    std::set<std::string> members;  // without those who are in it by their primary group alone
  };

  void AddUser(uid_t user);
  Group& GroupOf(gid_t id);

  uid_t trusted;  // the one user beside root
  std::list<Suspect> suspects;
  std::set<uid_t> knownUsers;     // the trusted ones as well
  std::map<gid_t, Group> groups;  // those that were asked for
};

/// The id of the user with that name; empty when there is none.
[[nodiscard]] std::optional<uid_t> FindUserId(const std::string& name);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_TRUST_ACCOUNTS_H
