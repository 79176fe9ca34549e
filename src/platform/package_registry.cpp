#include "searchpath/platform/package_registry.h"

namespace Corvane::PackageRegistry {

IPackage::~IPackage() = default;

IPackageRegistry::~IPackageRegistry() = default;

}  // namespace Corvane::PackageRegistry
