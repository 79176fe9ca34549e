#ifndef SEARCHPATH_PLATFORM_MAIN_SEARCH_PATH_MANAGER_H
#define SEARCHPATH_PLATFORM_MAIN_SEARCH_PATH_MANAGER_H

#include "searchpath/export.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/any_range_adapter.h"
#include "searchpath/platform/notification.h"
#include "searchpath/platform/package_registry.h"

#include <exception>
#include <memory>
#include <vector>

namespace Corvane::PathManagement {

using foundation::core::except::Notification;
using ZentraComponents::ComponentIdentifier;

/// Raised when a change of the search path is requested while another change is under way further
/// up the call stack.
class SEARCHPATH_EXPORT RecursivePathChangeException : public std::exception {
 public:
  RecursivePathChangeException() = default;
  RecursivePathChangeException(const RecursivePathChangeException&) = default;
  RecursivePathChangeException& operator=(const RecursivePathChangeException&) = default;
  ~RecursivePathChangeException() override;

  /// Says in English what is wrong.
  [[nodiscard]] const char* what() const noexcept override;
};

/// Owns the main search path.
///
/// Threads: `const` operations may be called from several threads at once, also during a change.
class SEARCHPATH_EXPORT IMainSearchPathManager {
 public:
  virtual ~IMainSearchPathManager();

  /// Replaces the folders of the path by `folders`, in the order given. Appends problems with
  /// single folders to `notification`.
  ///
  /// Errors: `RecursivePathChangeException` when called from within a change.
  virtual void SetFolderIRIs(const AbsoluteIRIRange& folders, Notification& notification) = 0;

  /// The packages whose folders are on the path. Never null; the vector never changes.
  [[nodiscard]] virtual std::shared_ptr<const std::vector<ComponentIdentifier>> GetPackagesOnPath()
      const = 0;

  /// The folders of the path, in its order. Never null; the vector never changes.
  [[nodiscard]] virtual std::shared_ptr<const std::vector<AbsoluteIRI>> GetFolderIRIs() const = 0;

 protected:
  IMainSearchPathManager() = default;
  IMainSearchPathManager(const IMainSearchPathManager&) = default;
  IMainSearchPathManager& operator=(const IMainSearchPathManager&) = default;
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_PLATFORM_MAIN_SEARCH_PATH_MANAGER_H
