#ifndef SEARCHPATH_TOOLS_SEARCHPATH_PROFILES_H
#define SEARCHPATH_TOOLS_SEARCHPATH_PROFILES_H

#include "profile.h"

#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

/// All profiles: those that are built in, then the user's own. A profile of the user replaces the
/// built-in one of the same name, in its place.
///
/// Errors: `UsageError` when the user's file of profiles cannot be used.
[[nodiscard]] std::vector<Profile> GetProfiles();

/// The profile called `name`. Errors: as `GetProfiles`, and `UsageError` when there is none.
[[nodiscard]] Profile GetProfile(const std::string& name);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_PROFILES_H
