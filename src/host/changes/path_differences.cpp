#include "searchpath/host/path_differences.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <algorithm>
#include <tuple>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using Entry = std::shared_ptr<const IPathEntry>;
using ComparisonFilter = PathEntryVectorDifferentiator::ComparisonFilter;

/// The positions on a path of the entries that a comparison may find.
class Positions {
 public:
  struct Position {
    std::size_t main = 0;   // the number of the main entry that the entry is or belongs to
    std::size_t order = 0;  // the entry's own number, in the order in which entries were added
  };

  explicit Positions(const PathEntries& mainEntries) : mainCount(mainEntries.size()) {
    for (std::size_t main = 0; main < mainEntries.size(); ++main) Add(mainEntries[main], main);
  }

  [[nodiscard]] const Position* Find(const Entry& entry) const {
    const auto found = positions.find(entry.get());
    return found == positions.end() ? nullptr : &found->second;
  }

  /// Adds what is below those of `changedEntries` that are main entries, which are on the path
  /// itself. What is below unchanged ones is not compared, and need not be listed.
  void AddBelow(const PathEntries& changedEntries) {
    for (const Entry& changed : changedEntries) {
      const Position* const position = Find(changed);
      // Special folders are skipped (some are not, see `mainCount`): they are added with their main
      // entry, which has changed, too.
      if (position == nullptr || position->order >= mainCount) continue;
      changed->ForEachEntryInScope(kAllKindsAndResourcesScope,
                                   [this, main = position->main](const Entry& below) {
                                     Add(below, main);
                                     return false;
                                   });
    }
  }

 private:
  void Add(const Entry& entry, std::size_t main) {
    positions.try_emplace(entry.get(), Position{main, positions.size()});
  }

  // Main entries have orders below this. Where main entries are repeated, some special folders have
  // such orders, too; `AddBelow` then visits what is below these once more, and adds nothing.
  std::size_t mainCount;
  boost::unordered_flat_map<const IPathEntry*, Position> positions;
};

class Differences {
 public:
  Differences(const PathEntries& before, const PathEntries& after, ComparisonFilter filter)
      : positionsBefore(before), positionsAfter(after) {
    PathEntryVectorDifferentiator compared;
    compared.Compare(before, after, filter);
    const PathEntries& refreshed = *compared.GetRefreshedBefore();
    if (filter == ComparisonFilter::IncludeSubfolders) {
      positionsBefore.AddBelow(*compared.GetRemoved());
      positionsBefore.AddBelow(refreshed);
      positionsAfter.AddBelow(*compared.GetAdded());
      positionsAfter.AddBelow(*compared.GetRefreshedAfter());
    }
    for (const auto& entry : *compared.GetRemoved()) Add(FolderChange::Removed, entry, nullptr);
    for (const auto& entry : *compared.GetAdded()) Add(FolderChange::Added, nullptr, entry);
    for (const auto& entry : *compared.GetReordered()) Add(FolderChange::Moved, entry, entry);
    for (std::size_t at = 0; at < refreshed.size(); ++at) {
      Add(FolderChange::Refreshed, refreshed[at], (*compared.GetRefreshedAfter())[at]);
    }
  }

  [[nodiscard]] std::vector<FolderDifference> InOrder() && {
    std::ranges::sort(found, {}, [](const auto& positioned) {
      const auto& [position, difference] = positioned;
      return std::make_tuple(difference.change, position.main, position.order);
    });
    std::vector<FolderDifference> differences;
    differences.reserve(found.size());
    for (auto& positioned : found) differences.push_back(std::move(positioned.second));
    return differences;
  }

 private:
  void Add(FolderChange change, const Entry& before, const Entry& after) {
    const auto* const positionBefore = positionsBefore.Find(before);
    const auto* const positionAfter = positionsAfter.Find(after);
    FolderDifference difference = {
        .change = change, .before = before, .after = after, .placeBefore = {}, .placeAfter = {}};
    if (positionBefore != nullptr) difference.placeBefore = positionBefore->main;
    if (positionAfter != nullptr) difference.placeAfter = positionAfter->main;
    // Null for a special folder whose main entry makes it anew whenever it is asked.
    const auto* const position = positionAfter != nullptr ? positionAfter : positionBefore;
    found.emplace_back(position == nullptr ? Positions::Position() : *position,
                       std::move(difference));
  }

  Positions positionsBefore;
  Positions positionsAfter;
  std::vector<std::pair<Positions::Position, FolderDifference>> found;  // each with its position
};

}  // namespace

std::vector<FolderDifference> FindPathDifferences(const IPath& before, const IPath& after,
                                                  ComparisonFilter filter) {
  return Differences(*before.GetMainEntries(), *after.GetMainEntries(), filter).InOrder();
}

}  // namespace Corvane::PathManagement::host
