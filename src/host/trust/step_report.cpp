#include "host/trust/step_report.h"

#include <sys/stat.h>

#include <utility>

namespace Corvane::PathManagement::host {

void StepReport::BeginPart(ustring text) {
  findings.BeginPart(std::move(text));
  searchedFolders.clear();
}

void StepReport::ReportSteps(const std::vector<PathStep>& steps, const std::string& folder,
                             const std::vector<NameScope>& scopes) {
  for (const PathStep& step : steps) {
    if (searchedFolders.contains(step.folder->path)) {
      ReportOwnersOfStickyLink(step, folder, scopes);
    } else if (step.object) {
      findings.Add(TrustKind::ParentWritable, folder, step.folder->path,
                   search.FindReplacers(*step.folder, *step.object).Join(), scopes);
    } else {
      findings.Add(TrustKind::Creatable, folder, step.GetPath(),
                   search.FindCreators(*step.folder).Join(), scopes);
    }
  }
}

/// Reports who can replace a link in a sticky folder, apart from those whom `ReportFolder` names as
/// the owners of the folder. The owners of files and folders are reported with these themselves.
void StepReport::ReportOwnersOfStickyLink(const PathStep& step, const std::string& folder,
                                          const std::vector<NameScope>& scopes) {
  const bool isSticky = (step.folder->facts.mode & S_ISVTX) != 0;
  if (!isSticky || !step.object || !S_ISLNK(step.object->mode)) return;
  findings.Add(TrustKind::ParentWritable, folder, step.folder->path,
               search.FindReplacers(*step.folder, *step.object).others, scopes);
}

void StepReport::ReportFolder(const PassedFolder& searched, const std::string& folder,
                              const std::vector<NameScope>& scopes,
                              const std::vector<NameScope>& scopesIfSticky) {
  searchedFolders.insert(searched.path);
  const Intruders creators = search.FindCreators(searched);
  const bool isSticky = (searched.facts.mode & S_ISVTX) != 0;
  findings.Add(TrustKind::Owner, folder, searched.path, creators.owners, scopes);
  findings.Add(TrustKind::Writable, folder, searched.path, creators.others,
               isSticky ? scopesIfSticky : scopes);
}

void StepReport::ReportFile(const PathStep& file, const std::string& folder, bool counts,
                            const std::vector<NameScope>& scopes) {
  const Intruders writers = search.FindWriters(*file.folder, *file.object);
  findings.Add(TrustKind::Owner, folder, file.GetPath(), writers.owners, scopes);
  if (!counts || file.object->isNullDevice) return;
  findings.Add(TrustKind::FileWritable, folder, file.GetPath(), writers.others, scopes);
}

}  // namespace Corvane::PathManagement::host
