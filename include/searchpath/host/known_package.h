#ifndef SEARCHPATH_HOST_KNOWN_PACKAGE_H
#define SEARCHPATH_HOST_KNOWN_PACKAGE_H

#include "searchpath/model/absolute_iri.h"
#include "searchpath/platform/component_identifier.h"

#include <vector>

namespace Corvane::PathManagement::host {

/// A package, and the folders that it puts on the path.
struct KnownPackage {
  ZentraComponents::ComponentIdentifier package;  ///< its name and version
  std::vector<CanonicalAbsoluteIRI> folders;      ///< in path order
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_KNOWN_PACKAGE_H
