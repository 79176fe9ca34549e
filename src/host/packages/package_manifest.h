#ifndef SEARCHPATH_SRC_HOST_PACKAGES_PACKAGE_MANIFEST_H
#define SEARCHPATH_SRC_HOST_PACKAGES_PACKAGE_MANIFEST_H

#include "json/json_fault.h"
#include "searchpath/host/package_problem.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/ustring.h"
#include "searchpath/platform/package_registry.h"

#include <cstddef>
#include <exception>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace Corvane::PathManagement::host {

/// The number in `PackageFault` of the first fault of JSON texts. From there on, it has the faults
/// of `JsonFault` in their order.
constexpr int kFirstJsonFault = static_cast<int>(PackageFault::NotUtf8);
static_assert(kFirstJsonFault + static_cast<int>(json::JsonFault::OutOfRange) ==
              static_cast<int>(PackageFault::OutOfRange));

/// A manifest cannot be used. The members are those of `PackageProblem` without the file.
class ManifestException : public std::exception {
 public:
  explicit ManifestException(PackageFault itsFault, std::optional<std::size_t> itsLine = {},
                             ustring itsField = {}, ustring itsDetail = {})
      : fault(itsFault), line(itsLine), field(std::move(itsField)), detail(std::move(itsDetail)) {}

  PackageFault fault;
  std::optional<std::size_t> line;
  ustring field;
  ustring detail;
};

/// Manifests of this size and larger ones are refused; in bytes.
constexpr std::size_t kTooLargeManifest = (std::size_t{1} << 20) + 1;

/// The content of a manifest.
struct PackageManifest {
  ZentraComponents::ComponentIdentifier identifier;
  std::size_t nameLine;  // the line of the field "name", from 1
  std::shared_ptr<const Corvane::PackageRegistry::IPackage> package;
  std::size_t memory;  // what the package takes, roughly, in bytes
};

/// Reads the manifest of the package whose own folder is `folder`.
///
/// Errors: `ManifestException`.
[[nodiscard]] PackageManifest ReadManifest(std::string_view bytes, const AbsoluteIRI& folder);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_PACKAGES_PACKAGE_MANIFEST_H
