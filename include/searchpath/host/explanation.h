#ifndef SEARCHPATH_HOST_EXPLANATION_H
#define SEARCHPATH_HOST_EXPLANATION_H

#include "searchpath/export.h"
#include "searchpath/host/folder_origin.h"
#include "searchpath/model/found_item.h"
#include "searchpath/model/path_entry.h"
#include "searchpath/model/path_entry_type.h"
#include "searchpath/model/ustring.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace Corvane::PathManagement::host {

/// What came of searching one folder. "It" is a file of the name that was looked up. A method entry
/// of the name "fn" is a folder "@fn".
enum class FolderOutcome : std::uint8_t {
  HoldsIt,               ///< holds the file that the name means
  MethodEntry,           ///< holds that file, and is a method entry of that name
  HiddenByEarlier,       ///< holds a file of that name, which an earlier folder hides
  LosesToEarlierFolder,  ///< is a method entry of that name and holds a file of it, which an
                         ///< earlier folder hides
  OtherCaseOnly,         ///< holds the name only in another case
  Absent,                ///< holds no such file
  Unreadable,            ///< could not be searched
  DroppedAsRepeat,       ///< is not searched: the same folder is on the path as another entry
  FilteredOut,           ///< is not searched: hidden from the path
  BelowUnsearched,       ///< holds it only below a folder that is not searched for it
  // Only by the rules of other programs, see `LookupRules::foldersHaveMeaning`:
  NotExecutable,  ///< holds a file of that name that may not be executed
  IsFolder,       ///< holds a folder of that name
  BrokenLink,     ///< holds a link of that name that leads nowhere
  OtherType,      ///< holds a device, a socket or the like
  NotReadable,    ///< holds a file of that name that cannot be read
};

/// The outcome in words.
[[nodiscard]] SEARCHPATH_EXPORT const char* GetText(FolderOutcome outcome) noexcept;

/// Which rule decided what the name means. "It" is a file of that name. A method entry of the name
/// "fn" is a folder "@fn".
enum class DecidingRule : std::uint8_t {
  NothingFound,      ///< no rule: there is no such file
  FirstFolder,       ///< the first folder in path order that holds it
  MethodEntryFirst,  ///< a method entry of that name comes before every ordinary folder that holds
                     ///< it
  FolderBeforeMethod,  ///< the first folder that holds it comes before the method entries of that
                       ///< name, of which at least one holds it as well
  PrivateFolder,       ///< the private folder of the folder that asks comes before all others
  PartialPathname,     ///< the first folder in path order that matches the folders in the name and
                       ///< holds it
  // Only by the rules of other programs, see `LookupRules::foldersHaveMeaning`:
  AskersFolder,       ///< the folder of the file that asks comes before the path
  ThatFile,           ///< the name is that of one file; the path is not searched
  SearchEnded,        ///< a file that cannot be read ended the search
  NoneMayBeExecuted,  ///< there are files of that name, and none may be executed
};

/// The rule in words.
[[nodiscard]] SEARCHPATH_EXPORT const char* GetText(DecidingRule rule) noexcept;

/// One folder that a look-up searched. Folders that are hidden, and repeats that are dropped, are
/// listed here as well, without files.
struct AskedFolder {
  std::shared_ptr<const IPathEntry> folder;  ///< never null
  FolderOutcome outcome;                     ///< what came of searching it
  /// The files of the name in the folder, the best first; none for a hidden folder or a repeat.
  std::vector<FoundItem> files;
  /// Of a folder that is neither hidden nor a repeat, and has no file of the name: the files that
  /// the name would match there if case were ignored.
  std::vector<FoundItem> inOtherCase = {};
  /// Who put the folder on the path.
  FolderOrigin origin;
  /// Of a repeat: the entry for the same folder that is searched; else null.
  std::shared_ptr<const IPathEntry> repeated = nullptr;
  /// Of a hidden folder: the folder that hides it, as it was given.
  ustring hider = {};
  /// Of `BelowUnsearched` and the outcomes after it: the native path of what is there instead.
  ustring instead = {};
  /// Of `BelowUnsearched`: the kind of the folder that keeps the file from being searched.
  std::optional<PathEntryType> unsearchedKind = {};
};

/// Why a name means the file that it means.
struct Explanation {
  /// The answer of `Environment::FindAll`: the file that is meant, then the files that it hides.
  std::vector<FoundItem> files;
  DecidingRule rule;               ///< why the first of `files` is the first
  std::vector<AskedFolder> asked;  ///< every folder asked, in the order asked
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_EXPLANATION_H
