#ifndef SEARCHPATH_HOST_PACKAGE_REGISTRY_H
#define SEARCHPATH_HOST_PACKAGE_REGISTRY_H

#include "searchpath/export.h"
#include "searchpath/host/folder_problem.h"
#include "searchpath/host/package_problem.h"
#include "searchpath/host/working_folder.h"
#include "searchpath/model/ustring.h"
#include "searchpath/platform/package_registry.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace Corvane::PathManagement::host {

/// The packages below a root folder, as they were when the registry was made. Each folder directly
/// below the root, also one behind a link, that holds a manifest called "searchpath.json" is a
/// package:
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
/// The first three fields have to be there; the last three show what counts without them, but for
/// the properties, which are none then. A folder is a pathname below the package's own folder,
/// without "..", or an IRI, and need not exist; without tags it is tagged with 0, as a folder of
/// the search path. A property is a truth value, a number or a text; "IsQRX" and "ManualInstall"
/// are truth values.
///
/// Threads: immutable; all operations, from any thread.
/// Ownership: packages live on without the registry.
/// Errors: the disk's and those of manifests are problems, not exceptions.
/// Cost: construction reads every manifest; 64 MiB are kept at most, further packages are left out.
class SEARCHPATH_EXPORT PackageRegistry : public Corvane::PackageRegistry::IPackageRegistry {
 public:
  /// `root` is as users type it. One that cannot be read holds no packages and is a problem.
  explicit PackageRegistry(const ustring& root,
                           const WorkingFolder& workingFolder = WorkingFolder());
  PackageRegistry(const PackageRegistry&) = delete;
  PackageRegistry& operator=(const PackageRegistry&) = delete;
  ~PackageRegistry() override;

  [[nodiscard]] std::shared_ptr<const Corvane::PackageRegistry::IPackage> GetPackage(
      const ZentraComponents::ComponentIdentifier& identifier) const override;

  /// All packages, in the order of the bytes of their folders' names.
  [[nodiscard]] const std::vector<ZentraComponents::ComponentIdentifier>& GetIdentifiers()
      const noexcept;

  /// What keeps the root from being read; empty when nothing does.
  [[nodiscard]] const std::optional<FolderProblem>& GetRootProblem() const noexcept;

  /// The packages that were left out, in the same order; of very many the first 1,000.
  [[nodiscard]] const std::vector<PackageProblem>& GetProblems() const noexcept;
  /// How many were left out, all in all.
  [[nodiscard]] std::size_t GetProblemCount() const noexcept;

 private:
  struct State;
  std::unique_ptr<const State> state;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_PACKAGE_REGISTRY_H
