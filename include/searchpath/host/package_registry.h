#ifndef SEARCHPATH_HOST_PACKAGE_REGISTRY_H
#define SEARCHPATH_HOST_PACKAGE_REGISTRY_H

#include "searchpath/export.h"
#include "searchpath/host/folder_problem.h"
#include "searchpath/host/package_problem.h"
#include "searchpath/host/working_folder.h"
#include "searchpath/model/any_text.h"
#include "searchpath/model/ustring.h"
#include "searchpath/platform/package_registry.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace Corvane::PathManagement::host {

/// The packages below a root folder, as they were when the registry was made. A package is a folder
/// directly below the root, or a link there to a folder, that holds a manifest called
/// "searchpath.json":
///
///     {
///       "name": "geometry",
///       "version": "1.2",
///       "folders": ["lib", {"folder": "data", "tags": [7]}, "file:///opt/shared"],
///       "contributesToPath": true,
///       "checksManualInstall": false,
///       "properties": {"IsQRX": false, "License": "none"}
///     }
///
/// "name", "version" and "folders" are required. "contributesToPath" and "checksManualInstall" have
/// the defaults shown here; "properties" may be left out. A folder is a pathname below the
/// package's own folder, without "..", or an IRI, and need not exist. Without tags it has the tag
/// 0, which marks folders of the search path. A property is true, false, a number or a text;
/// "IsQRX" and "ManualInstall", which `GetPathFoldersForPackages` asks for, are true or false.
///
/// Threads: immutable; all operations, from any thread.
/// Ownership: packages may outlive the registry.
/// Errors: an error of the disk or of a manifest is a problem, not an exception.
/// Cost: construction reads every manifest. Packages take some 64 MiB of memory at most; packages
/// beyond that are left out.
class SEARCHPATH_EXPORT PackageRegistry : public Corvane::PackageRegistry::IPackageRegistry {
 public:
  /// `root` is as users type it, see `WorkingFolder`. When it cannot be read, there are no
  /// packages, and `GetRootProblem` says why.
  explicit PackageRegistry(const AnyText& root,
                           const WorkingFolder& workingFolder = WorkingFolder());
  PackageRegistry(const PackageRegistry&) = delete;
  PackageRegistry& operator=(const PackageRegistry&) = delete;
  ~PackageRegistry() override;

  [[nodiscard]] std::shared_ptr<const Corvane::PackageRegistry::IPackage> GetPackage(
      const ZentraComponents::ComponentIdentifier& identifier) const override;

  /// All packages, in the order of the bytes of the names of their folders below the root.
  [[nodiscard]] const std::vector<ZentraComponents::ComponentIdentifier>& GetIdentifiers()
      const noexcept;

  /// Why the root cannot be read; empty when it can.
  [[nodiscard]] const std::optional<FolderProblem>& GetRootProblem() const noexcept;

  /// The packages that were left out, ordered like `GetIdentifiers`; at most the first 1,000.
  [[nodiscard]] const std::vector<PackageProblem>& GetProblems() const noexcept;
  /// How many packages were left out in all, perhaps more than 1,000.
  [[nodiscard]] std::size_t GetProblemCount() const noexcept;

 private:
  struct State;
  std::unique_ptr<const State> state;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_PACKAGE_REGISTRY_H
