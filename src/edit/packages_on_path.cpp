#include "searchpath/utilities/packages_on_path.h"

#include "searchpath/utilities/iri_conversion.h"

#include <algorithm>

namespace Corvane::PathManagement {

using Corvane::PackageRegistry::IPackage;
using Corvane::PackageRegistry::IPackageRegistry;
using Corvane::PackageRegistry::PackageFolder;

namespace {

constexpr int kPathFolderTag = 0;  // of the folders that packages put on the path

bool IsPathFolder(const PackageFolder& folder) {
  return folder.tags != nullptr && folder.tags->contains(kPathFolderTag);
}

/// Whether the property exists and is true. Raises `std::bad_variant_access` when it is not a bool.
bool IsTrue(const IPackage& package, std::u16string_view key) {
  const auto value = package.GetProperty(key);
  return value && std::get<bool>(*value);
}

void AppendPathFolders(const IPackage& package, std::vector<CanonicalAbsoluteIRI>& folders) {
  const std::vector<PackageFolder>& all = package.GetFolders();
  const auto count = std::ranges::count_if(all, IsPathFolder);
  const std::size_t needed = folders.size() + static_cast<std::size_t>(count);
  // At least doubled: otherwise each of many small packages would copy all folders so far.
  if (needed > folders.capacity()) folders.reserve(std::max(needed, 2 * folders.capacity()));
  for (const PackageFolder& each : all) {
    if (IsPathFolder(each)) folders.push_back(GetCanonicalIRI(each.folder));
  }
}

/// Appends the folders that `package` puts on the path, by the rules in the header.
void AppendFoldersOf(const IPackage& package, std::vector<CanonicalAbsoluteIRI>& folders) {
  const auto& metadata = package.GetMetadata();
  if (!metadata.contributesToPath) return;
  if (metadata.checksManualInstall) {
    if (IsTrue(package, u"ManualInstall")) folders.push_back(GetCanonicalIRI(metadata.rootFolder));
  } else if (IsTrue(package, u"IsQRX")) {
    folders.push_back(GetCanonicalIRI(metadata.rootFolder));
  } else {
    AppendPathFolders(package, folders);
  }
}

}  // namespace

bool PackageIsOnPath(const ComponentIdentifier& package, const IMainSearchPathManager& manager) {
  const auto packages = manager.GetPackagesOnPath();
  return std::ranges::find(*packages, package) != packages->end();
}

std::vector<CanonicalAbsoluteIRI> GetPathFoldersForPackages(
    const IPackageRegistry& registry, std::span<const ComponentIdentifier> packages) {
  std::vector<CanonicalAbsoluteIRI> folders;
  for (const ComponentIdentifier& identifier : packages) {
    const auto package = registry.GetPackage(identifier);
    if (package != nullptr) AppendFoldersOf(*package, folders);
  }
  return folders;
}

}  // namespace Corvane::PathManagement
