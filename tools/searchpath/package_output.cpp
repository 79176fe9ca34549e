#include "package_output.h"

#include "command_line.h"
#include "output.h"
#include "phrases.h"

namespace Corvane::PathManagement::tool {

std::string GetText(const ZentraComponents::ComponentIdentifier& package) {
  return GetBytes(package.name) + ' ' + GetBytes(package.version);
}

void CheckRoot(const std::string& option, const std::string& root,
               const host::PackageRegistry& registry) {
  if (const auto& problem = registry.GetRootProblem()) {
    throw UsageError(option + ' ' + Quoted(root) + ": " + problem->GetText() +
                     "; name the folder that holds the packages");
  }
}

void ReportPackageProblems(const host::PackageRegistry& registry) {
  const auto& problems = registry.GetProblems();
  for (const host::PackageProblem& problem : problems) Report(GetBytes(problem.GetText()));
  // The registry counts all problems, but keeps only the first ones.
  const std::size_t more = registry.GetProblemCount() - problems.size();
  if (more > 0) Report("left out " + GetCounted(more, "more package"));
}

}  // namespace Corvane::PathManagement::tool
