#ifndef SEARCHPATH_TOOLS_SEARCHPATH_PROFILE_FILE_H
#define SEARCHPATH_TOOLS_SEARCHPATH_PROFILE_FILE_H

#include "profile.h"

#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

/// The profiles in "profiles.json", which is in the folder of the stored path's file; none when
/// "profiles.json" does not exist.
///
/// Errors: `UsageError` when the file cannot be read, or holds no valid profiles; the message then
/// names the file, the line and the field.
[[nodiscard]] std::vector<Profile> ReadProfiles();

/// The profiles in `bytes`, the content of `file`. Errors: as `ReadProfiles`.
[[nodiscard]] std::vector<Profile> ParseProfiles(const std::string& file, const std::string& bytes);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_PROFILE_FILE_H
