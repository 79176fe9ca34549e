#ifndef SEARCHPATH_MODEL_PATH_H
#define SEARCHPATH_MODEL_PATH_H

#include "searchpath/export.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/filename_matching_policy.h"
#include "searchpath/model/found_item.h"
#include "searchpath/model/path_entry.h"
#include "searchpath/model/search_scope.h"
#include "searchpath/model/search_target.h"
#include "searchpath/model/ustring.h"

#include <boost/optional.hpp>

#include <memory>
#include <vector>

namespace Corvane::PathManagement {

/// A search path: an ordered list of folders in which files are looked up by name.
///
/// The listed folders are its main entries. Below each main entry are its special folders: its
/// private folder, its resources folder, "+" folders, and "@" folders, which are called method
/// entries. Path order is depth first: an entry, all entries below it, then the next main entry.
///
/// A `SearchScope` says which kinds of entry (`PathEntryType` values) an operation covers.
/// `GetMethodEntriesByName` applies the scope to the entry *above* the method entry: `kMainScope`
/// finds the "@" folders directly below ordinary folders. A method entry's name is its folder name
/// without the "@": a file "fn" is also looked for in the folders "@fn".
///
/// A path never changes. When its folders change, its owner makes a new path.
///
/// When a path is a part of a composite path, its `GetMainEntries` must not call that of the
/// composite path, which may be waiting for this very answer.
///
/// Threads: every operation may be called from several threads at once.
/// Errors: what is not found is null or empty, never an exception. An exception of a visitor passes
/// through unchanged; an empty visitor raises `std::bad_function_call` when it would be called.
class SEARCHPATH_EXPORT IPath {
 public:
  virtual ~IPath();

  /// The main entries in path order. Never null, except from a composite that was moved from. The
  /// vector never changes, so it may be kept. Before a range-for, store the pointer in a variable:
  /// a temporary is destroyed before the loop body runs.
  [[nodiscard]] virtual std::shared_ptr<const PathEntries> GetMainEntries() const = 0;

  /// All method entries in path order.
  [[nodiscard]] virtual PathEntries GetMethodEntries() const = 0;

  /// The method entries called `name` whose parent entry's kind is in `scope`, in path order.
  [[nodiscard]] virtual PathEntries GetMethodEntriesByName(SearchScope scope, const ustring& name,
                                                           FilenameMatchingPolicy policy) const = 0;

  /// The entries in `scope` that `name`, a partial pathname of folders, matches, in path order.
  [[nodiscard]] virtual PathEntries GetPartiallyMatchingEntries(
      SearchScope scope, const ustring& name, FilenameMatchingPolicy policy) const = 0;

  /// The main entry that `entry` belongs to.
  /// Precondition: `entry` is on the path.
  [[nodiscard]] virtual std::shared_ptr<const IPathEntry> GetMainEntryForEntry(
      const IPathEntry& entry) const = 0;

  /// The entry directly above `entry`, null for a main entry.
  /// Precondition: `entry` is on the path.
  [[nodiscard]] virtual std::shared_ptr<const IPathEntry> GetParentEntryForEntry(
      const IPathEntry& entry) const = 0;

  /// The first entry whose canonical location is exactly `iri`; null when there is none.
  [[nodiscard]] virtual std::shared_ptr<const IPathEntry> GetPathEntryFromAbsoluteIRI(
      const CanonicalAbsoluteIRI& iri) const = 0;

  /// The first entry that `iri` names when locations are compared under `policy`; null when there
  /// is none.
  [[nodiscard]] virtual std::shared_ptr<const IPathEntry> GetPathEntryFromAbsoluteIRI(
      const AbsoluteIRI& iri, FilenameMatchingPolicy policy) const = 0;

  /// The first file in path order that `target` matches in the entries of `scope`; empty when there
  /// is none.
  [[nodiscard]] virtual boost::optional<FoundItem> FindFirstInScope(
      SearchScope scope, const detail::SearchTarget& target,
      FilenameMatchingPolicy policy) const = 0;

  /// Every file that `target` matches in the entries of `scope`, in path order.
  [[nodiscard]] virtual std::vector<FoundItem> FindAllInScope(
      SearchScope scope, const detail::SearchTarget& target,
      FilenameMatchingPolicy policy) const = 0;

  /// Visits the entries in `scope` in path order. Returns true when the visitor asked to stop.
  virtual bool ForEachEntry(SearchScope scope, const PathEntryVisitor& visitor) const = 0;

  /// As `ForEachEntry`, but the visitor may be called from several threads at once and in any
  /// order.
  virtual bool ConcurrentForEachEntry(SearchScope scope, const PathEntryVisitor& visitor) const = 0;

  /// Whether `first` comes before `second` in path order; true as well when only `first` is on the
  /// path.
  [[nodiscard]] virtual bool FirstEntryIsBeforeSecondOnPath(const IPathEntry& first,
                                                            const IPathEntry& second) const = 0;

  /// Whether the folder of `entry` is on the path: some entry of the path, main or below, has an
  /// equal canonical location, compared as `AbsoluteIRI`. It need not be the same object.
  ///
  /// An implementation returns true for every entry that it lists, visits or finds files in, and
  /// accepts every such entry in `GetMainEntryForEntry`, `GetParentEntryForEntry` and
  /// `FirstEntryIsBeforeSecondOnPath`. A `FilteredPath` hides exactly the entries for which its
  /// excluded path returns true here.
  [[nodiscard]] virtual bool IsEntryOnPath(const IPathEntry& entry) const = 0;

 protected:
  IPath() = default;
  IPath(const IPath&) = default;
  IPath& operator=(const IPath&) = default;
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_MODEL_PATH_H
