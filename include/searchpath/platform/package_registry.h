#ifndef SEARCHPATH_PLATFORM_PACKAGE_REGISTRY_H
#define SEARCHPATH_PLATFORM_PACKAGE_REGISTRY_H

#include "searchpath/export.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/ustring.h"
#include "searchpath/platform/component_identifier.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string_view>
#include <variant>
#include <vector>

namespace Corvane::PackageRegistry {

/// What a package says about its place on the search path.
struct PackageMetadata {
  bool contributesToPath;    ///< if false, none of its folders is put on the path
  bool checksManualInstall;  ///< if true, none either unless it was installed by hand
  foundation::storage::vfs::AbsoluteIRI rootFolder;  ///< where it is installed
};

/// A folder of a package, and what the folder is for.
struct PackageFolder {
  foundation::storage::vfs::AbsoluteIRI folder;  ///< its location
  /// What the folder is for: the tag 0 puts it on the search path. Null when there are no tags.
  std::shared_ptr<const std::set<int>> tags;
};

/// The value of a named property of a package.
using PropertyValue = std::variant<bool, std::int64_t, double, foundation::ustring>;

/// An installed package.
///
/// Threads: every operation may be called from several threads at once.
class SEARCHPATH_EXPORT IPackage {
 public:
  virtual ~IPackage();

  /// The folders, in the package's own order. The vector lives as long as the package.
  [[nodiscard]] virtual const std::vector<PackageFolder>& GetFolders() const = 0;

  /// The property called `key`; empty when the package has none of that name.
  [[nodiscard]] virtual std::optional<PropertyValue> GetProperty(std::u16string_view key) const = 0;

  /// What the package says about its place on the path. Lives as long as the package.
  [[nodiscard]] virtual const PackageMetadata& GetMetadata() const = 0;

 protected:
  IPackage() = default;
  IPackage(const IPackage&) = default;
  IPackage& operator=(const IPackage&) = default;
};

/// Knows the packages that are installed.
///
/// Threads: every operation may be called from several threads at once.
class SEARCHPATH_EXPORT IPackageRegistry {
 public:
  virtual ~IPackageRegistry();

  /// The package called `identifier`; null when it is not installed.
  [[nodiscard]] virtual std::shared_ptr<const IPackage> GetPackage(
      const ZentraComponents::ComponentIdentifier& identifier) const = 0;

 protected:
  IPackageRegistry() = default;
  IPackageRegistry(const IPackageRegistry&) = default;
  IPackageRegistry& operator=(const IPackageRegistry&) = default;
};

}  // namespace Corvane::PackageRegistry

#endif  // SEARCHPATH_PLATFORM_PACKAGE_REGISTRY_H
