#ifndef SEARCHPATH_TOOLS_SEARCHPATH_PROFILES_H
#define SEARCHPATH_TOOLS_SEARCHPATH_PROFILES_H

#include "profile.h"

#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

/// All profiles: those that are built in, then the user's own. An own one takes the place of a
/// built-in one of that name.
///
/// Errors: `UsageError` when the file of profiles cannot be used.
[[nodiscard]] std::vector<Profile> GetProfiles();

/// The profile of that name. Errors: also `UsageError` when there is none.
[[nodiscard]] Profile GetProfile(const std::string& name);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_PROFILES_H
