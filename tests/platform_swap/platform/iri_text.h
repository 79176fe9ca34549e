#ifndef SEARCHPATH_PLATFORM_IRI_TEXT_H
#define SEARCHPATH_PLATFORM_IRI_TEXT_H

#include "searchpath/model/absolute_iri.h"
#include "searchpath/platform/filesystem.h"

namespace foundation::storage::vfs {

bool hasIRIPrefix(const ustring& text);
AbsoluteIRI toAbsoluteIRI(const ustring& scheme, const fl::filesystem::path& path);
fl::filesystem::path fromAbsoluteIRI(const AbsoluteIRI& iri);

}  // namespace foundation::storage::vfs

namespace foundation::storage::utility {

void normalizeURL(ustring& text);
void decodeURL(ustring& text, bool decodeUtf8);

}  // namespace foundation::storage::utility

#endif  // SEARCHPATH_PLATFORM_IRI_TEXT_H
