#include "searchpath/host/environment.h"

#include "searchpath/host/folder_tree.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/utilities/file_lookup.h"
#include "text/separators.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using PathManagement::detail::SearchTarget;
using Folders = std::vector<std::shared_ptr<const FolderEntry>>;

constexpr std::array<std::uint32_t, 1> kMainKinds = {0};
constexpr std::array<std::uint32_t, 5> kAllKinds = {0, 1, 2, 3, 4};

Folders Expand(const AbsoluteIRI& folder, FolderExpansion expansion) {
  if (expansion == FolderExpansion::Recursive) return CreateFolderTree(folder);
  return {FolderEntry::Create(folder)};
}

SearchTarget TargetOf(const Lookup& lookup) {
  return CreateSearchTargetWithExtensionInFilenamePreferred(lookup.name, lookup.extensions);
}

void AppendItems(const std::shared_ptr<const IPathEntry>& entry, const SearchTarget& target,
                 FilenameMatchingPolicy policy, std::vector<FoundItem>& found) {
  for (auto& item : entry->FindItems(target, policy)) found.emplace_back(std::move(item), entry);
}

/// Every match of a plain name: those in ordinary folders and those in the method entries of that
/// name, in path order.
std::vector<FoundItem> FindAllOnPath(const IPath& path, const SearchTarget& target,
                                     FilenameMatchingPolicy policy) {
  const SearchScope scope(kMainKinds.data(), kMainKinds.size());
  const auto ordinary = path.FindAllInScope(scope, target, policy);
  std::vector<FoundItem> methods;
  for (const auto& entry : path.GetMethodEntriesByName(scope, target.GetName(),
                                                       FilenameMatchingPolicy::FileSystemDefault)) {
    AppendItems(entry, target, policy, methods);
  }
  if (methods.empty()) return ordinary;
  std::vector<FoundItem> all;
  std::merge(ordinary.begin(), ordinary.end(), methods.begin(), methods.end(),
             std::back_inserter(all), [&path](const FoundItem& left, const FoundItem& right) {
               return path.FirstEntryIsBeforeSecondOnPath(*left.GetPathEntry(),
                                                          *right.GetPathEntry());
             });
  return all;
}

}  // namespace

Environment::Environment(const std::vector<ustring>& folders, FolderExpansion expansion) {
  Folders entries;
  for (const ustring& folder : folders) {
    try {
      Folders expanded = Expand(workingFolder.Locate(folder), expansion);
      std::move(expanded.begin(), expanded.end(), std::back_inserter(entries));
    } catch (const current_working_folder::FailedToAbsolutizeException& failure) {
      const auto reason =
          static_cast<current_working_folder::AbsolutizeError>(failure.GetErrorCode());
      unlocated.push_back({.folder = folder, .reason = reason});
    }
  }
  path = std::make_shared<const FolderPath>(std::move(entries));
}

Environment::~Environment() = default;

boost::optional<FoundItem> Environment::Find(const Lookup& lookup) const {
  const SearchTarget target = TargetOf(lookup);
  if (!lookup.fromFolder) return FindFirstFileVisibleOnPath(*path, target, lookup.policy);
  const AbsoluteIRI folder = workingFolder.absolutize(*lookup.fromFolder);
  return FindFirstFileVisibleFromFolder(*path, folder, target, lookup.policy);
}

std::vector<FoundItem> Environment::FindAll(const Lookup& lookup) const {
  const SearchTarget target = TargetOf(lookup);
  if (PathManagement::detail::HasSeparator(lookup.name)) {
    return path->FindAllInScope({kAllKinds.data(), kAllKinds.size()}, target, lookup.policy);
  }
  std::vector<FoundItem> found;
  if (lookup.fromFolder) {
    const auto entry = path->GetPathEntryFromAbsoluteIRI(
        workingFolder.absolutize(*lookup.fromFolder), FilenameMatchingPolicy::FileSystemDefault);
    const auto privateFolder = entry ? entry->GetSingleSubfolderEntryA() : nullptr;
    if (privateFolder != nullptr) AppendItems(privateFolder, target, lookup.policy, found);
  }
  const auto onPath = FindAllOnPath(*path, target, lookup.policy);
  found.insert(found.end(), onPath.begin(), onPath.end());
  return found;
}

std::vector<FolderProblem> Environment::FindProblems() const {
  std::vector<FolderProblem> problems = unlocated;
  auto unsearched = path->FindProblems();
  std::move(unsearched.begin(), unsearched.end(), std::back_inserter(problems));
  return problems;
}

std::vector<ustring> ReadFolderList(std::istream& list) {
  std::vector<ustring> folders;
  for (std::string line; std::getline(list, line);) {
    if (!line.empty()) folders.push_back(TextFromBytes(line));
  }
  return folders;
}

ustring GetNativePath(const FoundItem& found) {
  const auto item = found.GetPathItem();
  ustring path = found.GetPathEntry()->GetAbsoluteIRI().getPath();
  if (!path.ends_with(u'/')) path.push_back(u'/');
  return path + item->GetName() + item->GetExtension();
}

}  // namespace Corvane::PathManagement::host
