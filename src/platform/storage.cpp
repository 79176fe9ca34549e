#include "searchpath/platform/storage.h"

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

CanonicalAbsoluteIRI CanonicalIRI(const detail::CanonicalPath& canonical) {
  const fl::filesystem::path path(Corvane::PathManagement::TextFromBytes(canonical.bytes));
  return {toAbsoluteIRI(u"file", path), u""};
}

}  // namespace

Folder::Folder(const AbsoluteIRI& folderLocation, StorageSystemReference /*storageSystem*/)
    : location(folderLocation) {}

CanonicalAbsoluteIRI Folder::getCanonicalLocation() const {
  if (!IsOnDisk(location)) return {location, u""};
  return CanonicalIRI(detail::ResolveLinks(NativeBytes(location)));
}

File::File(const AbsoluteIRI& fileLocation, StorageSystemReference /*storageSystem*/)
    : location(fileLocation) {}

CanonicalAbsoluteIRI File::getCanonicalLocation() const {
  if (!IsOnDisk(location)) return {location, u""};
  const std::string path = NativeBytes(location);
  const detail::CanonicalPath canonical = detail::ResolveLinks(path);
  if (canonical.error != 0) throw detail::CannotResolve(path, canonical.error);
  return CanonicalIRI(canonical);
}

}  // namespace foundation::storage::vfs

namespace storage::microservicestoragesystem {

foundation::storage::vfs::StorageSystemReference GetStorageSystemReference() noexcept { return {}; }

}  // namespace storage::microservicestoragesystem
