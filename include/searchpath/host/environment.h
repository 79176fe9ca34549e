#ifndef SEARCHPATH_HOST_ENVIRONMENT_H
#define SEARCHPATH_HOST_ENVIRONMENT_H

#include "searchpath/export.h"
#include "searchpath/host/duration.h"
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

#include <concepts>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement::host {

class FollowedEnvironment;
class ListingSource;
class MainSearchPathManager;
class OpenedFile;
struct NameChange;
class PackageRegistry;
class PathView;
class Receipt;
class RuledPath;

/// A question to an `Environment`: which file does a name mean? For "where folders have no
/// meaning", see `LookupRules::foldersHaveMeaning`.
struct Lookup {
  /// A file name, or a partial pathname with separators.
  AnyText name;
  /// Each as "zt" or ".zt". They are tried in order, unless the name has an extension of its own.
  AnyTexts extensions = {};
  /// The folder of the code that asks, as a user types it: its private folder is searched first.
  /// Where folders have no meaning, `fromFolder` itself is searched first, but only under
  /// `Separator::FileBelow`.
  std::optional<AnyText> fromFolder = {};
  /// How names are compared. Ignored where folders have no meaning: names are then compared as they
  /// are.
  FilenameMatchingPolicy policy = FilenameMatchingPolicy::FileSystemDefault;
  /// A folder, as a user types it. The quote folders (`EnvironmentOptions::quoteFolders`) and then
  /// the folders of the path are one list, of which only the part after this folder is searched;
  /// all of the list when this folder is not in it. If `afterFolder` is set, `fromFolder` is
  /// ignored. Where folders have a meaning, `afterFolder` itself is ignored.
  std::optional<AnyText> afterFolder = {};
};

/// What an `Environment` is made of.
struct EnvironmentOptions {
  /// The folders of the path, as users type them, see `WorkingFolder`. A folder that has no
  /// location is left out and reported as a problem. For a search-path string, hand in what
  /// `SplitZentraPath` returns for it.
  AnyTexts folders = {};
  /// The folder that relative pathnames start from; empty means the working folder of the process.
  std::optional<AbsoluteIRI> workingFolder = {};
  /// Where `folders` come from, as `FindOrigin` and `Explain` report it.
  FolderSource source = FolderSource::Given;
  /// Whether the ordinary folders below `folders` are put on the path, too.
  FolderExpansion expansion = FolderExpansion::Alone;
  /// Whether a folder that is given twice, perhaps by a link, is on the path twice. If not, it is
  /// there once, where it was given first. Under rules that do not drop repeats, this has no
  /// effect: such a folder is always there twice.
  bool keepDuplicates = false;
  /// Folders that are not to be on the path: each is hidden with the special folders below it or,
  /// when folders are expanded, with all folders below it.
  AnyTexts without = {};
  /// A folder that is in a cache is not read while its listing there is fresh, or never if the
  /// cache was made with `ListingUse::AsSaved`. When several caches have the folder, the first of
  /// them is used. A folder that is in no cache is read. The caches may have been made for other
  /// paths: they put no folder on this path.
  std::vector<PathEntryFactory> caches = {};
  /// A root of packages, as a user types it, see `PackageRegistry`. The folders of its packages
  /// come after all other folders of the path and are never expanded.
  std::optional<AnyText> packages = {};
  /// What names mean on the path, and how the texts in `folders` are read.
  LookupRules rules = {};
  /// Folders that are searched only for a question with `Lookup::fromFolder` or
  /// `Lookup::afterFolder`: after the folder that asks and before the path. Only where folders have
  /// no meaning.
  AnyTexts quoteFolders = {};
  /// The longest to wait for one answer of the disk; empty means without limit. The first answer
  /// about a folder that comes too late gives that folder up: it is a problem, `NoAnswer`, it is
  /// searched as if it were empty, and the disk is not asked about it again. The answers for all
  /// other folders are right.
  ///
  /// Threads: where there is a limit, each question to the disk gets a thread of its own, which
  /// costs some 20 us. A thread that waits in the kernel cannot be stopped. After the limit such a
  /// thread goes on waiting until the disk answers or the process ends; it uses nothing of the
  /// environment, which may be destroyed meanwhile.
  std::optional<std::chrono::milliseconds> timeout = {};
};

/// A search path of this machine's folders, and all that is needed to look up names on it.
///
/// Threads: all operations, from any thread.
/// Errors: a folder that cannot be searched is a problem; the rest of the path is searched.
class SEARCHPATH_EXPORT Environment {
 public:
  /// Makes the path. Opens no folders, except to expand them and to read packages.
  explicit Environment(const EnvironmentOptions& given);
  /// A path of these folders. All other options have their defaults.
  explicit Environment(const AnyTexts& folders, FolderExpansion expansion = FolderExpansion::Alone);
  /// The path that `cache` was made for.
  explicit Environment(const PathEntryFactory& cache);
  /// Looks names up on `path`, whoever made it, by `kEnvironmentRules`: `path` may be a listed
  /// path, hold entries of your own, or be a composite of such paths and of folders on disk.
  /// Entries are asked through their interface, but `FolderEntry` objects directly, which is
  /// quicker. Repeats stay as the path has them.
  ///
  /// Precondition: `path` is not null.
  explicit Environment(std::shared_ptr<const IPath> path);
  /// The path as it is without files: for a program that wants to know only which folders there
  /// are. Files are passed over when a folder is read, so no file is ever found, and there are no
  /// receipts.
  [[nodiscard]] static Environment WithoutFiles(const EnvironmentOptions& given);
  ~Environment();

  /// The path on which names are looked up: the `IPath` that the environment was made of, or else a
  /// path whose entries are `FolderEntry` objects, without hidden folders and, unless they are
  /// kept, without repeats. Questions to the path itself are answered by `kEnvironmentRules`,
  /// whatever `EnvironmentOptions::rules` are.
  [[nodiscard]] const std::shared_ptr<const IPath>& GetPath() const;
  /// The main entries of `GetPath`, as `FolderEntry` objects; entries that are no folders on disk
  /// are left out.
  [[nodiscard]] FolderEntries GetMainFolders() const;
  /// The rules by which names are looked up.
  [[nodiscard]] const LookupRules& GetRules() const noexcept { return rules; }
  /// The folder that relative pathnames start from.
  [[nodiscard]] const WorkingFolder& GetWorkingFolder() const noexcept { return workingFolder; }

  /// The packages below `EnvironmentOptions::packages`, and what is wrong with those that cannot be
  /// used; null when no root of packages was given.
  [[nodiscard]] const std::shared_ptr<const PackageRegistry>& GetPackages() const noexcept {
    return packages;
  }
  /// Who put the folder of `entry` on the path. Precondition: `entry` is on the path.
  [[nodiscard]] FolderOrigin FindOrigin(const IPathEntry& entry) const;

  /// A manager of this path, for a program whose path changes. It begins with the entries of
  /// `GetMainFolders` and knows the packages that put folders on the path. To use it, include
  /// "searchpath/host/main_search_path_manager.h".
  ///
  /// Errors: `std::logic_error` when the environment was made of an `IPath` that is no
  /// `FolderPath`.
  [[nodiscard]] std::unique_ptr<MainSearchPathManager> CreateManager() const;

  /// The file that the name means; empty when there is none.
  ///
  /// Threads: once a folder has taken two milliseconds to answer, the next folders are asked in
  /// advance, by up to 64 threads. Folders that the answer does not need are not waited for.
  /// Errors: `FailedToAbsolutizeException` when the folder of `Lookup::fromFolder` or
  /// `Lookup::afterFolder` cannot be used.
  [[nodiscard]] boost::optional<FoundItem> Find(Lookup lookup) const;
  /// The same for a name and nothing else: `Find(u"plot.zt")`. Once the path is indexed, the name
  /// is not copied.
  template <std::convertible_to<std::u16string_view> Text>
  [[nodiscard]] boost::optional<FoundItem> Find(const Text& name) const {
    return FindNamed(name);
  }

  /// The file that the name means, open for reading; empty when there is none. To use it, include
  /// "searchpath/host/opened_file.h".
  ///
  /// Errors: as `Find`; `std::system_error` when the file cannot be opened, or has since become
  /// something that names cannot mean by the rules, see `LookupRules::Files`.
  [[nodiscard]] std::optional<OpenedFile> Open(Lookup lookup) const;

  /// The answers of `Find`, together with what they rest on. To use it, include
  /// "searchpath/host/receipt.h".
  ///
  /// Errors: as `Find`; those of `ReceiptRecorder`.
  [[nodiscard]] Receipt FindWithReceipt(const std::vector<Lookup>& lookups) const;

  /// The file that the name means, then the files that it hides, in path order; empty when there is
  /// none.
  ///
  /// Errors: as `Find`.
  [[nodiscard]] std::vector<FoundItem> FindAll(const Lookup& lookup) const;

  /// Every name that matches the pattern `Lookup::name`, see `NamePattern`, with the files that
  /// `FindAll` finds for that name; names without such files are left out. Names are in the order
  /// of the folders in which a search first meets them; those that it first meets in the same
  /// folder are in the order of their bytes. Each of the extensions is added to the pattern. Of a
  /// pattern with separators, only the last part may have wildcards: the parts before it are
  /// folders.
  ///
  /// Errors: as `Find`; `std::invalid_argument` when a part before the last has a "*", "?" or "[".
  /// Cost: one pass over the names in the folders where such a name is looked for.
  [[nodiscard]] std::vector<MatchingName> FindMatching(const Lookup& lookup) const;

  /// The answer of `FindAll` and the reason for it: every folder that was searched, in order, and
  /// what was found there.
  ///
  /// Errors: as `Find`.
  /// Cost: asks folder by folder. Where folders have a meaning, a single folder without the name
  /// has all folders listed and, at worst, everything below the private and resources folders of
  /// those that lack the name. That is too slow for questions that are asked often.
  [[nodiscard]] Explanation Explain(const Lookup& lookup) const;

  /// At most `most` files that may have been meant by a name that was not found, the most similar
  /// first; none for a name with separators.
  ///
  /// Cost: reads every name on the path.
  [[nodiscard]] std::vector<SimilarFile> FindSimilar(const Lookup& lookup,
                                                     std::size_t most = 3) const;

  /// The entries, main and special, that the name of a folder denotes, in path order.
  [[nodiscard]] PathEntries FindFolders(const FolderLookup& lookup) const;

  /// At most `most` folders of the path that may have been meant by a name that denotes none: their
  /// names differ from the last part of that name in case, in a "+" or "@" left out, or in one
  /// letter.
  ///
  /// Cost: lists every folder.
  [[nodiscard]] PathEntries FindSimilarFolders(const FolderLookup& lookup,
                                               std::size_t most = 3) const;

  /// The names that hide files, and how each hidden file differs from the file that hides it.
  ///
  /// Cost: reads every name on the path, and the contents of files that share name and size; on all
  /// processors.
  [[nodiscard]] ShadowReport FindShadows(const ShadowLookup& lookup = {}) const;

  /// What is wrong with the path: first what concerns one folder, in path order, then the file
  /// names that collide. Hidden folders are not examined. An entry that is no folder on disk is
  /// never missing, unreadable or slow.
  ///
  /// Cost: reads every name on the path. A folder that has been listed is not listed again: how
  /// long its listing took is remembered.
  [[nodiscard]] std::vector<PathFinding> Examine(const Examination& examination = {}) const;

  /// Who, besides root and the user of `lookup`, can make a name mean another file. Hidden folders
  /// are not examined. Looks at the disk as it is now.
  ///
  /// Cost: looks at every file on the path and at every folder and link on the way to it; with
  /// `Separator::FileBelow`, at all folders below those of the path, too.
  [[nodiscard]] TrustReport ExamineTrust(const TrustLookup& lookup = {}) const;

  /// The main folders and, with `Separator::FileBelow`, all folders below them. Where folders have
  /// a meaning, names may also be found in special folders below the main folders, which are not
  /// among these.
  ///
  /// Cost: with `Separator::FileBelow`, lists all of them.
  [[nodiscard]] FolderEntries FindSearchedFolders() const;

  /// Visits every file that a name could mean, in path order, until a visit returns true; returns
  /// whether one did. Where folders have a meaning, only the files of main folders are visited.
  ///
  /// Cost: lists every folder of the path; with `Separator::FileBelow`, all folders below them,
  /// too.
  bool ForEachFile(const std::function<bool(const FoundItem&)>& visit) const;

  /// The names that mean another file here than in `before`, see `FindNameChanges`.
  /// With `Separator::FileBelow`, names are relative to the folders of the path.
  ///
  /// Precondition: both environments have the same rules.
  /// Cost: lists every folder of both paths; with `Separator::FileBelow`, all folders below them,
  /// too.
  [[nodiscard]] std::vector<NameChange> FindNameChangesSince(const Environment& before) const;

  /// The folders that cannot be searched. First come given folders without a location, a root of
  /// packages that cannot be read, and folders of packages that lead into a loop of links. Then
  /// come folders on the path, in path order.
  [[nodiscard]] std::vector<FolderProblem> FindProblems() const;
  /// Of the problems that `FindProblems` would return, those that earlier questions have met; opens
  /// no folder. Where folders have no meaning, and once a name was not found, the disk is asked
  /// about each folder: the answer is then that of `FindProblems`.
  [[nodiscard]] std::vector<FolderProblem> GetProblemsMet() const;

  /// The folders of `EnvironmentOptions::without` that hide no folder of the path, as they were
  /// given.
  ///
  /// Cost: lists every folder of the path, unless each exclusion hides a main entry.
  [[nodiscard]] std::vector<ustring> FindIdleExclusions() const;

 private:
  friend class FollowedEnvironment;
  friend class Receipt;
  friend class ReceiptRecorder;

  /// As for the public options; listings come from `source`, and there are no receipts.
  Environment(const EnvironmentOptions& given, const std::shared_ptr<const ListingSource>& source);

  [[nodiscard]] boost::optional<FoundItem> FindNamed(std::u16string_view name) const;
  /// `Find` for a question that an index alone does not answer.
  [[nodiscard]] boost::optional<FoundItem> FindAsAsked(Lookup lookup) const;
  /// The location of `Lookup::fromFolder`, if there is one, where folders have a meaning.
  ///
  /// Errors: `FailedToAbsolutizeException` when the folder cannot be used.
  [[nodiscard]] std::optional<AbsoluteIRI> AskerOf(const Lookup& lookup) const;

  /// The time that the kernel gives to files that change now. This time may be behind the clock.
  [[nodiscard]] static std::chrono::system_clock::time_point TimeOfChangesNow() noexcept;

  // Before the first question to the disk: a receipt trusts no folder that has changed since.
  std::chrono::system_clock::time_point begun = TimeOfChangesNow();
  std::shared_ptr<const EnvironmentOptions> options;  // without caches; null: no receipts
  WorkingFolder workingFolder;
  LookupRules rules;
  std::shared_ptr<const PackageRegistry> packages;  // null when no root was given
  std::shared_ptr<const PathView> view;             // the path, and what hides folders from it
  std::shared_ptr<const RuledPath> ruled;           // null where folders have a meaning
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_ENVIRONMENT_H
