#ifndef SEARCHPATH_HOST_EXPLANATION_H
#define SEARCHPATH_HOST_EXPLANATION_H

#include "searchpath/export.h"
#include "searchpath/host/folder_origin.h"
#include "searchpath/model/found_item.h"
#include "searchpath/model/path_entry.h"
#include "searchpath/model/ustring.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace Corvane::PathManagement::host {

/// What came of asking one folder.
enum class FolderOutcome : std::uint8_t {
  HoldsIt,               ///< holds the file that the name means
  MethodEntry,           ///< holds it, and is a method entry of that name
  HiddenByEarlier,       ///< holds a file of that name, which an earlier folder hides
  LosesToEarlierFolder,  ///< a method entry that holds a file of that name behind the folder that
                         ///< decided
  OtherCaseOnly,         ///< holds the name only in another case
  Absent,                ///< holds no such file
  Unreadable,            ///< could not be searched
  DroppedAsRepeat,       ///< not asked: the path holds the same folder elsewhere
  FilteredOut,           ///< not asked: hidden from the path
};

/// The outcome in words.
[[nodiscard]] SEARCHPATH_EXPORT const char* GetText(FolderOutcome outcome) noexcept;

/// Why the file that was found is the one.
enum class DecidingRule : std::uint8_t {
  NothingFound,
  FirstFolder,       ///< the first folder in path order that holds it
  MethodEntryFirst,  ///< a method entry of that name comes before every ordinary folder that holds
                     ///< it
  FolderBeforeMethod,  ///< the first folder that holds it does not come after the method entry that
                       ///< does
  PrivateFolder,       ///< the private folder of the folder that asks comes before all others
  PartialPathname,     ///< the first folder in path order whose trailing folders the name gives
};

/// The rule in words.
[[nodiscard]] SEARCHPATH_EXPORT const char* GetText(DecidingRule rule) noexcept;

/// One folder that a look-up asked, or would have asked if it were not dropped or hidden.
struct AskedFolder {
  std::shared_ptr<const IPathEntry> folder;
  FolderOutcome outcome;
  std::vector<FoundItem> files;  ///< its matches, the best first; none of one that was not asked
  std::vector<FoundItem> inOtherCase = {};  ///< of one without matches: what the name would match
                                            ///< if case were ignored
  FolderOrigin origin;                      ///< who put it on the path
  std::shared_ptr<const IPathEntry> repeated =
      nullptr;         ///< of a repeat: what it repeats, else null
  ustring hider = {};  ///< of one that is filtered out: the folder, as it was given, that hides it
};

/// Why a name means the file that it means.
struct Explanation {
  std::vector<FoundItem>
      files;  ///< what `Environment::FindAll` answers: the file meant, then the hidden
  DecidingRule rule;
  std::vector<AskedFolder> asked;  ///< every folder asked, in the order asked
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_EXPLANATION_H
