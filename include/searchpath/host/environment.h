#ifndef SEARCHPATH_HOST_ENVIRONMENT_H
#define SEARCHPATH_HOST_ENVIRONMENT_H

#include "searchpath/export.h"
#include "searchpath/host/explanation.h"
#include "searchpath/host/folder_entry.h"
#include "searchpath/host/folder_expansion.h"
#include "searchpath/host/folder_list.h"
#include "searchpath/host/folder_lookup.h"
#include "searchpath/host/folder_origin.h"
#include "searchpath/host/folder_problem.h"
#include "searchpath/host/main_search_path_manager.h"
#include "searchpath/host/native_location.h"
#include "searchpath/host/path_entry_factory.h"
#include "searchpath/host/path_examination.h"
#include "searchpath/host/shadow_search.h"
#include "searchpath/host/similar_files.h"
#include "searchpath/host/working_folder.h"
#include "searchpath/model/filename_matching_policy.h"
#include "searchpath/model/found_item.h"
#include "searchpath/model/path.h"
#include "searchpath/model/ustring.h"

#include <boost/optional.hpp>

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace Corvane::PathManagement::host {

class PackageRegistry;
class PathView;

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

/// What an `Environment` is made of.
struct EnvironmentOptions {
  /// As users type them, see `WorkingFolder`. One that names no place at all is left out and is a
  /// problem. For a search-path string, hand in its `SplitZentraPath`.
  std::vector<ustring> folders = {};
  /// Where they were named, for whoever asks who put a folder on the path.
  FolderSource source = FolderSource::Given;
  FolderExpansion expansion = FolderExpansion::Alone;
  /// Whether a folder that is given twice, perhaps by a link, is on the path twice. Otherwise it is
  /// there once, at its first place.
  bool keepDuplicates = false;
  /// Folders that are not to be on the path: each is hidden with the special folders below it, and
  /// with all folders below it when folders are expanded.
  std::vector<ustring> without = {};
  /// Folders that one of them holds are not read again while they are fresh; the first that has a
  /// folder counts. They may have been made for other paths: which folders are searched is up to
  /// `folders` alone, and what no cache holds is read.
  std::vector<PathEntryFactory> caches = {};
  /// A root of packages, as a user types it, see `PackageRegistry`. The folders that its packages
  /// put on the path come behind all others, each by itself.
  std::optional<ustring> packages = {};
};

/// A working environment on this machine's folders: a search path and what is needed to ask it.
///
/// Threads: all operations, from any thread.
/// Errors: a folder that cannot be searched is a problem; the rest of the path is searched.
class SEARCHPATH_EXPORT Environment {
 public:
  explicit Environment(const EnvironmentOptions& options);
  explicit Environment(const std::vector<ustring>& folders,
                       FolderExpansion expansion = FolderExpansion::Alone);
  /// The path that `cache` was made for.
  explicit Environment(const PathEntryFactory& cache);
  ~Environment();

  /// The path that is asked: a `FolderPath`, seen without repeats and hidden folders. Its entries
  /// are `FolderEntry` objects.
  [[nodiscard]] const std::shared_ptr<const IPath>& GetPath() const noexcept;
  /// Its main entries, as the folders that they are.
  [[nodiscard]] std::vector<std::shared_ptr<const FolderEntry>> GetMainFolders() const;
  [[nodiscard]] const WorkingFolder& GetWorkingFolder() const noexcept { return workingFolder; }

  /// The packages below the root that was given; null when none was. Which of them cannot be used
  /// is known there.
  [[nodiscard]] const std::shared_ptr<const PackageRegistry>& GetPackages() const noexcept {
    return packages;
  }
  /// Who put the folder that `entry` is for on the path. Precondition: `entry` is on the path.
  [[nodiscard]] FolderOrigin FindOrigin(const IPathEntry& entry) const;

  /// A manager of this path, for a program whose path changes: it begins with the folders of
  /// `GetMainFolders`, the same entries, and knows the packages whose folders were put there.
  [[nodiscard]] std::unique_ptr<MainSearchPathManager> CreateManager() const;

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

  /// The entries that the name of a folder denotes, in path order, special folders too.
  [[nodiscard]] std::vector<std::shared_ptr<const IPathEntry>> FindFolders(
      const FolderLookup& lookup) const;

  /// At most `most` folders of the path that may have been meant by a name that denotes none: their
  /// last part is called so in another case, without its "+" or "@", or but for one letter.
  ///
  /// Cost: lists every folder.
  [[nodiscard]] std::vector<std::shared_ptr<const IPathEntry>> FindSimilarFolders(
      const FolderLookup& lookup, std::size_t most = 3) const;

  /// The names that hide files, and what the hidden ones are to those that hide them.
  ///
  /// Cost: reads every name on the path, and the files that have one name and one size; on all
  /// processors.
  [[nodiscard]] ShadowReport FindShadows(const ShadowLookup& lookup = {}) const;

  /// What is wrong with the path: folder by folder in path order, each file name that collides at
  /// the end. Folders that are hidden are not examined.
  ///
  /// Cost: reads every name on the path. What has been listed before is not listed again: then the
  /// time that it took is the one of that time.
  [[nodiscard]] std::vector<PathFinding> Examine(const Examination& examination = {}) const;

  /// The folders that cannot be searched: first those that name no place, a root of packages that
  /// cannot be read and folders of packages that lead into a loop of links, then in path order.
  [[nodiscard]] std::vector<FolderProblem> FindProblems() const;

  /// The folders that the path was to be without and that hide nothing, as they were given.
  ///
  /// Cost: lists every folder of the path, unless each hides a main entry.
  [[nodiscard]] std::vector<ustring> FindIdleExclusions() const;

 private:
  [[nodiscard]] std::optional<AbsoluteIRI> AskerOf(const Lookup& lookup) const;

  WorkingFolder workingFolder;
  std::shared_ptr<const PackageRegistry> packages;
  std::shared_ptr<const PathView> view;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_ENVIRONMENT_H
