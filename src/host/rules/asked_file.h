#ifndef SEARCHPATH_SRC_HOST_RULES_ASKED_FILE_H
#define SEARCHPATH_SRC_HOST_RULES_ASKED_FILE_H

#include "searchpath/host/lookup_rules.h"

#include <sys/types.h>

#include <cstdint>
#include <string>

namespace Corvane::PathManagement::host {

/// What a look at a path on disk finds.
enum class Standing : std::uint8_t {
  Counts,         ///< a file that counts by `LookupRules::Files`
  Absent,         ///< nothing, or a link that leads nowhere
  Folder,         ///< a folder
  OtherType,      ///< a device, a socket or the like; never where readable files count
  NotExecutable,  ///< a file that this process may not execute
  NotReadable,    ///< where readable files count: may not be read, or never is, as a socket
  NotReachable,   ///< unknown: the look failed, as in a folder that may not be searched
};

/// Whether something of this type may count, if this process has the right that `files` asks for.
[[nodiscard]] bool MayCount(mode_t mode, LookupRules::Files files) noexcept;

/// What stands at `path`, judged with the effective rights of this process. `files` says what
/// counts.
///
/// Cost: one system call, and a second one where a right decides.
[[nodiscard]] Standing LookAtFile(const std::string& path, LookupRules::Files files);

/// The same for an open file; `O_PATH` is enough.
[[nodiscard]] Standing LookAtFile(int descriptor, LookupRules::Files files);

/// Whether a link stands at `path` that leads nowhere.
[[nodiscard]] bool IsBrokenLink(const std::string& path);

/// Whether the search ends without an answer where it meets `standing`; see `LookupRules::Files`.
[[nodiscard]] inline bool EndsSearch(Standing standing, LookupRules::Files files) noexcept {
  return files == LookupRules::Files::Readable &&
         (standing == Standing::NotReadable || standing == Standing::NotReachable);
}

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RULES_ASKED_FILE_H
