#include "searchpath/platform/storage.h"

#include "model/generic_iri_syntax.h"
#include "platform/canonical_path.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/platform/iri_text.h"

#include <string>

namespace foundation::storage::vfs {

namespace {

bool IsOnDisk(const AbsoluteIRI& location) { return location.toStringView().starts_with(u"file:"); }

std::string NativeBytes(const AbsoluteIRI& location) {
  return Corvane::PathManagement::BytesFromText(location.getPath()).value();
}

/// There are no links to mind, so ".." means the same as text.
CanonicalAbsoluteIRI CanonicalIRIOfOtherScheme(const AbsoluteIRI& location) {
  return {AbsoluteIRI(detail::GenericIRIWithoutDotSegments(location.toStringView())), u""};
}

CanonicalAbsoluteIRI CanonicalIRI(const detail::CanonicalPath& canonical) {
  const fl::filesystem::path path(Corvane::PathManagement::TextFromBytes(canonical.bytes));
  return {toAbsoluteIRI(u"file", path), u""};
}

}  // namespace

Folder::Folder(const AbsoluteIRI& folderLocation, StorageSystemReference /*storageSystem*/)
    : location(folderLocation) {}

CanonicalAbsoluteIRI Folder::getCanonicalLocation() const {
  if (!IsOnDisk(location)) return CanonicalIRIOfOtherScheme(location);
  return CanonicalIRI(detail::ResolveLinks(NativeBytes(location)));
}

File::File(const AbsoluteIRI& fileLocation, StorageSystemReference /*storageSystem*/)
    : location(fileLocation) {}

CanonicalAbsoluteIRI File::getCanonicalLocation() const {
  if (!IsOnDisk(location)) return CanonicalIRIOfOtherScheme(location);
  const std::string path = NativeBytes(location);
  const detail::CanonicalPath canonical = detail::ResolveLinks(path);
  if (canonical.error) throw detail::CannotResolve(path, canonical.error);
  return CanonicalIRI(canonical);
}

}  // namespace foundation::storage::vfs

namespace storage::microservicestoragesystem {

foundation::storage::vfs::StorageSystemReference GetStorageSystemReference() noexcept { return {}; }

}  // namespace storage::microservicestoragesystem
