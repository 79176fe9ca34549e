#ifndef SEARCHPATH_SRC_HOST_PACKAGES_PACKAGE_FOLDERS_H
#define SEARCHPATH_SRC_HOST_PACKAGES_PACKAGE_FOLDERS_H

#include "host/folder/folder_listing.h"
#include "host/path/path_view.h"
#include "searchpath/host/known_package.h"
#include "searchpath/host/package_registry.h"

#include <memory>
#include <vector>

namespace Corvane::PathManagement::host {

/// `given`, followed by the folders that the packages of `registry` put on the path, package by
/// package; `given` alone when `registry` is null. A package with a folder whose links cannot be
/// resolved puts none on the path; that folder is added to `GivenFolders::unlocated`, and so is a
/// root of `registry` that cannot be read. For `source` and `timeout` see `CreateMainFolder`.
[[nodiscard]] GivenFolders WithPackageFolders(GivenFolders given, const PackageRegistry* registry,
                                              const std::shared_ptr<const ListingSource>& source,
                                              DiskPatience::Limit timeout);

/// The packages that put folders into `given`, in the order of `given`, each with its folders.
[[nodiscard]] std::vector<KnownPackage> FindKnownPackages(
    const std::vector<GivenFolders::Given>& given);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_PACKAGES_PACKAGE_FOLDERS_H
