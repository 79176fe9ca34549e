#ifndef SEARCHPATH_PLATFORM_IRI_TEXT_H
#define SEARCHPATH_PLATFORM_IRI_TEXT_H

#include "searchpath/export.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/ustring.h"
#include "searchpath/platform/filesystem.h"

namespace foundation::storage::vfs {

/// Whether `text` begins with a scheme of two or more characters followed by "://".
[[nodiscard]] SEARCHPATH_EXPORT bool hasIRIPrefix(const ustring& text) noexcept;

/// The IRI of a native path, character for character: nothing in `path` is an escape.
///
/// Errors: `InvalidIRIException` when `path` is empty or relative, holds a NUL or a lone surrogate
/// outside U+DC80..U+DCFF (see `TextFromBytes`), or when `scheme` is no scheme.
[[nodiscard]] SEARCHPATH_EXPORT AbsoluteIRI toAbsoluteIRI(const ustring& scheme,
                                                          const fl::filesystem::path& path);

/// The native path of a "file" IRI.
/// Errors: `InvalidIRIException` for any other scheme.
[[nodiscard]] SEARCHPATH_EXPORT fl::filesystem::path fromAbsoluteIRI(const AbsoluteIRI& iri);

}  // namespace foundation::storage::vfs

namespace foundation::storage::utility {

/// Brings an IRI text into its normal form. For "file" that is the spelling of `AbsoluteIRI`
/// without "." and ".." components, a stray "%" becoming "%25"; for other schemes the syntax-based
/// normalisation of RFC 3986, in ASCII, with escapes in upper case and the scheme's case untouched.
///
/// Errors: `InvalidIRIException` for a text that is no IRI; `text` is then unchanged.
SEARCHPATH_EXPORT void normalizeURL(ustring& text);

/// Decodes percent escapes, for people to read: with `decodeUtf8` every escape that is part of
/// valid UTF-8, without it every escape of an ASCII character. Any other stays as it stands, and
/// "+" is never a blank. "%2F", "%3F", "%25" and "%00" are decoded too, so the result cannot be
/// turned back into the IRI: it may be the text of another one, and may change once more when it is
/// decoded again.
SEARCHPATH_EXPORT void decodeURL(ustring& text, bool decodeUtf8);

}  // namespace foundation::storage::utility

#endif  // SEARCHPATH_PLATFORM_IRI_TEXT_H
