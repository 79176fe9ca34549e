#include "host/path/path_view.h"

#include "host/common/held_hash.h"
#include "searchpath/utilities/deduplicated_path.h"
#include "searchpath/utilities/filtered_path.h"

#include <boost/unordered/unordered_flat_set.hpp>

#include <algorithm>
#include <iterator>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using Folders = std::vector<std::shared_ptr<const FolderEntry>>;
using Given = GivenFolders::Given;

std::shared_ptr<const FolderPath> PathOf(const std::vector<Given>& given) {
  Folders entries;
  for (const Given& folder : given) {
    entries.insert(entries.end(), folder.entries.begin(), folder.entries.end());
  }
  return std::make_shared<const FolderPath>(std::move(entries));
}

std::shared_ptr<const IPath> WithoutRepeats(const std::shared_ptr<const IPath>& path) {
  auto once =
      std::make_shared<const DeduplicatedPath>(std::vector<std::shared_ptr<const IPath>>{path});
  // Once its list is built, its traversals visit all that hangs below each main entry. Built at
  // once, so that they do from the first on: a folder may be a main entry and hang below another.
  static_cast<void>(once->GetMainEntries());
  return once;
}

}  // namespace

GivenPath::GivenPath(std::vector<Given> givenFolders)
    : given(std::move(givenFolders)), path(PathOf(given)) {
  for (std::size_t number = 0; number < given.size(); ++number) {
    for (const auto& entry : given[number].entries) givenBy.emplace(entry.get(), number);
  }
}

const FolderOrigin& GivenPath::GetOrigin(const IPathEntry& entry) const {
  auto found = givenBy.find(&entry);
  if (found == givenBy.end()) found = givenBy.find(path->GetMainEntryForEntry(entry).get());
  return given[found->second].origin;
}

PathView::PathView(GivenFolders givenFolders, const GivenFolders& hiddenFolders,
                   FolderExpansion expansion, bool keepDuplicates)
    : all(std::move(givenFolders.folders)),
      unlocated(std::move(givenFolders.unlocated)),
      dropsRepeats(!keepDuplicates),
      path(all.GetPath()) {
  Folders folders;
  for (const Given& folder : hiddenFolders.folders) {
    folders.push_back(folder.entries.front());
    hiddenTexts.push_back(folder.origin.folder);
  }
  for (const FolderProblem& problem : hiddenFolders.unlocated) {
    unlocatedHidden.push_back(problem.folder);
  }
  hidden = std::make_shared<const HiddenFolders>(std::move(folders), expansion);
  const bool hides = !hiddenTexts.empty();
  // Hidden ones first, so that none is taken for the first of a folder that is shown elsewhere; and
  // last, since traversals without repeats ask the main entries for all that hangs below them.
  if (hides && dropsRepeats) path = std::make_shared<const FilteredPath>(path, hidden);
  if (dropsRepeats) path = WithoutRepeats(path);
  if (hides) path = std::make_shared<const FilteredPath>(path, hidden);
}

Folders PathView::GetMainFolders() const {
  const auto entries = path->GetMainEntries();
  Folders folders;
  folders.reserve(entries->size());
  for (const auto& entry : *entries) {
    folders.push_back(std::static_pointer_cast<const FolderEntry>(entry));
  }
  return folders;
}

const ustring* PathView::FindHider(const IPathEntry& entry) const {
  const auto number = hidden->FindHider(entry);
  return number ? &hiddenTexts[*number] : nullptr;
}

void PathView::RemoveUnseen(std::vector<FoundItem>& files) const {
  boost::unordered_flat_map<AbsoluteIRI, const IPathEntry*, HeldHash> firstEntries;
  std::erase_if(files, [&](const FoundItem& file) {
    const auto entry = file.GetPathEntry();
    if (FindHider(*entry) != nullptr) return true;
    if (!dropsRepeats) return false;
    const auto first = firstEntries.emplace(entry->GetCanonicalAbsoluteIRI(), entry.get()).first;
    return first->second != entry.get();
  });
}

std::vector<FolderProblem> PathView::FindProblems() const {
  std::vector<FolderProblem> problems = unlocated;
  boost::unordered_flat_set<AbsoluteIRI, HeldHash> seen;
  auto unsearched = all.GetPath()->FindProblems([&](const IPathEntry& folder) {
    return FindHider(folder) == nullptr &&
           (!dropsRepeats || seen.insert(folder.GetCanonicalAbsoluteIRI()).second);
  });
  std::move(unsearched.begin(), unsearched.end(), std::back_inserter(problems));
  return problems;
}

std::vector<ustring> PathView::FindIdleExclusions() const {
  std::vector<ustring> idle = unlocatedHidden;
  boost::unordered_flat_set<std::size_t> hidingMainFolders;
  for (const auto& folder : all.GetPath()->GetMainFolders()) {
    if (const auto number = hidden->FindHider(*folder)) hidingMainFolders.insert(*number);
  }
  const auto& folders = hidden->GetMainFolders();
  for (std::size_t number = 0; number < folders.size(); ++number) {
    const bool hides = hidingMainFolders.contains(number) ||
                       // Only now, since it lists every folder.
                       all.GetPath()->IsEntryOnPath(*folders[number]);
    if (!hides) idle.push_back(hiddenTexts[number]);
  }
  return idle;
}

}  // namespace Corvane::PathManagement::host
