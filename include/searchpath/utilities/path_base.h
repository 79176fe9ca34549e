#ifndef SEARCHPATH_UTILITIES_PATH_BASE_H
#define SEARCHPATH_UTILITIES_PATH_BASE_H

#include "searchpath/export.h"
#include "searchpath/model/path.h"

#include <memory>

namespace Corvane::PathManagement {

/// A base class for paths of one's own: who answers `GetMainEntries` has a path. Every other
/// operation asks these entries, and may be overridden where there is a quicker way,
/// `FindFirstInScope` and `FindAllInScope` first of all.
///
/// Precondition: `GetMainEntries` returns the same entries every time.
/// A name with separators is a partial pathname, looked up in the entries that its folders match;
/// one that begins with a separator names a folder of the "file" scheme in full.
///
/// Threads: all operations, from any thread, when those of the derived class are.
/// Ownership: keeps the entries, in a table that is made when a question first needs it.
/// Cost: files are looked up by asking one entry after the other. Questions about parents, order,
/// membership, locations, method entries and partial pathnames walk every entry once, when the first
/// of them comes, and are answered from a table afterwards.
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
  /// Compares with the canonical locations; resolves no links.
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

  [[nodiscard]] const State& Ready() const;

  std::unique_ptr<State> state;
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_PATH_BASE_H
