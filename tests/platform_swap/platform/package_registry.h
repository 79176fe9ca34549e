#ifndef SEARCHPATH_PLATFORM_PACKAGE_REGISTRY_H
#define SEARCHPATH_PLATFORM_PACKAGE_REGISTRY_H

#include "searchpath/model/absolute_iri.h"

#include <memory>
#include <optional>
#include <set>
#include <variant>
#include <vector>

namespace Corvane::ZentraComponents {

struct ComponentIdentifier {
  foundation::ustring name, version;

  friend bool operator==(const ComponentIdentifier&, const ComponentIdentifier&) = default;
};

}  // namespace Corvane::ZentraComponents

namespace Corvane::PackageRegistry {

struct PackageMetadata {
  bool contributesToPath;
  bool checksManualInstall;
  foundation::storage::vfs::AbsoluteIRI rootFolder;
};

struct PackageFolder {
  foundation::storage::vfs::AbsoluteIRI folder;
  std::shared_ptr<const std::set<int>> tags;
};

using PropertyValue = std::variant<bool, std::int64_t, double, foundation::ustring>;

class IPackage {
 public:
  virtual ~IPackage() = default;
  virtual const std::vector<PackageFolder>& GetFolders() const = 0;
  virtual std::optional<PropertyValue> GetProperty(std::u16string_view key) const = 0;
  virtual const PackageMetadata& GetMetadata() const = 0;
};

class IPackageRegistry {
 public:
  virtual ~IPackageRegistry() = default;
  virtual std::shared_ptr<const IPackage> GetPackage(
      const ZentraComponents::ComponentIdentifier& identifier) const = 0;
};

}  // namespace Corvane::PackageRegistry

#endif  // SEARCHPATH_PLATFORM_PACKAGE_REGISTRY_H
