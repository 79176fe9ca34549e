#ifndef SEARCHPATH_UTILITIES_PACKAGES_ON_PATH_H
#define SEARCHPATH_UTILITIES_PACKAGES_ON_PATH_H

#include "searchpath/export.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/platform/main_search_path_manager.h"
#include "searchpath/platform/package_registry.h"

#include <span>
#include <vector>

namespace Corvane::PathManagement {

// Tells which packages and which of their folders are on the search path. Changes nothing.
//
// Threads: stateless; as safe as the manager, the registry and the packages are.
// Errors: exceptions of the manager, the registry and the packages pass through.

/// Whether `package`, in exactly this version, is on the path of `manager`.
[[nodiscard]] SEARCHPATH_EXPORT bool PackageIsOnPath(
    const ZentraComponents::ComponentIdentifier& package, const IMainSearchPathManager& manager);

/// The folders that `packages` put on the path, package by package; repeats are kept. A package
/// that is not installed, or whose `PackageMetadata::contributesToPath` is false, puts none there.
///
/// A package whose `PackageMetadata::checksManualInstall` is true puts its root folder on the path
/// when its property "ManualInstall" is true, else none. Any other package puts only its root
/// folder there when its property "IsQRX" is true, else its folders with the tag 0. An absent
/// property is taken for false.
///
/// Errors: `std::bad_variant_access` when one of these properties is not a bool;
/// `foundation::storage::vfs::Exception` when a canonical location cannot be determined.
[[nodiscard]] SEARCHPATH_EXPORT std::vector<CanonicalAbsoluteIRI> GetPathFoldersForPackages(
    const Corvane::PackageRegistry::IPackageRegistry& registry,
    std::span<const ZentraComponents::ComponentIdentifier> packages);

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_PACKAGES_ON_PATH_H
