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
#include "searchpath/host/lookup_rules.h"
#include "searchpath/host/name_pattern.h"
#include "searchpath/host/native_location.h"
#include "searchpath/host/path_entry_factory.h"
#include "searchpath/host/path_examination.h"
#include "searchpath/host/shadow_search.h"
#include "searchpath/host/similar_files.h"
#include "searchpath/host/trust.h"
#include "searchpath/host/working_folder.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/any_text.h"
#include "searchpath/model/filename_matching_policy.h"
#include "searchpath/model/found_item.h"
#include "searchpath/model/path.h"
#include "searchpath/model/ustring.h"

#include <boost/optional.hpp>

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace Corvane::PathManagement::host {

class MainSearchPathManager;
class OpenedFile;
struct NameChange;
class PackageRegistry;
class PathView;
class Receipt;
class RuledPath;

/// A question to an `Environment`: which file does a name mean?
struct Lookup {
  /// A file name, or a partial pathname with separators.
  AnyText name;
  /// Tried in order unless the name carries an extension of its own: "zt" or ".zt".
  AnyTexts extensions = {};
  /// The folder of the code that asks, as a user types it: its private folder comes first. Where
  /// folders have no meaning, the folder itself does.
  std::optional<AnyText> fromFolder = {};
  /// Where folders have no meaning, names are compared as they are, whatever this is.
  FilenameMatchingPolicy policy = FilenameMatchingPolicy::FileSystemDefault;
  /// A folder, as a user types it: only folders that stand behind it on the path are asked, or all
  /// when it is not on the path. Counts where folders have no meaning; `fromFolder` does not count
  /// beside it.
  std::optional<AnyText> afterFolder = {};
};

/// What an `Environment` is made of.
struct EnvironmentOptions {
  /// As users type them, see `WorkingFolder`. One that has no location is left out and
  /// reported as a problem. For a search-path string, hand in its `SplitZentraPath`.
  AnyTexts folders = {};
  /// What relative texts are below; empty means the working folder of the process.
  std::optional<AbsoluteIRI> workingFolder = {};
  /// Where they were named: for `FindOrigin` and `Explain`.
  FolderSource source = FolderSource::Given;
  FolderExpansion expansion = FolderExpansion::Alone;  ///< whether ordinary folders below count
  /// Whether a folder that is given twice, perhaps by a link, is on the path twice. Otherwise it is
  /// there once, where it was given first.
  bool keepDuplicates = false;
  /// Folders that are not to be on the path: each is hidden with the special folders below it, and
  /// with all folders below it when folders are expanded.
  AnyTexts without = {};
  /// A folder that a cache holds is not read while its listing there is fresh; the first cache that
  /// holds the folder counts. A folder that none holds is read. Caches that were made for other
  /// paths will do: they put no folder on this path.
  std::vector<PathEntryFactory> caches = {};
  /// A root of packages, as a user types it, see `PackageRegistry`. The folders of its packages
  /// come behind all others and are never expanded.
  std::optional<AnyText> packages = {};
  /// What names mean on the path, and what parts of it mean.
  LookupRules rules = {};
  /// Folders that come before all others for a question with `Lookup::fromFolder`, and only then.
  /// Only where folders have no meaning.
  AnyTexts quoteFolders = {};
  /// How long the disk is waited for, for each folder of the path and below it; empty means as long as
  /// it takes. A folder for which the disk has not answered by then is a problem, `NoAnswer`, counts
  /// as empty, and is not asked again; the answers for all others are right.
  ///
  /// Threads: where there is a limit, each question to the disk gets a thread of its own, which costs
  /// some 20 us. A thread that waits in the kernel cannot be stopped. One whose folder has been given
  /// up goes on waiting, owned by nobody and using nothing of the environment's, until the disk
  /// answers or the process ends.
  std::optional<std::chrono::milliseconds> timeout = {};
};

/// A working environment on this machine's folders: a search path and what is needed to ask it.
///
/// Threads: all operations, from any thread.
/// Errors: a folder that cannot be searched is a problem; the rest of the path is searched.
class SEARCHPATH_EXPORT Environment {
 public:
  /// Makes the path; opens no folder.
  explicit Environment(const EnvironmentOptions& given);
  /// A path of these folders, with all other options as they are by default.
  explicit Environment(const AnyTexts& folders, FolderExpansion expansion = FolderExpansion::Alone);
  /// The path that `cache` was made for.
  explicit Environment(const PathEntryFactory& cache);
  /// Asks `path`, whoever made it, by the rules of the environment: a listed path, entries of one's
  /// own, composites of these and of folders on disk. Its entries are asked through their interface,
  /// those of folders on disk more quickly. Repeats stay as the path has them.
  /// Precondition: `path` is not null.
  explicit Environment(std::shared_ptr<const IPath> path);
  ~Environment();

  /// The path that is asked: the one that was handed over, or a `FolderPath` without repeats and
  /// hidden folders, whose entries are `FolderEntry` objects. As an `IPath` it is asked by the rules
  /// of the environment, whatever `EnvironmentOptions::rules` are.
  [[nodiscard]] const std::shared_ptr<const IPath>& GetPath() const;
  /// Its main entries, by their own type; of a path that was handed over, those that are folders on
  /// disk.
  [[nodiscard]] FolderEntries GetMainFolders() const;
  /// What names mean.
  [[nodiscard]] const LookupRules& GetRules() const noexcept { return rules; }
  /// What relative texts are below.
  [[nodiscard]] const WorkingFolder& GetWorkingFolder() const noexcept { return workingFolder; }

  /// The packages below the root that was given, and what is wrong with those that cannot be used;
  /// null when no root was given.
  [[nodiscard]] const std::shared_ptr<const PackageRegistry>& GetPackages() const noexcept {
    return packages;
  }
  /// Who put the folder of `entry` on the path. Precondition: `entry` is on the path.
  [[nodiscard]] FolderOrigin FindOrigin(const IPathEntry& entry) const;

  /// A manager of this path, for a program whose path changes. It begins with the entries of
  /// `GetMainFolders` and knows the packages that put folders on the path. To use it, include
  /// "searchpath/host/main_search_path_manager.h".
  ///
  /// Errors: `std::logic_error` for a path that was handed over and is no `FolderPath`.
  [[nodiscard]] std::unique_ptr<MainSearchPathManager> CreateManager() const;

  /// The file that the name means; empty when there is none.
  ///
  /// Threads: once a folder has let it wait for two milliseconds, those behind it are asked ahead, by
  /// up to 64 threads. The answer does not wait for them.
  /// Errors: `FailedToAbsolutizeException` when `Lookup::fromFolder` cannot be used.
  [[nodiscard]] boost::optional<FoundItem> Find(Lookup lookup) const;

  /// The file that the name means, open for reading; empty when there is none. To use it, include
  /// "searchpath/host/opened_file.h".
  ///
  /// Errors: as `Find`; `std::system_error` when that file cannot be opened, or does not count any
  /// more.
  [[nodiscard]] std::optional<OpenedFile> Open(Lookup lookup) const;

  /// The answers of `Find`, together with what they rest on. To use it, include
  /// "searchpath/host/receipt.h".
  ///
  /// Errors: as `Find`; those of `ReceiptRecorder`.
  [[nodiscard]] Receipt FindWithReceipt(const std::vector<Lookup>& lookups) const;

  /// Every file that the name could mean: the file that it does mean, then the files that this one
  /// hides, in path order.
  ///
  /// Errors: as `Find`.
  [[nodiscard]] std::vector<FoundItem> FindAll(const Lookup& lookup) const;

  /// Every name that matches the pattern `Lookup::name`, see `NamePattern`, with the answer of
  /// `FindAll` to it: in the order of the path and, within a folder, of the bytes of names. Each of
  /// the extensions is added to the pattern. With separators, the last part alone is a pattern.
  ///
  /// Errors: as `Find`; `std::invalid_argument` when another part has a "*", "?" or "[".
  /// Cost: one pass over the names in the folders that such a name is looked for in.
  [[nodiscard]] std::vector<MatchingName> FindMatching(const Lookup& lookup) const;

  /// The answer of `FindAll` and the reason for it: every folder that was asked, in order, and with
  /// what outcome.
  ///
  /// Errors: as `Find`.
  /// Cost: asks folder by folder; lists them all unless each holds the name,
  /// and all folders below private and resources folders of those that do not. Not for the hot path.
  [[nodiscard]] Explanation Explain(const Lookup& lookup) const;

  /// At most `most` files that may have been meant by a name that was not found, the most similar
  /// first. Only plain names have similar ones.
  ///
  /// Cost: reads every name on the path.
  [[nodiscard]] std::vector<SimilarFile> FindSimilar(const Lookup& lookup,
                                                     std::size_t most = 3) const;

  /// The entries that the name of a folder denotes, in path order; special folders among them.
  [[nodiscard]] PathEntries FindFolders(const FolderLookup& lookup) const;

  /// At most `most` folders of the path that may have been meant by a name that denotes none. The
  /// last part of the name differs from theirs in case, in a "+" or "@" left out, or in one letter.
  ///
  /// Cost: lists every folder.
  [[nodiscard]] PathEntries FindSimilarFolders(const FolderLookup& lookup,
                                               std::size_t most = 3) const;

  /// The names that hide files, and how each hidden file differs from the file that hides it.
  ///
  /// Cost: reads every name on the path, and files of one name that are of the same size; on all
  /// processors.
  [[nodiscard]] ShadowReport FindShadows(const ShadowLookup& lookup = {}) const;

  /// What is wrong with the path: first what concerns one folder, in path order, then the file
  /// names that collide. Hidden folders are not examined. An entry that is no folder on disk is never
  /// missing, unreadable or slow.
  ///
  /// Cost: reads every name on the path. A folder that has been listed is not listed again; how
  /// long it took is known from then.
  [[nodiscard]] std::vector<PathFinding> Examine(const Examination& examination = {}) const;

  /// Who, beside root and a user who is trusted, can make a name mean another file. Hidden folders are
  /// not examined. Looks at the disk as it is now.
  ///
  /// Cost: looks at every file on the path and at every folder and link on the way to it; under rules
  /// that search below folders, at all folders below them, too.
  [[nodiscard]] TrustReport ExamineTrust(const TrustLookup& lookup = {}) const;

  /// Every folder in which a name may be found: the main folders; under rules that search below
  /// folders, all folders below them, too.
  ///
  /// Cost: under such rules, lists all of them.
  [[nodiscard]] FolderEntries FindSearchedFolders() const;

  /// Visits every file that a name could mean, in path order, until a visit returns true; returns
  /// whether one did. Where folders have a meaning, the files of main folders.
  ///
  /// Cost: lists every folder; under rules that search below folders, all folders below them, too.
  bool ForEachFile(const std::function<bool(const FoundItem&)>& visit) const;

  /// The names that mean another file than in `before`, as the function of that name finds them for
  /// two paths. Under rules that search below folders, names are relative names.
  ///
  /// Precondition: both have the same rules.
  /// Cost: lists every folder of both, and all folders below them where names are searched there.
  [[nodiscard]] std::vector<NameChange> FindNameChangesSince(const Environment& before) const;

  /// The folders that cannot be searched. First come folders without a location, a root of packages
  /// that cannot be read, and folders of packages that lead into a loop of links; then folders on
  /// the path, in path order.
  [[nodiscard]] std::vector<FolderProblem> FindProblems() const;
  /// The same, of the folders alone that earlier questions have found to be so; opens no folder.
  [[nodiscard]] std::vector<FolderProblem> GetProblemsMet() const;

  /// The folders of `EnvironmentOptions::without` that hide nothing, as they were given.
  ///
  /// Cost: lists every folder of the path, unless each hides a main entry.
  [[nodiscard]] std::vector<ustring> FindIdleExclusions() const;

 private:
  friend class Receipt;
  friend class ReceiptRecorder;

  [[nodiscard]] std::optional<AbsoluteIRI> AskerOf(const Lookup& lookup) const;

  std::chrono::system_clock::time_point begun = std::chrono::system_clock::now();
  std::shared_ptr<const EnvironmentOptions> options;  // without caches
  WorkingFolder workingFolder;
  LookupRules rules;
  std::shared_ptr<const PackageRegistry> packages;
  std::shared_ptr<const PathView> view;
  std::shared_ptr<const RuledPath> ruled;  // null where folders have a meaning
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_ENVIRONMENT_H
