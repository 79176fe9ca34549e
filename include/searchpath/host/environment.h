#ifndef SEARCHPATH_HOST_ENVIRONMENT_H
#define SEARCHPATH_HOST_ENVIRONMENT_H

#include "searchpath/export.h"
#include "searchpath/host/explanation.h"
#include "searchpath/host/folder_path.h"
#include "searchpath/host/folder_problem.h"
#include "searchpath/host/similar_file.h"
#include "searchpath/host/working_folder.h"
#include "searchpath/model/filename_matching_policy.h"
#include "searchpath/model/found_item.h"
#include "searchpath/model/ustring.h"

#include <boost/optional.hpp>

#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>
#include <optional>
#include <vector>

namespace Corvane::PathManagement::host {

/// A question to an `Environment`: which file does a name mean?
struct Lookup {
  /// A file name, or a partial pathname with separators.
  ustring name;
  /// Tried in order, each with its dot, unless the name carries an extension of its own.
  std::vector<ustring> extensions = {};
  /// The folder that asks, as a user types it: its private folder comes first.
  std::optional<ustring> fromFolder = {};
  FilenameMatchingPolicy policy = FilenameMatchingPolicy::FileSystemDefault;
};

/// How the folders that an `Environment` is given become its path.
enum class FolderExpansion : std::uint8_t {
  Alone,      ///< each folder by itself
  Recursive,  ///< each folder and all ordinary folders below it, see `CreateFolderTree`
};

/// A working environment on this machine's folders: a search path and what is needed to ask it.
///
/// Threads: all operations, from any thread.
/// Errors: a folder that cannot be searched is a problem; the rest of the path is searched.
class SEARCHPATH_EXPORT Environment {
 public:
  /// `folders` are folders as users type them, see `WorkingFolder`. One that names no place at all
  /// is left out and is a problem. For a search-path string, hand in its `SplitZentraPath`.
  explicit Environment(const std::vector<ustring>& folders,
                       FolderExpansion expansion = FolderExpansion::Alone);
  ~Environment();

  [[nodiscard]] const std::shared_ptr<const FolderPath>& GetPath() const noexcept { return path; }
  [[nodiscard]] const WorkingFolder& GetWorkingFolder() const noexcept { return workingFolder; }

  /// The file that the name means; empty when there is none.
  ///
  /// Errors: `FailedToAbsolutizeException` when the folder that asks cannot be used.
  [[nodiscard]] boost::optional<FoundItem> Find(const Lookup& lookup) const;

  /// Every file that the name could mean: the one that it does, then those that it hides, in path
  /// order.
  ///
  /// Errors: as `Find`.
  [[nodiscard]] std::vector<FoundItem> FindAll(const Lookup& lookup) const;

  /// What `FindAll` answers, and why: every folder that was asked, in order, and what came of it.
  ///
  /// Errors: as `Find`.
  /// Cost: asks folder by folder; not for the hot path.
  [[nodiscard]] Explanation Explain(const Lookup& lookup) const;

  /// At most `most` files that may have been meant by a name that was not found, the most similar
  /// first. Only plain names have similar ones.
  ///
  /// Cost: reads every name on the path.
  [[nodiscard]] std::vector<SimilarFile> FindSimilar(const Lookup& lookup,
                                                     std::size_t most = 3) const;

  /// The folders that cannot be searched: first those that name no place, then in path order.
  [[nodiscard]] std::vector<FolderProblem> FindProblems() const;

 private:
  [[nodiscard]] std::optional<AbsoluteIRI> AskerOf(const Lookup& lookup) const;

  WorkingFolder workingFolder;
  std::vector<ustring> origins;          // of the main entries: the folder given that brought each
  std::vector<FolderProblem> unlocated;  // folders given that name no place
  std::shared_ptr<const FolderPath> path;
};

/// The folders of a list that holds one folder or IRI a line; empty lines are dropped, nothing is
/// trimmed. Unlike a search-path string it can hold every folder but one whose name has a line
/// break.
[[nodiscard]] SEARCHPATH_EXPORT std::vector<ustring> ReadFolderList(std::istream& list);

/// The native path of a found file, below the folder as it was given to the path.
[[nodiscard]] SEARCHPATH_EXPORT ustring GetNativePath(const FoundItem& found);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_ENVIRONMENT_H
