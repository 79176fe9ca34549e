#ifndef SEARCHPATH_SRC_HOST_TRUST_STEP_REPORT_H
#define SEARCHPATH_SRC_HOST_TRUST_STEP_REPORT_H

#include "host/trust/finding_list.h"
#include "host/trust/intruders.h"
#include "host/trust/path_walk.h"

#include <set>
#include <string>
#include <vector>

namespace Corvane::PathManagement::host {

/// Reports what somebody can do to the steps of walks.
class StepReport {
 public:
  StepReport(Accounts& accounts, FindingList& list) : search(accounts), findings(list) {}

  void BeginPart(ustring text);

  /// What stands at each step can be replaced, or made. `folder` is the searched folder that the walk
  /// is for. Steps in searched folders are left out, since these are reported themselves.
  void ReportSteps(const std::vector<PathStep>& steps, const std::string& folder,
                   const std::vector<NameScope>& scopes);

  /// Names can be made in a searched folder, called `folder`. `ofOthers` are the scopes where files
  /// that are there already cannot be replaced.
  void ReportFolder(const PassedFolder& searched, const std::string& folder,
                    const std::vector<NameScope>& scopes, const std::vector<NameScope>& ofOthers);

  /// The file at a step can be changed. Whether it `counts` as it is says whether that matters for
  /// those who can only write to it; its owner can make it count.
  void ReportFile(const PathStep& file, const std::string& folder, bool counts,
                  const std::vector<NameScope>& scopes);

 private:
  IntruderSearch search;
  FindingList& findings;
  std::set<std::string> searchedFolders;  // of this part, without links
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_TRUST_STEP_REPORT_H
