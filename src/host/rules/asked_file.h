#ifndef SEARCHPATH_SRC_HOST_RULES_ASKED_FILE_H
#define SEARCHPATH_SRC_HOST_RULES_ASKED_FILE_H

#include "searchpath/host/lookup_rules.h"

#include <sys/types.h>

#include <cstdint>
#include <string>

namespace Corvane::PathManagement::host {

/// What a look at a path on disk finds.
enum class Standing : std::uint8_t {
  Counts,         ///< a file that `LookupRules::Files` counts, so that it can be an answer
  Absent,         ///< nothing, or a link that leads nowhere
  Folder,         ///< a folder
  OtherType,      ///< a device, a socket or the like; under `Files::Readable`, see NotReadable
  NotExecutable,  ///< under `Files::Executable`: a file that this process may not execute
  NotReadable,    ///< under `Files::Readable`: may not be read, or never can be, as a socket
  NotReachable,   ///< unknown: the look failed, as in a folder that may not be searched
};

/// Whether something with the type in `mode` counts if this process has the right that `files` asks
/// for.
[[nodiscard]] bool MayCount(mode_t mode, LookupRules::Files files) noexcept;

/// What stands at `path`, or where the link at `path` leads, judged with the effective rights of
/// this process. `files` says what counts.
///
/// Cost: one system call, and a second one where a right decides.
[[nodiscard]] Standing LookAtFile(const std::string& path, LookupRules::Files files);

/// The same for an open file; `O_PATH` is enough.
[[nodiscard]] Standing LookAtFile(int descriptor, LookupRules::Files files);

/// Whether a link stands at `path` that leads nowhere.
[[nodiscard]] bool IsBrokenLink(const std::string& path);

/// Whether a search ends without an answer where it meets `standing`: so it does at a file that
/// cannot be read, where readable files count; see `LookupRules::Files`.
[[nodiscard]] inline bool EndsSearch(Standing standing, LookupRules::Files files) noexcept {
  return files == LookupRules::Files::Readable &&
         (standing == Standing::NotReadable || standing == Standing::NotReachable);
}

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RULES_ASKED_FILE_H
