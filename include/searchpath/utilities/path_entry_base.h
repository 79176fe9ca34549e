#ifndef SEARCHPATH_UTILITIES_PATH_ENTRY_BASE_H
#define SEARCHPATH_UTILITIES_PATH_ENTRY_BASE_H

#include "searchpath/export.h"
#include "searchpath/model/path_entry.h"

#include <memory>

namespace Corvane::PathManagement {

/// A base class for entries of one's own: who answers where the folder is (`GetAbsoluteIRI`) and
/// which files it holds (`GetItems`) has an entry, and who answers `GetFoldersBelow` as well has one
/// with special folders. Every other operation follows from these three and may be overridden where
/// there is a quicker way, `FindItem` and `FindItems` first of all.
///
/// Precondition: entries are made with `std::make_shared`, since a traversal hands them out.
/// Threads: all operations, from any thread, when those of the derived class are.
/// Cost: as much as the operations of the derived class; nothing is kept.
class SEARCHPATH_EXPORT PathEntryBase : public IPathEntry,
                                        public std::enable_shared_from_this<PathEntryBase> {
 public:
  ~PathEntryBase() override;

  /// The kind that the name of the folder says. A folder on the path itself is `Ordinary` whatever
  /// it is called; an entry for one whose name says otherwise overrides this.
  [[nodiscard]] PathEntryType GetPathEntryType() const override;
  /// The location itself: override where a folder has several.
  [[nodiscard]] CanonicalAbsoluteIRI GetCanonicalAbsoluteIRI() const override;
  // The folders below, each to the slot of its kind.
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetSingleSubfolderEntryA() const override;
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetSingleSubfolderEntryB() const override;
  [[nodiscard]] std::shared_ptr<const PathEntries> GetSubfolderEntriesA() const override;
  [[nodiscard]] std::shared_ptr<const PathEntries> GetSubfolderEntriesB() const override;
  [[nodiscard]] std::shared_ptr<const PathEntries> GetSubfolderEntriesC() const override;
  /// The first of `FindItems`.
  [[nodiscard]] std::shared_ptr<const PathItem> FindItem(
      const detail::SearchTarget& target, FilenameMatchingPolicy policy) const override;
  /// In the order of the extensions, then the very name before those that differ in case, then in
  /// the order of the items.
  [[nodiscard]] PathItems FindItems(const detail::SearchTarget& target,
                                    FilenameMatchingPolicy policy) const override;
  bool ForEachEntryInScope(SearchScope scope, const PathEntryVisitor& visitor) const override;
  /// On the calling thread, in order.
  bool ConcurrentForEachEntryInScope(SearchScope scope,
                                     const PathEntryVisitor& visitor) const override;
  /// `AreSameFilename`.
  [[nodiscard]] std::shared_ptr<std::function<bool(const ustring&, const ustring&)>>
  GetFilenameComparator(FilenameMatchingPolicy policy) const override;

 protected:
  PathEntryBase() = default;
  PathEntryBase(const PathEntryBase&) = default;
  PathEntryBase& operator=(const PathEntryBase&) = default;

  /// The special folders directly below, in path order within each kind; none unless overridden.
  [[nodiscard]] virtual PathEntries GetFoldersBelow() const;
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_PATH_ENTRY_BASE_H
