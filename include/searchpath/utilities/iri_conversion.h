#ifndef SEARCHPATH_UTILITIES_IRI_CONVERSION_H
#define SEARCHPATH_UTILITIES_IRI_CONVERSION_H

#include "searchpath/export.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/ustring.h"

namespace Corvane::PathManagement {

// Turns texts into IRIs, and IRIs into texts.
//
// Threads: stateless.
// Errors: `foundation::storage::vfs::InvalidIRIException` for a text that is neither an IRI nor an
// absolute path, `foundation::storage::vfs::Exception` for an error of the disk.

/// The IRI that `text` means: the text of an IRI ("file:///usr/lib", "http://host/lib"), which is
/// normalised, or else an absolute native path, which is taken character for character.
[[nodiscard]] SEARCHPATH_EXPORT AbsoluteIRI GetIRIFromString(const ustring& text);

/// The canonical location of the folder `iri`, see `Folder::getCanonicalLocation`.
[[nodiscard]] SEARCHPATH_EXPORT CanonicalAbsoluteIRI GetCanonicalIRI(const AbsoluteIRI& iri);

/// `GetCanonicalIRI` of `GetIRIFromString`.
[[nodiscard]] SEARCHPATH_EXPORT CanonicalAbsoluteIRI GetCanonicalIRIFromString(const ustring& text);

/// `iri` as users read it. For a "file" IRI this is the native path, from which `GetIRIFromString`
/// makes the same IRI again. For any other it is the decoded text, which may not lead back to it.
[[nodiscard]] SEARCHPATH_EXPORT ustring GetStringFromIRI(const AbsoluteIRI& iri);

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_IRI_CONVERSION_H
