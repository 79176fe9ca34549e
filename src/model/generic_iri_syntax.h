#ifndef SEARCHPATH_SRC_MODEL_GENERIC_IRI_SYNTAX_H
#define SEARCHPATH_SRC_MODEL_GENERIC_IRI_SYNTAX_H

#include "searchpath/model/ustring.h"

#include <cstddef>
#include <string_view>

namespace foundation::storage::vfs::detail {

/// The length of the scheme that `text` begins with; 0 when `text` does not begin with a scheme of
/// two or more characters and ":". One character would be a drive, not a scheme.
[[nodiscard]] std::size_t SchemeLength(std::u16string_view text) noexcept;

/// Whether `text` begins with a scheme of two or more characters and "://".
[[nodiscard]] bool HasIRIPrefix(std::u16string_view text) noexcept;

/// An IRI of a scheme other than "file", and the position of the path in its text.
struct GenericIRI {
  ustring text;
  std::size_t pathBegin;
  std::size_t pathEnd;
};

/// Checks the syntax of `text`, and escapes the characters that no IRI may hold.
/// Precondition: `text` has a scheme.
/// Errors: `InvalidIRIException`.
[[nodiscard]] GenericIRI ParseGenericIRI(std::u16string_view text);

/// `text` in the normal form of RFC 3986, in ASCII, but with the scheme unchanged.
/// Precondition: `text` has a scheme.
/// Errors: `InvalidIRIException`.
[[nodiscard]] ustring NormalizeGenericIRI(std::u16string_view text);

/// `text` without the "." and ".." segments of its path, also those written as escapes; ".." above
/// the root is dropped. Nothing else changes.
/// Precondition: `text` is an IRI of a scheme other than "file".
[[nodiscard]] ustring GenericIRIWithoutDotSegments(std::u16string_view text);

}  // namespace foundation::storage::vfs::detail

#endif  // SEARCHPATH_SRC_MODEL_GENERIC_IRI_SYNTAX_H
