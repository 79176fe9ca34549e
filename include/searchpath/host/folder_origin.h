#ifndef SEARCHPATH_HOST_FOLDER_ORIGIN_H
#define SEARCHPATH_HOST_FOLDER_ORIGIN_H

#include "searchpath/model/ustring.h"
#include "searchpath/platform/package_registry.h"

#include <cstdint>
#include <optional>

namespace Corvane::PathManagement::host {

/// Where a folder of a path was named.
enum class FolderSource : std::uint8_t {
  Given,       ///< by who made the path: on a command line, for one
  StoredPath,  ///< in a `StoredPath`
  Cache,       ///< in the cache that the path was taken from
  Package,     ///< by a package
};

/// Who put a folder on a path.
struct FolderOrigin {
  FolderSource source = FolderSource::Given;
  /// The folder that brought it, as it was named: itself, or one that it belongs to.
  ustring folder = {};
  /// Which package; empty unless that is the source.
  std::optional<ZentraComponents::ComponentIdentifier> package = {};
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_FOLDER_ORIGIN_H
