#ifndef SEARCHPATH_SRC_HOST_TRUST_PERMISSION_H
#define SEARCHPATH_SRC_HOST_TRUST_PERMISSION_H

#include "host/trust/access_facts.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace Corvane::PathManagement::host {

/// In which capacity a user has a right. A `NamedUser` has an entry in an access-control list; a
/// `Group` is that of the file, or has an entry.
enum class Capacity : std::uint8_t { Owner, NamedUser, Group, Others };

struct Permission {
  Capacity capacity = Capacity::Others;
  gid_t group = 0;  // by which the user has the right; set for capacity Group alone
};

/// Somebody whose permissions are in question.
struct PermissionSeeker {
  std::optional<uid_t> user;        // empty for somebody who owns nothing and has no list entry
  std::function<bool(gid_t)> isIn;  // whether the user is in a group
};

/// How `seeker` has, or can get, all the rights `wanted`, a sum of R_OK, W_OK and X_OK; empty when
/// that is impossible. The owner can get any right; others have those that the kernel would grant
/// by `facts`. Asks the disk nothing.
[[nodiscard]] std::optional<Permission> FindPermission(const AccessFacts& facts,
                                                       const PermissionSeeker& seeker,
                                                       unsigned wanted);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_TRUST_PERMISSION_H
