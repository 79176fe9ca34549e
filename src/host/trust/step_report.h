#ifndef SEARCHPATH_SRC_HOST_TRUST_STEP_REPORT_H
#define SEARCHPATH_SRC_HOST_TRUST_STEP_REPORT_H

#include "host/trust/finding_list.h"
#include "host/trust/intruders.h"
#include "host/trust/path_walk.h"

#include <set>
#include <string>
#include <vector>

namespace Corvane::PathManagement::host {

/// Reports what those who are not trusted can do to the folders, links and files that a walk met.
/// In all operations, `folder` is the searched folder that the walk is for, as users read its path,
/// and `scopes` are the names that could be taken over.
class StepReport {
 public:
  StepReport(Accounts& accounts, FindingList& list) : search(accounts), findings(list) {}

  /// As `FindingList::BeginPart`.
  void BeginPart(ustring text);

  /// Reports who can replace what stands at each step, or make it when nothing stands there. In a
  /// folder that `ReportFolder` has reported in this part, only the owner of a link is reported, if
  /// the folder is sticky: the owner can replace that link and no other.
  void ReportSteps(const std::vector<PathStep>& steps, const std::string& folder,
                   const std::vector<NameScope>& scopes);

  /// Reports who owns the folder `searched`, as the walk reached it, and who else can make names in
  /// it. In a sticky folder, those who are not its owner cannot replace what other users have made
  /// there: for them `scopesIfSticky` holds instead of `scopes`.
  void ReportFolder(const PassedFolder& searched, const std::string& folder,
                    const std::vector<NameScope>& scopes,
                    const std::vector<NameScope>& scopesIfSticky);

  /// Reports who owns `file` and who else can write to it. Other writers are reported only if
  /// `counts`: if names can mean the file by the lookup rules, as it is now. The owner is always
  /// reported, since he can change the mode of the file so that names can mean it.
  void ReportFile(const PathStep& file, const std::string& folder, bool counts,
                  const std::vector<NameScope>& scopes);

 private:
  void ReportOwnersOfStickyLink(const PathStep& step, const std::string& folder,
                                const std::vector<NameScope>& scopes);

  IntruderSearch search;
  FindingList& findings;
  std::set<std::string> searchedFolders;  // as `ReportFolder` met them in this part; without links
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_TRUST_STEP_REPORT_H
