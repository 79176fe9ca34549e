#ifndef SEARCHPATH_SRC_HOST_RULES_ASKED_FILE_H
#define SEARCHPATH_SRC_HOST_RULES_ASKED_FILE_H

#include "searchpath/host/lookup_rules.h"

#include <cstdint>
#include <string>

namespace Corvane::PathManagement::host {

/// What stands where a file is looked for.
enum class Standing : std::uint8_t {
  Counts,         ///< a file that counts
  Absent,         ///< nothing, or a link that leads nowhere
  Folder,         ///< a folder
  OtherType,      ///< a device, a socket or the like
  NotExecutable,  ///< a file that this process may not execute
  NotReadable,    ///< a file that this process may not read, or something that cannot be opened
  NotReachable,   ///< unknown: the system refuses to look there
};

/// Looks at `path` with the effective rights of this process.
///
/// Cost: one system call where nothing stands, and one more for a right that counts.
[[nodiscard]] Standing LookAtFile(const std::string& path, LookupRules::Files files);

/// The same of a file that is open, perhaps for its path alone.
[[nodiscard]] Standing LookAtFile(int descriptor, LookupRules::Files files);

/// Whether a link stands at `path` that leads nowhere.
[[nodiscard]] bool IsBrokenLink(const std::string& path);

/// Whether what stands somewhere ends the search, so that no later folder is asked.
[[nodiscard]] inline bool EndsSearch(Standing standing, LookupRules::Files files) noexcept {
  return files == LookupRules::Files::Readable &&
         (standing == Standing::NotReadable || standing == Standing::NotReachable);
}

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RULES_ASKED_FILE_H
