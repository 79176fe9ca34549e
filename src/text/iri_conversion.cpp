#include "searchpath/utilities/iri_conversion.h"

#include "searchpath/platform/filesystem.h"
#include "searchpath/platform/iri_text.h"
#include "searchpath/platform/storage.h"

namespace Corvane::PathManagement {

AbsoluteIRI GetIRIFromString(const ustring& text) {
  if (foundation::storage::vfs::hasIRIPrefix(text)) {
    ustring normal = text;
    foundation::storage::utility::normalizeURL(normal);
    return AbsoluteIRI(normal);
  }
  return foundation::storage::vfs::toAbsoluteIRI(
      u"file", fl::filesystem::path(text, /*convertToNativeForm=*/true));
}

CanonicalAbsoluteIRI GetCanonicalIRI(const AbsoluteIRI& iri) {
  const auto storageSystem = storage::microservicestoragesystem::GetStorageSystemReference();
  return foundation::storage::vfs::Folder(iri, storageSystem).getCanonicalLocation();
}

CanonicalAbsoluteIRI GetCanonicalIRIFromString(const ustring& text) {
  return GetCanonicalIRI(GetIRIFromString(text));
}

ustring GetStringFromIRI(const AbsoluteIRI& iri) {
  if (iri.getScheme() == u"file") return foundation::storage::vfs::fromAbsoluteIRI(iri).native();
  ustring text = iri.toString();
  foundation::storage::utility::decodeURL(text, /*decodeUtf8=*/true);
  return text;
}

}  // namespace Corvane::PathManagement
