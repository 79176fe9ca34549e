#ifndef SEARCHPATH_SRC_LISTED_ENTRY_TABLE_H
#define SEARCHPATH_SRC_LISTED_ENTRY_TABLE_H

#include "listed/entry_walk.h"
#include "model/held_hash.h"
#include "searchpath/utilities/filename_comparison.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace Corvane::PathManagement::detail {

/// All entries of a path in path order, one row each, which is found by object or by location. Main
/// entries are those of the path itself; the entries for special folders are below them.
///
/// Threads: immutable once filled.
template <class Entry>
class EntryTable {
 public:
  struct Row {
    std::shared_ptr<const Entry> entry;
    std::uint32_t parent;  // the row of the entry above; its own row for a main entry
    std::uint32_t main;    // the row of the main entry above it; its own row for a main entry
  };

  /// Adds `top`, the next main entry, and all entries below it. entriesBelow(entry) returns the
  /// entries directly below an entry.
  template <class Below>
  void Add(const std::shared_ptr<const Entry>& top, const Below& entriesBelow) {
    const auto main = static_cast<std::uint32_t>(rows.size());
    std::vector<std::uint32_t> lastAtDepth;  // the rows above the added one, from `top` down
    const auto visit = [&](const auto& entry, std::size_t depth) {
      const auto row = static_cast<std::uint32_t>(rows.size());
      lastAtDepth.resize(depth);
      rows.push_back({entry, depth == 0 ? row : lastAtDepth.back(), main});
      lastAtDepth.push_back(row);
      byObject.emplace(entry.get(), row);
      byLocation.emplace(entry->GetCanonicalAbsoluteIRI(), row);
      return false;  // to go on
    };
    WalkEntries(top, visit, entriesBelow);
  }

  [[nodiscard]] const std::vector<Row>& Rows() const noexcept { return rows; }

  /// The entry above the one in `row`; null for a main entry.
  [[nodiscard]] std::shared_ptr<const Entry> Parent(std::uint32_t row) const {
    return rows[row].parent == row ? nullptr : rows[rows[row].parent].entry;
  }

  /// The first row that holds the object `entry`, or else the first for its folder; nullopt when
  /// the folder is not on the path.
  [[nodiscard]] std::optional<std::uint32_t> Find(const IPathEntry& entry) const {
    const auto found = byObject.find(&entry);
    if (found != byObject.end()) return found->second;
    // Compared without the further text of a canonical IRI: only the folder matters.
    return Find(static_cast<const AbsoluteIRI&>(entry.GetCanonicalAbsoluteIRI()));
  }
  /// The first row for the folder with this canonical location; nullopt when there is none.
  [[nodiscard]] std::optional<std::uint32_t> Find(const AbsoluteIRI& canonical) const {
    const auto found = byLocation.find(canonical);
    if (found == byLocation.end()) return std::nullopt;
    return found->second;
  }
  /// The first entry whose canonical location is exactly `iri`; null when there is none.
  [[nodiscard]] std::shared_ptr<const Entry> FindExactly(const CanonicalAbsoluteIRI& iri) const {
    const auto row = Find(static_cast<const AbsoluteIRI&>(iri));
    if (!row) return nullptr;
    // Mostly the entry is in this very row, but entries for one folder may differ in the further
    // text of their canonical IRIs.
    const auto found = std::find_if(rows.begin() + *row, rows.end(), [&](const Row& each) {
      return each.entry->GetCanonicalAbsoluteIRI() == iri;
    });
    return found == rows.end() ? nullptr : found->entry;
  }

  /// The first entry whose canonical location is `canonical` when compared under `policy`; null
  /// when there is none.
  [[nodiscard]] std::shared_ptr<const Entry> FindNamed(const AbsoluteIRI& canonical,
                                                       FilenameMatchingPolicy policy) const {
    if (policy == FilenameMatchingPolicy::IgnoreCase) {
      const auto isNamed = [&](const Row& row) {
        const AbsoluteIRI location = row.entry->GetCanonicalAbsoluteIRI();
        return AreSameFilename(location.toStringView(), canonical.toStringView(), policy);
      };
      const auto named = std::find_if(rows.begin(), rows.end(), isNamed);
      return named == rows.end() ? nullptr : named->entry;
    }
    const auto row = Find(canonical);
    return row ? rows[*row].entry : nullptr;
  }

  /// Whether `first` comes before `second`. What is not on the path comes after all that is.
  [[nodiscard]] bool IsBefore(const IPathEntry& first, const IPathEntry& second) const {
    const auto firstRow = Find(first);
    const auto secondRow = Find(second);
    return firstRow && (!secondRow || *firstRow < *secondRow);
  }

 private:
  std::vector<Row> rows;
  // The index of the first row for each object and for each canonical location.
  boost::unordered_flat_map<const IPathEntry*, std::uint32_t> byObject;
  boost::unordered_flat_map<AbsoluteIRI, std::uint32_t, HeldHash> byLocation;
};

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_LISTED_ENTRY_TABLE_H
