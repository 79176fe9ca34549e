#ifndef SEARCHPATH_SRC_MODEL_FILE_IRI_SPELLING_H
#define SEARCHPATH_SRC_MODEL_FILE_IRI_SPELLING_H

#include "searchpath/model/ustring.h"

#include <cstdint>
#include <string_view>

namespace foundation::storage::vfs::detail {

// The one spelling of a path in a "file" IRI; see `AbsoluteIRI`.

/// What a "%" that begins no escape means.
enum class StrayPercent : std::uint8_t { Invalid, Literal };

/// Spells a native path, in which nothing is an escape.
/// Precondition: it begins with "/".
/// Errors: `InvalidIRIException` for a NUL or a lone surrogate that stands for no byte.
[[nodiscard]] ustring SpellNativePath(std::u16string_view nativePath);

/// Spells the path of the "file" IRI `iriText`; "/" when it has none.
/// Precondition: the text begins with "file:".
///
/// Errors: `InvalidIRIException` as for a native path, also for "%00", "%2F", an invalid "%", an
/// authority other than none or "localhost", and a path that does not begin with "/".
[[nodiscard]] ustring SpellPathOfFileIRI(std::u16string_view iriText, StrayPercent strayPercent);

/// The spelled `path` without ".." components; one above the root is dropped, as the file system
/// does.
[[nodiscard]] ustring WithoutDotSegments(std::u16string_view path);

}  // namespace foundation::storage::vfs::detail

#endif  // SEARCHPATH_SRC_MODEL_FILE_IRI_SPELLING_H
