#ifndef SEARCHPATH_UTILITIES_CONCATENATED_PATH_H
#define SEARCHPATH_UTILITIES_CONCATENATED_PATH_H

#include "searchpath/export.h"
#include "searchpath/model/path.h"
#include "searchpath/utilities/once_flag.h"

#include <initializer_list>
#include <memory>
#include <vector>

namespace Corvane::PathManagement {

/// Several paths, the parts, seen as one: the entries of the first part, then those of the second,
/// and so on. Every operation calls the same operation of the parts, in their order. Where there
/// can be only one answer, the first part that has one decides. An entry that is on two parts
/// occurs twice.
///
/// The first `GetMainEntries` builds the list of main entries, which is then kept. All other
/// answers come from the parts each time.
///
/// Precondition: no part is null. `GetMainEntryForEntry` and `GetParentEntryForEntry` are called
/// only with entries that are on some part (asserted in debug builds, unchecked in release). The
/// `GetMainEntries` of a part must not call that of this path: both would wait for ever.
/// Threads: as safe as the parts are; the list of main entries is built once.
/// Ownership: shares the parts.
/// Errors: exceptions of a part or a visitor pass through unchanged, and leave this path as it was.
/// When building the list of main entries fails, the next call tries again.
/// Cost: one virtual call for each part. While a list is made, the answers of all parts are also in
/// memory; the returned list has no spare capacity.
class SEARCHPATH_EXPORT ConcatenatedPath : public IPath {
 public:
  /// Joins two parts. Precondition: neither is null.
  ConcatenatedPath(const std::shared_ptr<const IPath>& first,
                   const std::shared_ptr<const IPath>& second);
  /// Takes over `pathParts`, which is empty afterwards.
  explicit ConcatenatedPath(std::vector<std::shared_ptr<const IPath>>&& pathParts);
  /// Joins the parts in a list. Without this constructor, `ConcatenatedPath({p, q})` would be
  /// ambiguous: the braces could make a vector of parts, or a path to copy.
  ConcatenatedPath(std::initializer_list<std::shared_ptr<const IPath>> pathParts);

  /// Shares the parts, and the list of main entries if it is already built. Does not wait for
  /// another thread that is building the list: the copy will build its own.
  ConcatenatedPath(const ConcatenatedPath& other);
  /// Copies the parts and takes over the list of main entries: if the list of `other` was built,
  /// its `GetMainEntries` returns null from then on. May raise, since the parts are copied.
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
  /// Looks in all parts for `iri` as an exact canonical location, and only then under `policy`.
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetPathEntryFromAbsoluteIRI(
      const AbsoluteIRI& iri, FilenameMatchingPolicy policy) const override;
  [[nodiscard]] boost::optional<FoundItem> FindFirstInScope(
      SearchScope scope, const detail::SearchTarget& target,
      FilenameMatchingPolicy policy) const override;
  [[nodiscard]] std::vector<FoundItem> FindAllInScope(SearchScope scope,
                                                      const detail::SearchTarget& target,
                                                      FilenameMatchingPolicy policy) const override;
  bool ForEachEntry(SearchScope scope, const PathEntryVisitor& visitor) const override;
  /// Each part may visit its entries concurrently; one part is visited after the other.
  bool ConcurrentForEachEntry(SearchScope scope, const PathEntryVisitor& visitor) const override;
  /// The first part that either entry is on decides.
  [[nodiscard]] bool FirstEntryIsBeforeSecondOnPath(const IPathEntry& first,
                                                    const IPathEntry& second) const override;
  [[nodiscard]] bool IsEntryOnPath(const IPathEntry& entry) const override;

 protected:
  const std::vector<std::shared_ptr<const IPath>> parts;  ///< in path order, none null
  mutable detail::OnceFlag mainEntriesOnce;               ///< guards mainEntries
  /// Null until the list is built; a derived class may build it in its own way.
  mutable std::shared_ptr<const PathEntries> mainEntries;

 private:
  [[nodiscard]] const IPath& PartHolding(const IPathEntry& entry) const;
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_CONCATENATED_PATH_H
