#ifndef SEARCHPATH_UTILITIES_CONCATENATED_PATH_H
#define SEARCHPATH_UTILITIES_CONCATENATED_PATH_H

#include "searchpath/export.h"
#include "searchpath/model/path.h"
#include "searchpath/utilities/once_flag.h"

#include <initializer_list>
#include <memory>
#include <vector>

namespace Corvane::PathManagement {

/// Several paths seen as one: the entries of the first part, then those of the second, and so on.
/// The parts are asked in order, and the earliest that answers wins. An entry that two parts hold
/// occurs twice.
///
/// The list of main entries is built from the parts at the first `GetMainEntries` and kept; every
/// other question asks the parts afresh.
///
/// Precondition: no part is null. `GetMainEntryForEntry` and `GetParentEntryForEntry` are asked
/// only for entries that some part holds (asserted in debug builds, unchecked in release). While a
/// part is asked for its main entries, it must not ask this path for those: both would wait for
/// ever.
/// Threads: as safe as the parts are; the list of main entries is built once.
/// Ownership: shares the parts.
/// Errors: exceptions of a part or a visitor pass through unchanged and change nothing; a list of
/// main entries whose building failed is built at the next call.
/// Cost: one virtual call for each part asked. While a list is made, the answers of all parts are
/// in memory as well; the list that is returned has no spare capacity.
class SEARCHPATH_EXPORT ConcatenatedPath : public IPath {
 public:
  /// Precondition: neither is null.
  ConcatenatedPath(const std::shared_ptr<const IPath>& first,
                   const std::shared_ptr<const IPath>& second);
  /// Takes the vector over, which is empty afterwards.
  explicit ConcatenatedPath(std::vector<std::shared_ptr<const IPath>>&& pathParts);
  /// Without it, `ConcatenatedPath({p, q})` could mean two parts, a vector, or a path to copy.
  ConcatenatedPath(std::initializer_list<std::shared_ptr<const IPath>> pathParts);

  /// Shares the parts, and the list of main entries when it is built. While another thread builds
  /// it, the copy does not wait: it will build a list of its own.
  ConcatenatedPath(const ConcatenatedPath& other);
  /// Copies the parts and takes the list of main entries over: a source whose list was built
  /// answers `GetMainEntries` with null from then on. May raise, since the parts are copied.
  ConcatenatedPath(ConcatenatedPath&& other);
  ConcatenatedPath& operator=(const ConcatenatedPath&) = delete;
  ~ConcatenatedPath() override;

  [[nodiscard]] std::shared_ptr<const PathEntries> GetMainEntries() const override;
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
  /// Looks `iri` up exactly, as a canonical location, before any part is asked to apply `policy`.
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetPathEntryFromAbsoluteIRI(
      const AbsoluteIRI& iri, FilenameMatchingPolicy policy) const override;
  [[nodiscard]] boost::optional<FoundItem> FindFirstInScope(
      SearchScope scope, const detail::SearchTarget& target,
      FilenameMatchingPolicy policy) const override;
  [[nodiscard]] std::vector<FoundItem> FindAllInScope(SearchScope scope,
                                                      const detail::SearchTarget& target,
                                                      FilenameMatchingPolicy policy) const override;
  bool ForEachEntry(SearchScope scope, const PathEntryVisitor& visitor) const override;
  /// Each part may visit its entries concurrently; the parts follow one another.
  bool ConcurrentForEachEntry(SearchScope scope, const PathEntryVisitor& visitor) const override;
  /// The first part that holds either entry decides.
  [[nodiscard]] bool FirstEntryIsBeforeSecondOnPath(const IPathEntry& first,
                                                    const IPathEntry& second) const override;
  [[nodiscard]] bool IsEntryOnPath(const IPathEntry& entry) const override;

 protected:
  const std::vector<std::shared_ptr<const IPath>> parts;  ///< in path order, none null
  mutable detail::OnceFlag mainEntriesOnce;               ///< guards mainEntries
  /// Null until it is built; a derived class may build its own list.
  mutable std::shared_ptr<const PathEntries> mainEntries;

 private:
  [[nodiscard]] const IPath& PartHolding(const IPathEntry& entry) const;
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_CONCATENATED_PATH_H
