#ifndef SEARCHPATH_MODEL_SEARCH_SCOPE_H
#define SEARCHPATH_MODEL_SEARCH_SCOPE_H

#include <array>
#include <cstdint>

namespace Corvane::PathManagement {

/// The kinds of entry that a lookup or a traversal covers: a view of a list of `PathEntryType`
/// values.
///
/// Ownership: none. The list must outlive every call that the scope is handed to.
class SearchScope {
 public:
  /// `kinds` may be null when `count` is 0: a scope that covers nothing.
  constexpr SearchScope(const std::uint32_t* kinds, std::uint64_t count) noexcept
      : first(kinds), length(count) {}

  /// The numbers that were given to the constructor.
  [[nodiscard]] const std::uint32_t* data() const noexcept { return first; }
  /// How many there are.
  [[nodiscard]] std::uint64_t size() const noexcept { return length; }
  /// The first number.
  [[nodiscard]] const std::uint32_t* begin() const noexcept { return first; }
  /// One past the last number.
  [[nodiscard]] const std::uint32_t* end() const noexcept { return first + length; }

  /// Whether `kind`, the number of a `PathEntryType`, is in the list.
  [[nodiscard]] bool Contains(std::uint32_t kind) const noexcept {
    // A loop by hand: with <algorithm>, this header would cost its includers twice as much.
    const std::uint32_t* at = begin();
    while (at != end() && *at != kind) ++at;
    return at != end();
  }

 private:
  const std::uint32_t* first;
  std::uint64_t length;  // in kinds
};

namespace detail {

/// The number of every kind, resources last, so that each named scope below is a view of the first
/// few. 4 is unused.
inline constexpr std::array<std::uint32_t, 6> kKinds = {0, 1, 2, 3, 4, 5};

}  // namespace detail

/// Ordinary folders only. File names without separators are looked up in this scope. With
/// `IPath::GetMethodEntriesByName` it finds the method entries ("@" folders) directly below
/// ordinary folders.
inline constexpr SearchScope kMainScope(detail::kKinds.data(), /*count=*/1);

/// Every kind of folder but resources folders, which hold data. File names with separators are
/// looked up in this scope.
inline constexpr SearchScope kAllKindsScope(detail::kKinds.data(), /*count=*/5);

/// Every kind of folder, resources folders among them: for traversals that list, count or compare.
inline constexpr SearchScope kAllKindsAndResourcesScope(detail::kKinds.data(), /*count=*/6);

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_MODEL_SEARCH_SCOPE_H
