#ifndef SEARCHPATH_PLATFORM_STORAGE_H
#define SEARCHPATH_PLATFORM_STORAGE_H

#include "searchpath/export.h"
#include "searchpath/model/absolute_iri.h"

namespace foundation::storage::vfs {

/// Names the storage system in which folders and files are looked up. Here there is only one: the
/// disks of this machine, which the scheme "file" stands for.
class StorageSystemReference {};

/// A folder, which need not exist.
///
/// Threads: immutable.
class SEARCHPATH_EXPORT Folder {
 public:
  /// Does not access the disk.
  Folder(const AbsoluteIRI& folderLocation, StorageSystemReference storageSystem);

  /// The location as it was given.
  [[nodiscard]] AbsoluteIRI getLocation() const noexcept { return location; }

  /// The location with its links and ".." resolved as far as it exists; the rest is kept as it is.
  /// So a folder that is absent or cannot be read has a canonical location, too, and a folder that
  /// is removed keeps its canonical location. Schemes other than "file" have no links: there it is
  /// the text of the IRI without "." and ".." segments; ".." above the root is dropped.
  ///
  /// Errors: `Exception` for a loop of links and for I/O errors.
  /// Cost: one system call for each component, and one more for each link.
  [[nodiscard]] CanonicalAbsoluteIRI getCanonicalLocation() const;

 private:
  AbsoluteIRI location;
};

/// A file, which need not exist.
///
/// Threads: immutable.
class SEARCHPATH_EXPORT File {
 public:
  /// Does not access the disk.
  File(const AbsoluteIRI& fileLocation, StorageSystemReference storageSystem);

  /// As for a `Folder`, but also raises `Exception` when the file is absent or cannot be reached.
  [[nodiscard]] CanonicalAbsoluteIRI getCanonicalLocation() const;

 private:
  AbsoluteIRI location;
};

}  // namespace foundation::storage::vfs

namespace storage::microservicestoragesystem {

/// The storage system of this process.
[[nodiscard]] SEARCHPATH_EXPORT foundation::storage::vfs::StorageSystemReference
GetStorageSystemReference() noexcept;

}  // namespace storage::microservicestoragesystem

#endif  // SEARCHPATH_PLATFORM_STORAGE_H
