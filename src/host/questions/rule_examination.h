#ifndef SEARCHPATH_SRC_HOST_QUESTIONS_RULE_EXAMINATION_H
#define SEARCHPATH_SRC_HOST_QUESTIONS_RULE_EXAMINATION_H

#include "host/rules/ruled_path.h"
#include "searchpath/host/path_examination.h"

#include <vector>

namespace Corvane::PathManagement::host {

/// As `Environment::Examine`, by the rules of `path`. Looks at the folders of the path themselves
/// and at what stands directly in them.
[[nodiscard]] std::vector<PathFinding> ExamineByRules(const RuledPath& path,
                                                      const Examination& examination);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_QUESTIONS_RULE_EXAMINATION_H
