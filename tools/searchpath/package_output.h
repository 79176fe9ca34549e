#ifndef SEARCHPATH_TOOLS_SEARCHPATH_PACKAGE_OUTPUT_H
#define SEARCHPATH_TOOLS_SEARCHPATH_PACKAGE_OUTPUT_H

#include "searchpath/host/package_registry.h"

#include <string>

namespace Corvane::PathManagement::tool {

// Packages in messages.

/// "geometry 1.2", as bytes.
[[nodiscard]] std::string GetText(const ZentraComponents::ComponentIdentifier& package);

/// Checks that the folder `root`, the value of `option`, could be read for `registry`. Errors:
/// `UsageError` when it could not.
void CheckRoot(const std::string& option, const std::string& root,
               const host::PackageRegistry& registry);

/// Reports which packages were left out, and why.
void ReportPackageProblems(const host::PackageRegistry& registry);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_PACKAGE_OUTPUT_H
