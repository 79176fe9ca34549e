#ifndef SEARCHPATH_MODEL_SEARCH_SCOPE_H
#define SEARCHPATH_MODEL_SEARCH_SCOPE_H

#include <algorithm>
#include <cstdint>

namespace Corvane::PathManagement {

/// The kinds of entry that a lookup or a traversal covers: a view of a list of `PathEntryType`
/// values.
///
/// Ownership: none. The list must outlive every call that the scope is handed to.
class SearchScope {
 public:
  /// `kinds` may be null when `count` is 0: a scope that covers nothing.
  SearchScope(const std::uint32_t* kinds, std::uint64_t count) noexcept
      : first(kinds), length(count) {}

  [[nodiscard]] const std::uint32_t* data() const noexcept { return first; }
  [[nodiscard]] std::uint64_t size() const noexcept { return length; }
  [[nodiscard]] const std::uint32_t* begin() const noexcept { return first; }
  [[nodiscard]] const std::uint32_t* end() const noexcept { return first + length; }

  /// Whether `kind`, the number of a `PathEntryType`, is in the list.
  [[nodiscard]] bool Contains(std::uint32_t kind) const noexcept {
    return std::find(begin(), end(), kind) != end();
  }

 private:
  const std::uint32_t* first;
  std::uint64_t length;  // in kinds
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_MODEL_SEARCH_SCOPE_H
