#ifndef SEARCHPATH_SRC_HOST_TRUST_PERMISSION_H
#define SEARCHPATH_SRC_HOST_TRUST_PERMISSION_H

#include "host/trust/access_facts.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace Corvane::PathManagement::host {

/// What a user has a right as.
enum class Capacity : std::uint8_t { Owner, NamedUser, Group, Others };

struct Permission {
  Capacity capacity = Capacity::Others;
  gid_t group = 0;  // of capacity Group: which one
};

/// A user as permissions know users.
struct PermissionSeeker {
  std::optional<uid_t> user;  // empty for one whom no file names
  std::function<bool(gid_t)> isIn;
};

/// How `seeker` has, or can get, all the rights `wanted`: a sum of R_OK, W_OK and X_OK. The owner can
/// get any. Decides as the kernel does, from the facts alone.
[[nodiscard]] std::optional<Permission> FindPermission(const AccessFacts& facts,
                                                       const PermissionSeeker& seeker,
                                                       unsigned wanted);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_TRUST_PERMISSION_H
