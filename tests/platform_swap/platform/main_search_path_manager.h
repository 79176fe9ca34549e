#ifndef SEARCHPATH_PLATFORM_MAIN_SEARCH_PATH_MANAGER_H
#define SEARCHPATH_PLATFORM_MAIN_SEARCH_PATH_MANAGER_H

#include "searchpath/model/any_range_adapter.h"
#include "searchpath/platform/notification.h"
#include "searchpath/platform/package_registry.h"

namespace Corvane::PathManagement {

using foundation::core::except::Notification;
using ZentraComponents::ComponentIdentifier;

struct RecursivePathChangeException : std::exception {};

class IMainSearchPathManager {
 public:
  virtual ~IMainSearchPathManager() = default;
  virtual void SetFolderIRIs(const AbsoluteIRIRange& folders, Notification& notification) = 0;
  virtual std::shared_ptr<const std::vector<ComponentIdentifier>> GetPackagesOnPath() const = 0;
  virtual std::shared_ptr<const std::vector<AbsoluteIRI>> GetFolderIRIs() const = 0;
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_PLATFORM_MAIN_SEARCH_PATH_MANAGER_H
