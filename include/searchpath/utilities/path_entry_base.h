#ifndef SEARCHPATH_UTILITIES_PATH_ENTRY_BASE_H
#define SEARCHPATH_UTILITIES_PATH_ENTRY_BASE_H

#include "searchpath/export.h"
#include "searchpath/model/path_entry.h"

#include <memory>

namespace Corvane::PathManagement {

/// A base class for entries of your own. A derived class implements where the folder is
/// (`GetAbsoluteIRI`) and which files it holds (`GetItems`) and, if it has special folders,
/// `GetFoldersBelow`. All other operations use these three. Override them where you have a quicker
/// way, `FindItem` and `FindItems` first of all.
///
/// Precondition: entries are made with `std::make_shared`, since a traversal hands them out.
/// Threads: all operations, from any thread, when those of the derived class are thread-safe.
/// Cost: that of the operations of the derived class, on every call: nothing is kept.
class SEARCHPATH_EXPORT PathEntryBase : public IPathEntry,
                                        public std::enable_shared_from_this<PathEntryBase> {
 public:
  ~PathEntryBase() override;

  /// The kind that the name of the folder gives. A main entry has to be `Ordinary` whatever its
  /// name: override this where the name gives another kind.
  [[nodiscard]] PathEntryType GetPathEntryType() const override;
  /// Returns `GetAbsoluteIRI`. Override this where a folder can have several locations.
  [[nodiscard]] CanonicalAbsoluteIRI GetCanonicalAbsoluteIRI() const override;
  // Each of these five getters selects its folders from `GetFoldersBelow`: the private folder, the
  // resources folder, the "+" folders, the "@" folders, and those that are left.
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetSingleSubfolderEntryA() const override;
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetSingleSubfolderEntryB() const override;
  [[nodiscard]] std::shared_ptr<const PathEntries> GetSubfolderEntriesA() const override;
  [[nodiscard]] std::shared_ptr<const PathEntries> GetSubfolderEntriesB() const override;
  [[nodiscard]] std::shared_ptr<const PathEntries> GetSubfolderEntriesC() const override;
  /// The first of `FindItems`.
  [[nodiscard]] std::shared_ptr<const PathItem> FindItem(
      const detail::SearchTarget& target, FilenameMatchingPolicy policy) const override;
  /// The matches are ordered by extension, then the exact name before names that differ in case,
  /// then in the order of the items.
  [[nodiscard]] PathItems FindItems(const detail::SearchTarget& target,
                                    FilenameMatchingPolicy policy) const override;
  bool ForEachEntryInScope(SearchScope scope, const PathEntryVisitor& visitor) const override;
  /// On the calling thread, in order.
  bool ConcurrentForEachEntryInScope(SearchScope scope,
                                     const PathEntryVisitor& visitor) const override;
  /// Compares with `AreSameFilename`.
  [[nodiscard]] std::shared_ptr<std::function<bool(const ustring&, const ustring&)>>
  GetFilenameComparator(FilenameMatchingPolicy policy) const override;

 protected:
  PathEntryBase() = default;
  PathEntryBase(const PathEntryBase&) = default;
  PathEntryBase& operator=(const PathEntryBase&) = default;

  /// The special folders directly below, in path order within each kind. None unless overridden.
  [[nodiscard]] virtual PathEntries GetFoldersBelow() const;
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_PATH_ENTRY_BASE_H
