#include "searchpath/platform/storage.h"

#include "model/generic_iri_syntax.h"
#include "platform/canonical_path.h"
#include "platform/native_path.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/platform/iri_text.h"

namespace foundation::storage::vfs {

namespace {

/// For any scheme but "file": it has no links, so ".." can be removed from the text.
CanonicalAbsoluteIRI CanonicalIRIOfOtherScheme(const AbsoluteIRI& location) {
  return {AbsoluteIRI(detail::GenericIRIWithoutDotSegments(location.toStringView())),
          /*furtherText=*/u""};
}

CanonicalAbsoluteIRI CanonicalIRI(const detail::CanonicalPath& canonical) {
  const fl::filesystem::path path(Corvane::PathManagement::TextFromBytes(canonical.bytes));
  return {toAbsoluteIRI(u"file", path), /*furtherText=*/u""};
}

}  // namespace

Folder::Folder(const AbsoluteIRI& folderLocation, StorageSystemReference /*storageSystem*/)
    : location(folderLocation) {}

CanonicalAbsoluteIRI Folder::getCanonicalLocation() const {
  const auto path = fl::filesystem::detail::NativeBytes(location);
  return path ? CanonicalIRI(detail::ResolveLinks(*path)) : CanonicalIRIOfOtherScheme(location);
}

File::File(const AbsoluteIRI& fileLocation, StorageSystemReference /*storageSystem*/)
    : location(fileLocation) {}

CanonicalAbsoluteIRI File::getCanonicalLocation() const {
  const auto path = fl::filesystem::detail::NativeBytes(location);
  if (!path) return CanonicalIRIOfOtherScheme(location);
  const detail::CanonicalPath canonical = detail::ResolveLinks(*path);
  if (canonical.error) throw detail::CannotResolve(*path, canonical.error);
  return CanonicalIRI(canonical);
}

}  // namespace foundation::storage::vfs

namespace storage::microservicestoragesystem {

foundation::storage::vfs::StorageSystemReference GetStorageSystemReference() noexcept { return {}; }

}  // namespace storage::microservicestoragesystem
