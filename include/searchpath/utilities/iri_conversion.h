#ifndef SEARCHPATH_UTILITIES_IRI_CONVERSION_H
#define SEARCHPATH_UTILITIES_IRI_CONVERSION_H

#include "searchpath/export.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/ustring.h"

namespace Corvane::PathManagement {

// Text becomes an IRI, and an IRI text, here and nowhere else.
//
// Threads: stateless.
// Errors: `foundation::storage::vfs::InvalidIRIException` for a text or an IRI that has no answer,
// `foundation::storage::vfs::Exception` from the disk.

/// The IRI that `text` means: the text of an IRI ("file:///usr/lib", "http://host/lib"), which is
/// normalised, or else an absolute native path, which is taken character for character.
[[nodiscard]] SEARCHPATH_EXPORT AbsoluteIRI GetIRIFromString(const ustring& text);

/// The canonical location of the folder `iri`, see `Folder::getCanonicalLocation`.
[[nodiscard]] SEARCHPATH_EXPORT CanonicalAbsoluteIRI GetCanonicalIRI(const AbsoluteIRI& iri);

/// `GetCanonicalIRI` of `GetIRIFromString`.
[[nodiscard]] SEARCHPATH_EXPORT CanonicalAbsoluteIRI GetCanonicalIRIFromString(const ustring& text);

/// `iri` as users read it: the native path of a "file" IRI, from which `GetIRIFromString` makes the
/// same IRI again; the decoded text of any other, which is no way back.
[[nodiscard]] SEARCHPATH_EXPORT ustring GetStringFromIRI(const AbsoluteIRI& iri);

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_IRI_CONVERSION_H
