#ifndef SEARCHPATH_SRC_HOST_PACKAGES_PACKAGE_MANIFEST_H
#define SEARCHPATH_SRC_HOST_PACKAGES_PACKAGE_MANIFEST_H

#include "searchpath/model/absolute_iri.h"
#include "searchpath/platform/package_registry.h"

#include <cstddef>
#include <memory>
#include <string_view>

namespace Corvane::PathManagement::host {

/// The smallest size that is refused, in bytes.
constexpr std::size_t kTooLargeManifest = (std::size_t{1} << 20) + 1;

/// The content of a manifest.
struct PackageManifest {
  ZentraComponents::ComponentIdentifier identifier;
  std::size_t nameLine;
  std::shared_ptr<const Corvane::PackageRegistry::IPackage> package;
  std::size_t memory;  // what it takes, roughly, in bytes
};

/// Reads the manifest of the package whose own folder is `folder`.
///
/// Errors: `ManifestException`.
[[nodiscard]] PackageManifest ReadManifest(std::string_view bytes, const AbsoluteIRI& folder);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_PACKAGES_PACKAGE_MANIFEST_H
