#include "searchpath/utilities/deduplicated_path.h"

#include "model/held_hash.h"
#include "paths/join.h"
#include "searchpath/platform/diagnostic_logger.h"

#include <boost/range/algorithm/equal.hpp>
#include <boost/range/join.hpp>
#include <boost/unordered/unordered_flat_set.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace Corvane::PathManagement {

namespace {

using Parts = std::vector<std::shared_ptr<const IPath>>;

// Made when the library is loaded. Nothing is written to it so far.
const foundation::log::basic_diagnostic_logger kLogger("searchpath::utilities::deduplicatedpath");

/// The folders that the answer to one question holds so far.
class SeenFolders {
 public:
  /// Makes room for the folders of the first list, most of which are new. Later lists may repeat
  /// them, so for those the table grows as needed.
  void Expect(std::size_t count) {
    if (folders.empty()) folders.reserve(count);
  }

  /// Adds the folder of `entry`. Returns whether it is new.
  [[nodiscard]] bool Add(const IPathEntry& entry) {
    return folders.insert(AbsoluteIRI(entry.GetCanonicalAbsoluteIRI())).second;
  }

 private:
  boost::unordered_flat_set<AbsoluteIRI, detail::HeldHash> folders;
};

/// The files that one question has found, by folder and file name. Does not own them.
class SeenFiles {
 public:
  /// Adds the file of `item`, which must live as long as this. Returns whether the file is new.
  [[nodiscard]] bool Add(const PathItem& item) { return files.insert(&item).second; }

 private:
  // Where a file name is cut in two does not matter: "a" + "bc" and "ab" + "c" are the same.
  static auto FileName(const PathItem& item) {
    return boost::range::join(item.GetName(), item.GetExtension());
  }

  struct Hash {
    std::size_t operator()(const PathItem* item) const noexcept {
      constexpr std::uint64_t multiplier = 0x9E3779B97F4A7C15;  // 2^64 / the golden ratio
      std::uint64_t hash = item->GetLocation().hashValue();
      for (const ustring* const text : {&item->GetName(), &item->GetExtension()}) {
        for (const char16_t unit : *text) hash = (hash ^ unit) * multiplier;
      }
      return hash;
    }
  };

  struct Equal {
    bool operator()(const PathItem* left, const PathItem* right) const noexcept {
      return left->GetLocation() == right->GetLocation() &&
             boost::equal(FileName(*left), FileName(*right));
    }
  };

  boost::unordered_flat_set<const PathItem*, Hash, Equal> files;
};

/// The entries whose folder is not in `seen` yet; their folders are added to `seen`. The entries
/// are moved, or copied if `List` is const.
template <class List>
PathEntries FirstIn(List& entries, SeenFolders& seen) {
  PathEntries kept;
  kept.reserve(entries.size());
  seen.Expect(entries.size());
  for (std::size_t at = 0; at < entries.size(); ++at) {
    // Entries lie anywhere in memory: some are prefetched while an earlier one is asked.
    constexpr std::size_t ahead = 8;
    if (entries.size() - at > ahead) __builtin_prefetch(entries[at + ahead].get());
    if (seen.Add(*entries[at])) kept.push_back(std::move(entries[at]));
  }
  return kept;
}

PathEntries FirstOf(PathEntries entries, SeenFolders& seen) { return FirstIn(entries, seen); }

PathEntries FirstOf(const std::shared_ptr<const PathEntries>& entries, SeenFolders& seen) {
  // Null when the part was moved from.
  return entries == nullptr ? PathEntries() : FirstIn(*entries, seen);
}

/// The first entry for each folder in the lists that ask(part) returns for `parts`. All entries of
/// a list are asked for their folders before the next part is asked.
template <class Ask>
PathEntries CollectFirst(const Parts& parts, const Ask& ask) {
  std::vector<PathEntries> kept;
  kept.reserve(parts.size());
  SeenFolders seen;
  for (const auto& part : parts) kept.push_back(FirstOf(ask(*part), seen));
  return detail::Join(std::move(kept));
}

}  // namespace

DeduplicatedPath::DeduplicatedPath(std::vector<std::shared_ptr<const IPath>>&& pathParts)
    : ConcatenatedPath(std::move(pathParts)) {}

DeduplicatedPath::DeduplicatedPath(const DeduplicatedPath& other) = default;

DeduplicatedPath::DeduplicatedPath(DeduplicatedPath&& other) = default;

DeduplicatedPath::~DeduplicatedPath() = default;

std::shared_ptr<const PathEntries> DeduplicatedPath::GetMainEntries() const {
  mainEntriesOnce.Call([this] {
    mainEntries = std::make_shared<const PathEntries>(
        CollectFirst(parts, [](const IPath& part) { return part.GetMainEntries(); }));
  });
  return mainEntries;
}

PathEntries DeduplicatedPath::GetMethodEntries() const {
  return CollectFirst(parts, [](const IPath& part) { return part.GetMethodEntries(); });
}

PathEntries DeduplicatedPath::GetMethodEntriesByName(SearchScope scope, const ustring& name,
                                                     FilenameMatchingPolicy policy) const {
  return CollectFirst(
      parts, [&](const IPath& part) { return part.GetMethodEntriesByName(scope, name, policy); });
}

PathEntries DeduplicatedPath::GetPartiallyMatchingEntries(SearchScope scope, const ustring& name,
                                                          FilenameMatchingPolicy policy) const {
  return CollectFirst(parts, [&](const IPath& part) {
    return part.GetPartiallyMatchingEntries(scope, name, policy);
  });
}

std::vector<FoundItem> DeduplicatedPath::FindAllInScope(SearchScope scope,
                                                        const detail::SearchTarget& target,
                                                        FilenameMatchingPolicy policy) const {
  std::vector<std::vector<FoundItem>> kept;
  kept.reserve(parts.size());
  SeenFiles seen;
  for (const auto& part : parts) {
    kept.push_back(part->FindAllInScope(scope, target, policy));
    // `seen` points to the items of files that are kept, which live as long as `kept`.
    std::erase_if(kept.back(),
                  [&](const FoundItem& found) { return !seen.Add(*found.GetPathItem()); });
  }
  return detail::Join(std::move(kept));
}

bool DeduplicatedPath::ForEachEntry(SearchScope scope, const PathEntryVisitor& visitor) const {
  // Another thread may be building the list: it may be read only once the flag says "built". An
  // empty list counts as not built, as the header says.
  if (mainEntriesOnce.IsBuilt() && mainEntries != nullptr && !mainEntries->empty()) {
    return std::ranges::any_of(*mainEntries, [&](const auto& entry) {
      return entry->ForEachEntryInScope(scope, visitor);
    });
  }
  SeenFolders seen;
  return ConcatenatedPath::ForEachEntry(
      scope, [&](const auto& entry) { return seen.Add(*entry) && visitor(entry); });
}

bool DeduplicatedPath::ConcurrentForEachEntry(SearchScope scope,
                                              const PathEntryVisitor& visitor) const {
  return ForEachEntry(scope, visitor);
}

}  // namespace Corvane::PathManagement
