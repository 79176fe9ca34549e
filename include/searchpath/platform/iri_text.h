#ifndef SEARCHPATH_PLATFORM_IRI_TEXT_H
#define SEARCHPATH_PLATFORM_IRI_TEXT_H

#include "searchpath/export.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/ustring.h"
#include "searchpath/platform/filesystem.h"

namespace foundation::storage::vfs {

/// Whether `text` begins with a scheme of two or more characters followed by "://".
[[nodiscard]] SEARCHPATH_EXPORT bool hasIRIPrefix(const ustring& text) noexcept;

/// The IRI of a native path, taken character for character: nothing in `path` is an escape.
///
/// Errors: `InvalidIRIException` when `path` is empty or relative, or holds a NUL or a lone
/// surrogate outside U+DC80..U+DCFF (see `TextFromBytes`); when `scheme` is not a valid scheme;
/// and, for a scheme other than "file", when the IRI is over 64 KiB.
[[nodiscard]] SEARCHPATH_EXPORT AbsoluteIRI toAbsoluteIRI(const ustring& scheme,
                                                          const fl::filesystem::path& path);

/// The native path of a "file" IRI.
/// Errors: `InvalidIRIException` for any other scheme.
[[nodiscard]] SEARCHPATH_EXPORT fl::filesystem::path fromAbsoluteIRI(const AbsoluteIRI& iri);

}  // namespace foundation::storage::vfs

namespace foundation::storage::utility {

/// Brings an IRI text into its normal form. For "file", that is the spelling of `AbsoluteIRI`
/// without "." and ".." components, where a "%" that begins no escape becomes "%25". For other
/// schemes it is the syntax-based normalisation of RFC 3986: all in ASCII, escapes in upper case,
/// but the case of the scheme unchanged.
///
/// Errors: `InvalidIRIException` for a text that is no IRI; `text` is then unchanged.
SEARCHPATH_EXPORT void normalizeURL(ustring& text);

/// Decodes percent escapes, for people to read: with `decodeUtf8` every escape that is part of
/// valid UTF-8, without it every escape of an ASCII character. Other escapes stay as they are, and
/// "+" never becomes a blank. "%2F", "%3F", "%25" and "%00" are decoded too, so the result cannot
/// be turned back into the IRI: it may be the text of another IRI, and decoding it again may change
/// it once more.
SEARCHPATH_EXPORT void decodeURL(ustring& text, bool decodeUtf8);

}  // namespace foundation::storage::utility

#endif  // SEARCHPATH_PLATFORM_IRI_TEXT_H
