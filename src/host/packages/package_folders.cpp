#include "host/packages/package_folders.h"

#include "host/folder/directory_scan.h"
#include "host/folder/entry_state.h"
#include "searchpath/utilities/iri_conversion.h"
#include "searchpath/utilities/packages_on_path.h"

namespace Corvane::PathManagement::host {

namespace {

using Corvane::PackageRegistry::IPackage;  // of the namespace, not of the class of that name
using current_working_folder::AbsolutizeError;

/// The folder of `package` whose links cannot be resolved, and why. If all can be resolved by now,
/// the package's own folder, with the reason `Other`.
FolderProblem ProblemOf(const IPackage& package, DiskPatience::Limit timeout) {
  DiskPatience patience(timeout);
  for (const auto& each : package.GetFolders()) {
    const auto reason = ProbeFolder(each.folder, patience);
    // Links are resolved as far as a path exists, so nothing else makes that fail.
    if (reason == AbsolutizeError::LinkLoop || reason == AbsolutizeError::InputOutput) {
      return {GetStringFromIRI(each.folder), *reason};
    }
  }
  return {GetStringFromIRI(package.GetMetadata().rootFolder), AbsolutizeError::Other};
}

}  // namespace

GivenFolders WithPackageFolders(GivenFolders given, const PackageRegistry* registry,
                                const std::shared_ptr<const ListingSource>& source,
                                DiskPatience::Limit timeout) {
  if (registry == nullptr) return given;
  if (const auto& problem = registry->GetRootProblem()) given.unlocated.push_back(*problem);
  for (const ComponentIdentifier& package : registry->GetIdentifiers()) {
    try {
      // One package at a time, since the folders returned do not say which package they belong to.
      for (const AbsoluteIRI& folder : GetPathFoldersForPackages(*registry, {&package, 1})) {
        given.folders.push_back({.origin = {.source = FolderSource::Package,
                                            .folder = GetStringFromIRI(folder),
                                            .package = package},
                                 .entries = {CreateMainFolder(folder, source, timeout)}});
      }
    } catch (const foundation::storage::vfs::Exception&) {
      given.unlocated.push_back(ProblemOf(*registry->GetPackage(package), timeout));
    }
  }
  return given;
}

std::vector<KnownPackage> FindKnownPackages(const std::vector<GivenFolders::Given>& given) {
  std::vector<KnownPackage> known;
  for (const GivenFolders::Given& folder : given) {
    const auto& package = folder.origin.package;
    if (!package) continue;
    // The folders of one package stand together.
    if (known.empty() || known.back().package != *package) {
      known.push_back({.package = *package, .folders = {}});
    }
    // The folder itself is its first entry; those of packages have no others.
    known.back().folders.push_back(folder.entries.front()->GetCanonicalAbsoluteIRI());
  }
  return known;
}

}  // namespace Corvane::PathManagement::host
