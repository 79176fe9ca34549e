#include "host/questions/file_search.h"

#include "host/path/path_view.h"
#include "lookup/method_files.h"
#include "searchpath/model/search_scope.h"
#include "text/separators.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using PathManagement::detail::HasSeparator;
using PathManagement::detail::SearchTarget;

/// One look-up. When it is observed, it asks the folders that the path does not show as well, and
/// takes their files out of the answer.
class FileSearch {
 public:
  FileSearch(const PathView& searchView, const SearchTarget& searchTarget,
             FilenameMatchingPolicy searchPolicy, ILookupObserver* lookupObserver)
      : view(searchView),
        folders(searchView.GetWholePath()),
        target(searchTarget),
        policy(searchPolicy),
        observer(lookupObserver) {}

  [[nodiscard]] std::vector<FoundItem> Run(const std::optional<AbsoluteIRI>& asker) const {
    std::vector<FoundItem> all;
    if (HasSeparator(target.GetName())) {
      all = InScope(kAllKindsScope);
    } else {
      if (asker) all = InPrivateFolderOf(*asker);
      const auto onPath = OnPath();
      all.insert(all.end(), onPath.begin(), onPath.end());
    }
    view.RemoveUnseen(all);
    return all;
  }

 private:
  [[nodiscard]] std::vector<FoundItem> InScope(SearchScope scope) const {
    return observer == nullptr ? view.GetPath()->FindAllInScope(scope, target, policy)
                               : folders.FindAllInScope(scope, target, policy, *observer);
  }

  [[nodiscard]] std::vector<FoundItem> In(const std::shared_ptr<const IPathEntry>& folder) const {
    std::vector<FoundItem> files;
    for (auto& item : folder->FindItems(target, policy))
      files.emplace_back(std::move(item), folder);
    if (observer != nullptr) observer->FolderAsked(folder, files);
    return files;
  }

  [[nodiscard]] std::vector<FoundItem> InPrivateFolderOf(const AbsoluteIRI& asker) const {
    if (!view.MayHavePrivateFolder(asker)) return {};
    const auto entry =
        folders.GetPathEntryFromAbsoluteIRI(asker, FilenameMatchingPolicy::FileSystemDefault);
    const auto folder = entry != nullptr ? entry->GetSingleSubfolderEntryA() : nullptr;
    return folder != nullptr ? In(folder) : std::vector<FoundItem>();
  }

  /// The matches in ordinary folders and those in the method entries of that name, in path order.
  [[nodiscard]] std::vector<FoundItem> OnPath() const {
    auto ordinary = InScope(kMainScope);
    std::vector<FoundItem> methods;
    const IPath& asked = observer == nullptr ? *view.GetPath() : folders;
    for (const auto& entry : PathManagement::detail::GetMethodEntriesFor(asked, target)) {
      const auto files = In(entry);
      methods.insert(methods.end(), files.begin(), files.end());
    }
    if (methods.empty()) return ordinary;
    std::vector<FoundItem> all;
    std::merge(ordinary.begin(), ordinary.end(), methods.begin(), methods.end(),
               std::back_inserter(all), [this](const FoundItem& method, const FoundItem& plain) {
                 return PathManagement::detail::MethodEntryWins(folders, *method.GetPathEntry(),
                                                                *plain.GetPathEntry());
               });
    return all;
  }

  const PathView& view;
  const FolderPath& folders;  // all of them
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

}  // namespace Corvane::PathManagement::host
