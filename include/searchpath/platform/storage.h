#ifndef SEARCHPATH_PLATFORM_STORAGE_H
#define SEARCHPATH_PLATFORM_STORAGE_H

#include "searchpath/export.h"
#include "searchpath/model/absolute_iri.h"

namespace foundation::storage::vfs {

/// Names the storage system that folders and files are looked up on. There is one here: the disks
/// of this machine, behind the scheme "file".
class StorageSystemReference {};

/// A folder, which need not exist.
///
/// Threads: immutable.
class SEARCHPATH_EXPORT Folder {
 public:
  /// Asks nothing of the disk.
  Folder(const AbsoluteIRI& folderLocation, StorageSystemReference storageSystem);

  /// The location as it was given.
  [[nodiscard]] AbsoluteIRI getLocation() const noexcept { return location; }

  /// The location with links and ".." resolved as far as it exists, the rest kept as it is. So a
  /// folder that is absent or cannot be read has one, too, and it stays the same when a folder is
  /// removed. Other schemes than "file" have no links: there it is the text without "." and ".."
  /// segments; ".." above the root is dropped.
  ///
  /// Errors: `Exception` for a loop of links and for I/O errors.
  /// Cost: one question to the file system for each component.
  [[nodiscard]] CanonicalAbsoluteIRI getCanonicalLocation() const;

 private:
  AbsoluteIRI location;
};

/// A file, which need not exist.
///
/// Threads: immutable.
class SEARCHPATH_EXPORT File {
 public:
  /// Asks nothing of the disk.
  File(const AbsoluteIRI& fileLocation, StorageSystemReference storageSystem);

  /// As for a `Folder`, but raises `Exception` also when the file is absent.
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
