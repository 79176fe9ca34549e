// The destructors of the interfaces and of what they raise, defined here so that each vtable is in
// the library once.

#include "searchpath/platform/exception.h"
#include "searchpath/platform/main_search_path_manager.h"
#include "searchpath/platform/package_registry.h"

namespace foundation::core::except {

IInternalException::~IInternalException() = default;

}  // namespace foundation::core::except

namespace Corvane::PackageRegistry {

IPackage::~IPackage() = default;

IPackageRegistry::~IPackageRegistry() = default;

}  // namespace Corvane::PackageRegistry

namespace Corvane::PathManagement {

RecursivePathChangeException::~RecursivePathChangeException() = default;

const char* RecursivePathChangeException::what() const noexcept {
  return "the search path is being changed; change it again when that change is done";
}

IMainSearchPathManager::~IMainSearchPathManager() = default;

}  // namespace Corvane::PathManagement
