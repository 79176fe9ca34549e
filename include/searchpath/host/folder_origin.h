#ifndef SEARCHPATH_HOST_FOLDER_ORIGIN_H
#define SEARCHPATH_HOST_FOLDER_ORIGIN_H

#include "searchpath/model/ustring.h"
#include "searchpath/platform/component_identifier.h"

#include <cstdint>
#include <optional>

namespace Corvane::PathManagement::host {

/// Where a folder of a path comes from.
enum class FolderSource : std::uint8_t {
  Given,       ///< from the caller who made the path, such as a command line
  StoredPath,  ///< from a `StoredPath`
  Cache,       ///< from the cache that holds the whole path
  Package,     ///< from a package
};

/// Who put a folder on a path.
struct FolderOrigin {
  FolderSource source = FolderSource::Given;  ///< where it comes from
  /// The folder, or one above it that brought it onto the path, as the source wrote it.
  ustring folder = {};
  /// Of the source `Package`: which package; else empty.
  std::optional<ZentraComponents::ComponentIdentifier> package = {};
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_FOLDER_ORIGIN_H
