#include "searchpath/host/environment.h"

#include "host/file_search.h"
#include "host/similar_files.h"
#include "searchpath/host/folder_tree.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/utilities/file_lookup.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using PathManagement::detail::SearchTarget;
using Folders = std::vector<std::shared_ptr<const FolderEntry>>;

Folders Expand(const AbsoluteIRI& folder, FolderExpansion expansion) {
  if (expansion == FolderExpansion::Recursive) return CreateFolderTree(folder);
  return {FolderEntry::Create(folder)};
}

SearchTarget TargetOf(const Lookup& lookup) {
  return CreateSearchTargetWithExtensionInFilenamePreferred(lookup.name, lookup.extensions);
}

}  // namespace

Environment::Environment(const std::vector<ustring>& folders, FolderExpansion expansion) {
  Folders entries;
  for (const ustring& folder : folders) {
    try {
      Folders expanded = Expand(workingFolder.Locate(folder), expansion);
      origins.insert(origins.end(), expanded.size(), folder);
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
  const auto asker = AskerOf(lookup);
  if (!asker) return FindFirstFileVisibleOnPath(*path, target, lookup.policy);
  return FindFirstFileVisibleFromFolder(*path, *asker, target, lookup.policy);
}

std::vector<FoundItem> Environment::FindAll(const Lookup& lookup) const {
  return FindAllFiles(*path, AskerOf(lookup), TargetOf(lookup), lookup.policy, nullptr);
}

Explanation Environment::Explain(const Lookup& lookup) const {
  return ExplainLookup(*path, AskerOf(lookup), TargetOf(lookup), lookup.policy, origins);
}

std::vector<SimilarFile> Environment::FindSimilar(const Lookup& lookup, std::size_t most) const {
  return FindSimilarFiles(*path, TargetOf(lookup), most);
}

std::optional<AbsoluteIRI> Environment::AskerOf(const Lookup& lookup) const {
  if (!lookup.fromFolder) return std::nullopt;
  return workingFolder.absolutize(*lookup.fromFolder);
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
