#ifndef SEARCHPATH_MODEL_PATH_ENTRY_H
#define SEARCHPATH_MODEL_PATH_ENTRY_H

#include "searchpath/export.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/filename_matching_policy.h"
#include "searchpath/model/path_entry_type.h"
#include "searchpath/model/path_item.h"
#include "searchpath/model/search_scope.h"
#include "searchpath/model/search_target.h"
#include "searchpath/model/ustring.h"

#include <functional>
#include <memory>
#include <vector>

namespace Corvane::PathManagement {

class IPathEntry;

/// Entries, in the order that the function which returns them documents. None is null.
using PathEntries = std::vector<std::shared_ptr<const IPathEntry>>;

/// Called with one entry after the other; returns true to stop the traversal.
using PathEntryVisitor = std::function<bool(const std::shared_ptr<const IPathEntry>&)>;

/// One entry of a search path: a folder, its files, and the special folders directly below it.
///
/// An entry is shared and never copied, so the same entry is always the same object. Several
/// entries may stand for one folder: their `GetCanonicalAbsoluteIRI` are then equal.
///
/// Threads: every operation may be called from several threads at once.
/// Errors: what is not there is null or empty, never an exception.
class SEARCHPATH_EXPORT IPathEntry {
 public:
  virtual ~IPathEntry();

  /// The kind of folder this entry is.
  [[nodiscard]] virtual PathEntryType GetPathEntryType() const = 0;

  /// The files of the folder, in the entry's own order. Never null.
  [[nodiscard]] virtual std::shared_ptr<const PathItems> GetItems() const = 0;

  /// The identity of the folder. Must never change: code that sorts entries by it relies on that.
  [[nodiscard]] virtual CanonicalAbsoluteIRI GetCanonicalAbsoluteIRI() const = 0;

  /// The location of the folder, as it was given when the entry was made.
  [[nodiscard]] virtual AbsoluteIRI GetAbsoluteIRI() const = 0;

  /// The private folder, whose files are visible from this folder only; null when there is none.
  [[nodiscard]] virtual std::shared_ptr<const IPathEntry> GetSingleSubfolderEntryA() const = 0;

  /// The resources folder; null when there is none.
  [[nodiscard]] virtual std::shared_ptr<const IPathEntry> GetSingleSubfolderEntryB() const = 0;

  /// The "+" folders. Never null.
  [[nodiscard]] virtual std::shared_ptr<const PathEntries> GetSubfolderEntriesA() const = 0;

  /// The "@" folders, which are called method entries. Never null.
  [[nodiscard]] virtual std::shared_ptr<const PathEntries> GetSubfolderEntriesB() const = 0;

  /// Further folders that an environment hangs below the entry: those that none of the four getters
  /// above returns. Never null.
  [[nodiscard]] virtual std::shared_ptr<const PathEntries> GetSubfolderEntriesC() const = 0;

  /// The best match among the files of the folder, that with the earliest extension of `target`;
  /// null when none matches.
  /// Precondition: the name of `target` holds no separator.
  [[nodiscard]] virtual std::shared_ptr<const PathItem> FindItem(
      const detail::SearchTarget& target, FilenameMatchingPolicy policy) const = 0;

  /// Every match among the files of the folder, best first. Precondition: as for `FindItem`.
  [[nodiscard]] virtual PathItems FindItems(const detail::SearchTarget& target,
                                            FilenameMatchingPolicy policy) const = 0;

  /// Visits, of this entry and all entries below it, those whose kind is in `scope`, in path order.
  /// Returns true when the visitor asked to stop.
  virtual bool ForEachEntryInScope(SearchScope scope, const PathEntryVisitor& visitor) const = 0;

  /// As `ForEachEntryInScope`, but the visitor may be called from several threads at once and in
  /// any order.
  virtual bool ConcurrentForEachEntryInScope(SearchScope scope,
                                             const PathEntryVisitor& visitor) const = 0;

  /// A function that tells whether two file names are the same in this folder under `policy`.
  /// Never null.
  [[nodiscard]] virtual std::shared_ptr<std::function<bool(const ustring&, const ustring&)>>
  GetFilenameComparator(FilenameMatchingPolicy policy) const = 0;

 protected:
  IPathEntry() = default;
  IPathEntry(const IPathEntry&) = default;
  IPathEntry& operator=(const IPathEntry&) = default;
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_MODEL_PATH_ENTRY_H
