#include "searchpath/host/environment.h"

#include "host/folder/directory_scan.h"
#include "host/folder/entry_state.h"
#include "host/folder/subfolder_source.h"
#include "host/names/extensions.h"
#include "host/packages/package_folders.h"
#include "host/path/path_view.h"
#include "host/questions/explanation.h"
#include "host/questions/file_search.h"
#include "host/questions/folder_search.h"
#include "host/questions/path_examination.h"
#include "host/questions/pattern_search.h"
#include "host/questions/relative_names.h"
#include "host/questions/rule_examination.h"
#include "host/questions/rule_explanation.h"
#include "host/questions/shadow_search.h"
#include "host/questions/similar_files.h"
#include "host/rules/ruled_path.h"
#include "host/rules/tree_walk.h"
#include "host/saved/cache_source.h"
#include "host/trust/trust_examination.h"
#include "searchpath/host/folder_tree.h"
#include "searchpath/host/main_search_path_manager.h"
#include "searchpath/host/name_changes.h"
#include "searchpath/host/opened_file.h"
#include "searchpath/host/path_refresh.h"
#include "searchpath/model/search_scope.h"
#include "searchpath/platform/iri_text.h"
#include "searchpath/utilities/file_lookup.h"
#include "searchpath/utilities/iri_conversion.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using PathManagement::detail::SearchTarget;

PathEntries Expand(const AbsoluteIRI& folder, FolderExpansion expansion,
                   const std::shared_ptr<const ListingSource>& source,
                   DiskPatience::Limit timeout) {
  auto entry = CreateMainFolder(folder, source, timeout);
  if (expansion == FolderExpansion::Alone) return {std::move(entry)};
  const FolderEntries tree = CreateFolderTree(std::move(entry));
  return {tree.begin(), tree.end()};
}

/// A part of the path, as a text for `WorkingFolder::Locate`, which then finds what the part means
/// by the rules; no value when the rules leave the part out. Where folders have a meaning, an empty
/// part is a fault: `Locate` refuses it, and it is reported.
std::optional<ustring> FolderTextOf(const ustring& part, const LookupRules& rules) {
  if (part.empty() && rules.emptyPart == LookupRules::EmptyPart::WorkingFolder) return u".";
  if (part.empty() && !rules.foldersHaveMeaning) return std::nullopt;
  const bool wouldBeExpanded =
      part.starts_with(u'~') || foundation::storage::vfs::hasIRIPrefix(part);
  return wouldBeExpanded && !rules.expandsParts ? u"./" + part : part;
}

GivenFolders Locate(const WorkingFolder& workingFolder, const EnvironmentOptions& options,
                    const std::shared_ptr<const ListingSource>& source) {
  GivenFolders given;
  for (const ustring& folder : options.folders) {
    const auto text = FolderTextOf(folder, options.rules);
    if (!text) continue;
    try {
      given.folders.push_back(
          {{.source = options.source, .folder = folder},
           Expand(workingFolder.Locate(*text), options.expansion, source, options.timeout)});
    } catch (const current_working_folder::FailedToAbsolutizeException& failure) {
      given.unlocated.push_back({.folder = folder, .reason = failure.GetReason()});
    }
  }
  return given;
}

/// All folders of the path, those of packages included.
GivenFolders LocateAll(const WorkingFolder& workingFolder, const EnvironmentOptions& options,
                       const std::shared_ptr<const ListingSource>& source,
                       const PackageRegistry* packages) {
  return WithPackageFolders(Locate(workingFolder, options, source), packages, source,
                            options.timeout);
}

/// The path by the rules of `options`; null for the environment's own rules, under which `view` is
/// searched.
std::shared_ptr<const RuledPath> ApplyRules(const WorkingFolder& workingFolder,
                                            const EnvironmentOptions& options,
                                            const std::shared_ptr<const ListingSource>& source,
                                            const std::shared_ptr<const PathView>& view) {
  if (options.rules.foldersHaveMeaning) return nullptr;
  const EnvironmentOptions quoteOptions{
      .folders = options.quoteFolders, .rules = options.rules, .timeout = options.timeout};
  return std::make_shared<const RuledPath>(view, options.rules,
                                           Locate(workingFolder, quoteOptions, source), source,
                                           workingFolder, options.timeout);
}

std::shared_ptr<const PackageRegistry> ReadPackages(const std::optional<AnyText>& root,
                                                    const WorkingFolder& workingFolder) {
  if (!root) return nullptr;
  return std::make_shared<const PackageRegistry>(*root, workingFolder);
}

/// The location of the asking folder. On a path that is not all on disk, it may have any scheme.
AbsoluteIRI LocateAsker(const PathView& view, const WorkingFolder& workingFolder,
                        const ustring& folder) {
  if (view.IsOnDisk() || !foundation::storage::vfs::hasIRIPrefix(folder)) {
    return workingFolder.Locate(folder);
  }
  try {
    return GetIRIFromString(folder);
  } catch (const foundation::storage::vfs::InvalidIRIException&) {
    throw current_working_folder::FailedToAbsolutizeException(
        current_working_folder::AbsolutizeError::InvalidText);
  }
}

/// Who asks, on a path with rules under which folders have no meaning.
RuledPath::Asker AskerByRules(const RuledPath& path, const WorkingFolder& workingFolder,
                              const Lookup& lookup) {
  const auto locate = [&](const std::optional<AnyText>& text) {
    std::optional<AbsoluteIRI> folder;
    if (text) path.CheckFolder(folder.emplace(workingFolder.Locate(*text)));
    return folder;
  };
  if (lookup.afterFolder) return {.after = locate(lookup.afterFolder)};
  return {.from = locate(lookup.fromFolder)};
}

/// The options as a receipt keeps them, so that a later process can search the same path.
EnvironmentOptions WithoutCaches(EnvironmentOptions options) {
  options.caches.clear();
  return options;
}

SearchTarget TargetOf(const Lookup& lookup) {
  // Without extensions to try, it does not matter whether the name has one.
  if (lookup.extensions.empty()) return SearchTarget(lookup.name);
  return CreateSearchTargetWithExtensionInFilenamePreferred(lookup.name,
                                                            WithDots(lookup.extensions));
}

}  // namespace

Environment::Environment(const EnvironmentOptions& given)
    : Environment(given, CreateSourceFrom(given.caches)) {
  options = std::make_shared<const EnvironmentOptions>(WithoutCaches(given));
}

Environment Environment::WithoutFiles(const EnvironmentOptions& given) {
  return {given, std::make_shared<const SubfolderSource>(CreateSourceFrom(given.caches))};
}

Environment::Environment(const EnvironmentOptions& given,
                         const std::shared_ptr<const ListingSource>& source)
    : workingFolder(given.workingFolder ? WorkingFolder(*given.workingFolder) : WorkingFolder()),
      rules(given.rules),
      packages(ReadPackages(given.packages, workingFolder)),
      view(std::make_shared<const PathView>(
          LocateAll(workingFolder, given, source, packages.get()),
          // Read as users type folders, whatever the rules are.
          Locate(workingFolder, {.folders = given.without, .timeout = given.timeout},
                 /*source=*/nullptr),
          given.expansion, given.keepDuplicates || !given.rules.dropsRepeats)),
      ruled(ApplyRules(workingFolder, given, source, view)) {}

Environment::Environment(const AnyTexts& folders, FolderExpansion expansion)
    : Environment(EnvironmentOptions{.folders = folders, .expansion = expansion}) {}

Environment::Environment(const PathEntryFactory& cache)
    : Environment(EnvironmentOptions{
          .folders = cache.GetFolderStrings(), .source = FolderSource::Cache, .caches = {cache}}) {}

Environment::Environment(std::shared_ptr<const IPath> path)
    : view(std::make_shared<const PathView>(std::move(path))) {}

Environment::~Environment() = default;

std::chrono::system_clock::time_point Environment::TimeOfChangesNow() noexcept {
  timespec now{};
  clock_gettime(CLOCK_REALTIME_COARSE, &now);  // does not fail
  return std::chrono::system_clock::time_point(std::chrono::seconds(now.tv_sec) +
                                               std::chrono::nanoseconds(now.tv_nsec));
}

const std::shared_ptr<const IPath>& Environment::GetPath() const { return view->GetPath(); }

FolderEntries Environment::GetMainFolders() const { return view->GetMainFolders(); }

FolderOrigin Environment::FindOrigin(const IPathEntry& entry) const {
  return ruled == nullptr ? view->GetOrigin(entry) : ruled->FindOrigin(entry);
}

std::unique_ptr<MainSearchPathManager> Environment::CreateManager() const {
  if (!view->IsOnDisk()) throw std::logic_error("only a path of folders on disk has a manager");
  auto manager = std::make_unique<MainSearchPathManager>(GetMainFolders());
  manager->SetKnownPackages(FindKnownPackages(view->GetGivenFolders()));
  return manager;
}

boost::optional<FoundItem> Environment::FindNamed(std::u16string_view name) const {
  boost::optional<FoundItem> found;
  // `FindIndexed` returns false where no index can answer, or none has been made yet.
  if (ruled != nullptr || !view->FindIndexed(name, found)) found = FindAsAsked({.name = name});
  return found;
}

boost::optional<FoundItem> Environment::Find(Lookup lookup) const {
  boost::optional<FoundItem> found;
  const bool mayBeIndexed = ruled == nullptr && lookup.extensions.empty() && !lookup.fromFolder &&
                            lookup.policy != FilenameMatchingPolicy::IgnoreCase;
  if (!mayBeIndexed || !view->FindIndexed(lookup.name, found))
    found = FindAsAsked(std::move(lookup));
  return found;
}

boost::optional<FoundItem> Environment::FindAsAsked(Lookup lookup) const {
  if (ruled != nullptr) {
    const auto asker = AskerByRules(*ruled, workingFolder, lookup);
    return ruled->Find(TargetOf(lookup), asker);
  }
  // The shortest way for most questions: no asking folder, and a name that is moved, not copied.
  const auto asker = lookup.fromFolder ? AskerOf(lookup) : std::nullopt;
  const SearchTarget target =
      lookup.extensions.empty() ? SearchTarget(std::move(lookup.name)) : TargetOf(lookup);
  if (asker && view->MayHavePrivateFolder(*asker)) {
    auto found = FindFirstFileVisibleFromFolder(*view->GetPath(), *asker, target, lookup.policy);
    // The search meets a private folder even if it is hidden: below the folder that holds it.
    if (!found || view->FindHider(*found->GetPathEntry()) == nullptr) return found;
  }
  return view->FindVisible(target, lookup.policy);
}

std::optional<OpenedFile> Environment::Open(Lookup lookup) const {
  const auto found = Find(std::move(lookup));
  if (!found) return std::nullopt;
  return OpenedFile(*found, rules.files);
}

std::vector<FoundItem> Environment::FindAll(const Lookup& lookup) const {
  if (ruled != nullptr) {
    return ruled->FindAll(TargetOf(lookup), AskerByRules(*ruled, workingFolder, lookup));
  }
  return FindAllFiles(*view, AskerOf(lookup), TargetOf(lookup), lookup.policy,
                      /*observer=*/nullptr);
}

std::vector<MatchingName> Environment::FindMatching(const Lookup& lookup) const {
  if (ruled != nullptr) {
    return FindMatchingNamesByRules(*ruled, TargetOf(lookup),
                                    AskerByRules(*ruled, workingFolder, lookup));
  }
  return FindMatchingNames(*view, AskerOf(lookup), TargetOf(lookup), lookup.policy);
}

Explanation Environment::Explain(const Lookup& lookup) const {
  if (ruled != nullptr) {
    return ExplainByRules(*ruled, TargetOf(lookup), AskerByRules(*ruled, workingFolder, lookup));
  }
  return ExplainLookup(*view, AskerOf(lookup), TargetOf(lookup), lookup.policy);
}

std::vector<SimilarFile> Environment::FindSimilar(const Lookup& lookup, std::size_t most) const {
  return FindSimilarFiles(*view->GetPath()->GetMainEntries(), TargetOf(lookup), most);
}

PathEntries Environment::FindFolders(const FolderLookup& lookup) const {
  if (ruled != nullptr) return ruled->FindFolders(lookup.name);
  return FindFoldersNamed(*view->GetPath(), workingFolder, lookup);
}

PathEntries Environment::FindSimilarFolders(const FolderLookup& lookup, std::size_t most) const {
  return FindFoldersLike(*view->GetPath(), lookup.name, most);
}

ShadowReport Environment::FindShadows(const ShadowLookup& lookup) const {
  ShadowLookup dotted = lookup;
  dotted.extensions = WithDots(std::move(dotted.extensions));
  return ruled == nullptr ? CollectShadows(*view, dotted) : CollectShadowsByRules(*ruled, dotted);
}

std::vector<PathFinding> Environment::Examine(const Examination& examination) const {
  return ruled == nullptr ? ExaminePath(*view, examination) : ExamineByRules(*ruled, examination);
}

TrustReport Environment::ExamineTrust(const TrustLookup& lookup) const {
  return ExamineTrustOf(*view, ruled.get(), rules, lookup);
}

FolderEntries Environment::FindSearchedFolders() const {
  if (ruled == nullptr) return GetMainFolders();
  FolderEntries folders;
  WalkTrees(*ruled, [&](const TreeFolder& folder) {
    folders.push_back(folder.entry);
    return false;
  });
  return folders;
}

bool Environment::ForEachFile(const std::function<bool(const FoundItem&)>& visit) const {
  if (ruled != nullptr) return ForEachFileByRules(*ruled, visit);
  return view->GetPath()->ForEachEntry(kMainScope, [&](const auto& folder) {
    const auto items = folder->GetItems();
    return std::any_of(items->begin(), items->end(),
                       [&](const auto& item) { return visit(FoundItem(item, folder)); });
  });
}

std::vector<NameChange> Environment::FindNameChangesSince(const Environment& before) const {
  if (ruled != nullptr && before.ruled != nullptr) {
    return FindRelativeNameChanges(*before.ruled, *ruled);
  }
  const FolderPath old(before.GetMainFolders());
  return FindNameChanges(old,
                         FolderPath(ShareUnchangedFolders(GetMainFolders(), old.GetMainFolders())));
}

std::optional<AbsoluteIRI> Environment::AskerOf(const Lookup& lookup) const {
  if (!lookup.fromFolder) return std::nullopt;
  AbsoluteIRI folder = LocateAsker(*view, workingFolder, *lookup.fromFolder);
  DiskPatience patience(view->GetLimit());
  // On a path that is not all on disk, a folder of the path need not be on the disk.
  const bool isKnown = !view->IsOnDisk() && view->GetWholePath().GetPathEntryFromAbsoluteIRI(
                                                folder, lookup.policy) != nullptr;
  const auto reason = isKnown ? std::nullopt : ProbeFolder(folder, patience);
  if (reason) throw current_working_folder::FailedToAbsolutizeException(*reason);
  return folder;
}

std::vector<FolderProblem> Environment::FindProblems() const {
  return ruled == nullptr ? view->FindProblems() : ruled->FindProblems();
}

std::vector<FolderProblem> Environment::GetProblemsMet() const {
  return ruled == nullptr ? view->GetProblemsMet() : ruled->GetProblemsMet();
}

std::vector<ustring> Environment::FindIdleExclusions() const { return view->FindIdleExclusions(); }

}  // namespace Corvane::PathManagement::host
