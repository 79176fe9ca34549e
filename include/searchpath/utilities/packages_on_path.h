#ifndef SEARCHPATH_UTILITIES_PACKAGES_ON_PATH_H
#define SEARCHPATH_UTILITIES_PACKAGES_ON_PATH_H

#include "searchpath/export.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/platform/main_search_path_manager.h"
#include "searchpath/platform/package_registry.h"

#include <span>
#include <vector>

namespace Corvane::PathManagement {

// What packages have to do with the search path. Nothing here changes the path.
//
// Threads: stateless; as safe as the manager, the registry and the packages are.
// Errors: their exceptions pass through.

/// Whether `package`, in this very version, is among the packages that `manager` has on the path.
[[nodiscard]] SEARCHPATH_EXPORT bool PackageIsOnPath(
    const ZentraComponents::ComponentIdentifier& package, const IMainSearchPathManager& manager);

/// The folders that `packages` put on the path, package by package, with all repeats. A package
/// that is not installed, or whose metadata keeps it off the path, has none.
///
/// A package that checks for installation by hand has its root folder when its property
/// "ManualInstall" is true, else none. Any other has its root folder alone when its property
/// "IsQRX" is true, else the folders that are tagged as folders of the path: those without tags
/// (null) are not.
///
/// Errors: `std::bad_variant_access` when the property has a value that is not a bool; the disk's,
/// for a folder whose canonical location cannot be determined.
[[nodiscard]] SEARCHPATH_EXPORT std::vector<CanonicalAbsoluteIRI> GetPathFoldersForPackages(
    const Corvane::PackageRegistry::IPackageRegistry& registry,
    std::span<const ZentraComponents::ComponentIdentifier> packages);

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_PACKAGES_ON_PATH_H
