#ifndef SEARCHPATH_PLATFORM_STORAGE_H
#define SEARCHPATH_PLATFORM_STORAGE_H

#include "searchpath/model/absolute_iri.h"

namespace foundation::storage::vfs {

struct StorageSystemReference {};

class Folder {
 public:
  Folder(const AbsoluteIRI& folderLocation, StorageSystemReference) : location(folderLocation) {}

  AbsoluteIRI getLocation() const { return location; }
  CanonicalAbsoluteIRI getCanonicalLocation() const;

 private:
  AbsoluteIRI location;
};

using File = Folder;

}  // namespace foundation::storage::vfs

namespace storage::microservicestoragesystem {

foundation::storage::vfs::StorageSystemReference GetStorageSystemReference();

}  // namespace storage::microservicestoragesystem

#endif  // SEARCHPATH_PLATFORM_STORAGE_H
