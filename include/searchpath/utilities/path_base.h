#ifndef SEARCHPATH_UTILITIES_PATH_BASE_H
#define SEARCHPATH_UTILITIES_PATH_BASE_H

#include "searchpath/export.h"
#include "searchpath/model/path.h"

#include <memory>

namespace Corvane::PathManagement {

/// A base class for paths of your own: a derived class needs to implement only `GetMainEntries`.
/// All other operations work on these entries. Override them where you have a quicker way,
/// `FindFirstInScope` and `FindAllInScope` first of all.
///
/// A file name with separators is a partial pathname, and is looked up in the entries that its
/// folders match. One that begins with a separator is an absolute pathname of the "file" scheme.
///
/// Precondition: `GetMainEntries` returns the same entries every time.
/// Threads: all operations, from any thread, when those of the derived class are thread-safe.
/// Ownership: keeps the entries in a table, once it is made.
/// Cost: files are looked up in one entry after the other. The first operation on parents, order,
/// membership, locations, method entries or partial pathnames walks all entries once and makes the
/// table, from which these operations are then answered.
class SEARCHPATH_EXPORT PathBase : public IPath {
 public:
  PathBase(const PathBase&) = delete;
  PathBase& operator=(const PathBase&) = delete;
  ~PathBase() override;

  [[nodiscard]] PathEntries GetMethodEntries() const override;
  [[nodiscard]] PathEntries GetMethodEntriesByName(SearchScope scope, const ustring& name,
                                                   FilenameMatchingPolicy policy) const override;
  [[nodiscard]] PathEntries GetPartiallyMatchingEntries(
      SearchScope scope, const ustring& name, FilenameMatchingPolicy policy) const override;
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetMainEntryForEntry(
      const IPathEntry& entry) const override;
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetParentEntryForEntry(
      const IPathEntry& entry) const override;
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetPathEntryFromAbsoluteIRI(
      const CanonicalAbsoluteIRI& iri) const override;
  /// Compares `iri` as it is with the canonical locations: links in `iri` are not resolved.
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetPathEntryFromAbsoluteIRI(
      const AbsoluteIRI& iri, FilenameMatchingPolicy policy) const override;
  [[nodiscard]] boost::optional<FoundItem> FindFirstInScope(
      SearchScope scope, const detail::SearchTarget& target,
      FilenameMatchingPolicy policy) const override;
  [[nodiscard]] std::vector<FoundItem> FindAllInScope(SearchScope scope,
                                                      const detail::SearchTarget& target,
                                                      FilenameMatchingPolicy policy) const override;
  bool ForEachEntry(SearchScope scope, const PathEntryVisitor& visitor) const override;
  /// On the calling thread, in order.
  bool ConcurrentForEachEntry(SearchScope scope, const PathEntryVisitor& visitor) const override;
  [[nodiscard]] bool FirstEntryIsBeforeSecondOnPath(const IPathEntry& first,
                                                    const IPathEntry& second) const override;
  [[nodiscard]] bool IsEntryOnPath(const IPathEntry& entry) const override;

 protected:
  PathBase();

 private:
  struct State;

  /// Makes the table of entries unless it is made, and returns the state that holds it.
  [[nodiscard]] const State& Ready() const;

  std::unique_ptr<State> state;
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_PATH_BASE_H
