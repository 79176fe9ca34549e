#ifndef SEARCHPATH_HOST_PATH_EXAMINATION_H
#define SEARCHPATH_HOST_PATH_EXAMINATION_H

#include "searchpath/export.h"
#include "searchpath/host/duration.h"
#include "searchpath/model/ustring.h"
#include "searchpath/platform/current_working_folder.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace Corvane::PathManagement::host {

/// What may be wrong with a path. A folder of the path that lies below another one is no fault:
/// both are searched.
enum class FindingKind : std::uint8_t {
  Missing,     ///< there is no such folder
  Unreadable,  ///< the folder cannot be searched
  Empty,       ///< neither the folder nor a special folder below it holds a file
  Repeat,      ///< the same folder as an earlier one, perhaps by a link
  Special,     ///< a main entry that is also the private, resources, "+" or "@" folder of another
  Slow,        ///< the folder takes long to list
  CaseCollision,  ///< files in main folders whose names differ in case alone
  NotUtf8,        ///< files whose names are not UTF-8
  // Where folders have no meaning:
  UnexpandedHome,  ///< no such folder: a part begins with "~", which nobody expands
  EmptyPart,       ///< an empty part, which means the working folder
  RelativePart,    ///< a part that depends on the working folder
  NotExecutable,   ///< files that look like programs and may not be executed
  BrokenLink,      ///< links that lead nowhere
};

/// The kind in words.
[[nodiscard]] SEARCHPATH_EXPORT const char* GetText(FindingKind kind) noexcept;

/// What to do about it, in words.
[[nodiscard]] SEARCHPATH_EXPORT const char* GetAdvice(FindingKind kind) noexcept;

/// One thing that is wrong with a path. Names and folders are as users read them.
struct PathFinding {
  FindingKind kind;    ///< what is wrong
  ustring folder;      ///< the folder; the first one when files in several are concerned
  ustring origin;      ///< the folder, as it was given, that brought `folder` onto the path
  ustring other = {};  ///< of a repeat: the earlier folder; of a special folder: its main folder
  std::vector<ustring> files = {};             ///< native paths of the files, in path order
  std::chrono::milliseconds listingTime = {};  ///< of a slow folder
  /// Of a missing or an unreadable folder: why it is missing or unreadable.
  std::optional<current_working_folder::AbsolutizeError> reason = {};
};

/// How a path is examined.
struct Examination {
  /// A folder that takes at least this long to list is slow.
  std::chrono::milliseconds slow = std::chrono::milliseconds(100);
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_PATH_EXAMINATION_H
