#ifndef SEARCHPATH_SRC_MODEL_FILE_IRI_SPELLING_H
#define SEARCHPATH_SRC_MODEL_FILE_IRI_SPELLING_H

#include "searchpath/model/ustring.h"

#include <cstdint>
#include <string_view>

namespace foundation::storage::vfs::detail {

// To spell a path is to write it as in the "file" IRIs of `AbsoluteIRI`: each path in one way only.
// Lone surrogates U+DC80..U+DCFF stand for bytes that are not UTF-8; see `TextFromBytes`.

/// What a "%" that begins no escape means.
enum class StrayPercent : std::uint8_t { Invalid, Literal };

/// Spells a native path, in which nothing is an escape.
/// Precondition: `nativePath` begins with "/".
/// Errors: `InvalidIRIException` for a NUL or a lone surrogate outside U+DC80..U+DCFF.
[[nodiscard]] ustring SpellNativePath(std::u16string_view nativePath);

/// Spells the path of the "file" IRI `iriText`; "/" when it has none.
/// Precondition: the text begins with "file:".
///
/// Errors: `InvalidIRIException` as for a native path, and also for "%00", "%2F", a stray "%" that
/// is `Invalid`, an authority that is not "localhost", and a path that does not begin with "/".
[[nodiscard]] ustring SpellPathOfFileIRI(std::u16string_view iriText, StrayPercent strayPercent);

/// `path`, which is already spelled, without ".." components and the components before them, which
/// they take back; ".." above the root is dropped, as the file system does.
[[nodiscard]] ustring WithoutDotSegments(std::u16string_view path);

}  // namespace foundation::storage::vfs::detail

#endif  // SEARCHPATH_SRC_MODEL_FILE_IRI_SPELLING_H
