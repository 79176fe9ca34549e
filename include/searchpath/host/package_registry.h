#ifndef SEARCHPATH_HOST_PACKAGE_REGISTRY_H
#define SEARCHPATH_HOST_PACKAGE_REGISTRY_H

#include "searchpath/export.h"
#include "searchpath/host/folder_problem.h"
#include "searchpath/host/working_folder.h"
#include "searchpath/model/ustring.h"
#include "searchpath/platform/package_registry.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace Corvane::PathManagement::host {

/// What is wrong with a package.
enum class PackageFault : std::uint8_t {
  Unreadable,       ///< the disk refuses the manifest; the detail says why
  NotAFile,         ///< something else than a regular file has the manifest's name
  TooLarge,         ///< the manifest is larger than 1 MiB
  NotUtf8,          ///< the manifest has a byte that is not UTF-8
  Syntax,           ///< the manifest is not JSON
  TooDeep,          ///< nested deeper than 32 levels
  TooManyValues,    ///< more than 10,000 values
  RepeatedField,    ///< an object has two fields of one name
  MissingField,     ///< a field that every package has is not there
  UnknownField,     ///< a field that no package has
  WrongType,        ///< the detail says what was expected
  OutOfRange,       ///< a number that does not fit
  OutsideOfFolder,  ///< a pathname that is not one below the package's own folder
  InvalidFolder,    ///< neither a pathname nor an IRI; the detail says why
  Repeated,         ///< the detail is the manifest of the package that has this name and version
  TooMuch,          ///< the packages before it fill the registry
};

/// A package that was left out, and why. The others are there.
struct PackageProblem {
  ustring file;                     ///< the native path of its manifest
  std::optional<std::size_t> line;  ///< from 1 on; empty when the file as a whole is meant
  ustring field;                    ///< "folders[1].tags", counted from 0; "" when it is none
  PackageFault fault;
  ustring detail = {};

  /// All of it in words, "FILE:LINE: FIELD: what is wrong", without a full stop.
  [[nodiscard]] SEARCHPATH_EXPORT ustring GetText() const;
};

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
