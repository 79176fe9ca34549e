#include "host/questions/file_search.h"

#include "host/path/path_view.h"
#include "listed/partial_target.h"
#include "lookup/method_files.h"
#include "searchpath/model/search_scope.h"
#include "text/separators.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <algorithm>
#include <iterator>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using PathManagement::detail::HasSeparator;
using PathManagement::detail::SearchTarget;

/// The entries in which a path looks for `target`, in the order asked.
PathEntries AskedEntries(const IPath& path, SearchScope scope, const SearchTarget& target,
                         FilenameMatchingPolicy policy) {
  const auto parts = PathManagement::detail::SplitTarget(target);
  if (!parts) {
    PathEntries entries;
    path.ForEachEntry(scope, [&](const auto& entry) {
      entries.push_back(entry);
      return false;
    });
    return entries;
  }
  if (!PathManagement::detail::BeginsAtRoot(parts->folder)) {
    return path.GetPartiallyMatchingEntries(scope, parts->folder, policy);
  }
  const auto entry = PathManagement::detail::EntryNamed(path, parts->folder, policy);
  return entry == nullptr ? PathEntries() : PathEntries{entry};
}

/// As `IPath::FindAllInScope`, which reports to no observer. Reports afterwards which entries the
/// path must have asked, each with those files of the answer that it holds.
std::vector<FoundItem> FindObserved(const IPath& path, SearchScope scope,
                                    const SearchTarget& target, FilenameMatchingPolicy policy,
                                    ILookupObserver& observer) {
  auto all = path.FindAllInScope(scope, target, policy);
  PathEntries asked = AskedEntries(path, scope, target, policy);
  boost::unordered_flat_map<const IPathEntry*, std::vector<FoundItem>> held;
  for (const FoundItem& file : all) {
    const auto entry = file.GetPathEntry();
    auto& here = held[entry.get()];
    // The path may find files in entries that it does not name when it is asked for them.
    const bool isNew = here.empty() && std::ranges::find(asked, entry) == asked.end();
    if (isNew) asked.push_back(entry);
    here.push_back(file);
  }
  for (const auto& entry : asked) observer.FolderAsked(entry, std::exchange(held[entry.get()], {}));
  return all;
}

/// The private folder directly below `asker`, which only code in `asker` sees; null when there is
/// none.
std::shared_ptr<const IPathEntry> FindPrivateFolder(const PathView& view,
                                                    const AbsoluteIRI& asker) {
  if (!view.MayHavePrivateFolder(asker)) return nullptr;
  const auto entry = view.GetWholePath().GetPathEntryFromAbsoluteIRI(
      asker, FilenameMatchingPolicy::FileSystemDefault);
  return entry != nullptr ? entry->GetSingleSubfolderEntryA() : nullptr;  // the private one
}

/// One look-up. When it is observed, it asks even the folders that the path does not show, and
/// leaves their files out of the answer.
class FileSearch {
 public:
  FileSearch(const PathView& searchView, const SearchTarget& searchTarget,
             FilenameMatchingPolicy searchPolicy, ILookupObserver* lookupObserver)
      : view(searchView),
        path(searchView.GetWholePath()),
        target(searchTarget),
        policy(searchPolicy),
        observer(lookupObserver) {}

  [[nodiscard]] std::vector<FoundItem> Run(const std::optional<AbsoluteIRI>& asker) const {
    std::vector<FoundItem> all;
    bool isOfPath =
        observer == nullptr;  // `PathView::GetPath` shows neither repeats nor the hidden
    if (HasSeparator(target.GetName())) {
      all = InScope(kAllKindsScope);
    } else {
      if (asker) all = InPrivateFolderOf(*asker);
      auto onPath = InScope(kMainScope);
      const auto methods = InMethodEntries();
      isOfPath = isOfPath && all.empty() && methods.empty();
      if (!methods.empty()) onPath = Merged(onPath, methods);
      std::move(onPath.begin(), onPath.end(), std::back_inserter(all));
    }
    if (!isOfPath) view.RemoveUnseen(all);
    return all;
  }

 private:
  [[nodiscard]] std::vector<FoundItem> InScope(SearchScope scope) const {
    if (observer == nullptr) return view.GetPath()->FindAllInScope(scope, target, policy);
    if (!view.IsOnDisk()) return FindObserved(path, scope, target, policy, *observer);
    return view.GetFolderPath().FindAllInScope(scope, target, policy, *observer);
  }

  [[nodiscard]] std::vector<FoundItem> In(const std::shared_ptr<const IPathEntry>& folder) const {
    std::vector<FoundItem> files;
    for (auto& item : folder->FindItems(target, policy))
      files.emplace_back(std::move(item), folder);
    if (observer != nullptr) observer->FolderAsked(folder, files);
    return files;
  }

  [[nodiscard]] std::vector<FoundItem> InPrivateFolderOf(const AbsoluteIRI& asker) const {
    const auto folder = FindPrivateFolder(view, asker);
    return folder != nullptr ? In(folder) : std::vector<FoundItem>();
  }

  /// The matches in method entries, in path order. A method entry is a folder directly below those
  /// on the path itself, called "@" and the name of the target.
  [[nodiscard]] std::vector<FoundItem> InMethodEntries() const {
    std::vector<FoundItem> methods;
    const IPath& asked = observer == nullptr ? *view.GetPath() : path;
    for (const auto& entry : PathManagement::detail::GetMethodEntriesFor(asked, target)) {
      const auto files = In(entry);
      methods.insert(methods.end(), files.begin(), files.end());
    }
    return methods;
  }

  /// The matches in the folders on the path itself and those in method entries, in path order.
  [[nodiscard]] std::vector<FoundItem> Merged(const std::vector<FoundItem>& ordinary,
                                              const std::vector<FoundItem>& methods) const {
    std::vector<FoundItem> all;
    std::merge(ordinary.begin(), ordinary.end(), methods.begin(), methods.end(),
               std::back_inserter(all), [this](const FoundItem& method, const FoundItem& plain) {
                 return PathManagement::detail::MethodEntryWins(path, *method.GetPathEntry(),
                                                                *plain.GetPathEntry());
               });
    return all;
  }

  const PathView& view;
  const IPath& path;  // the whole one, with repeats and hidden folders
  const SearchTarget& target;
  FilenameMatchingPolicy policy;
  ILookupObserver* observer;  // may be null
};

}  // namespace

std::vector<FoundItem> FindAllFiles(const PathView& view, const std::optional<AbsoluteIRI>& asker,
                                    const SearchTarget& target, FilenameMatchingPolicy policy,
                                    ILookupObserver* observer) {
  return FileSearch(view, target, policy, observer).Run(asker);
}

PathEntries FindAskedEntries(const PathView& view, const std::optional<AbsoluteIRI>& asker,
                             const SearchTarget& target, FilenameMatchingPolicy policy) {
  const IPath& path = *view.GetPath();
  if (HasSeparator(target.GetName())) return AskedEntries(path, kAllKindsScope, target, policy);
  PathEntries entries = AskedEntries(path, kMainScope, target, policy);
  const auto privateFolder = asker ? FindPrivateFolder(view, *asker) : nullptr;
  if (privateFolder != nullptr) entries.insert(entries.begin(), privateFolder);
  return entries;
}

}  // namespace Corvane::PathManagement::host
