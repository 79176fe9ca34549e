#ifndef SEARCHPATH_SRC_HOST_QUESTIONS_RULE_EXPLANATION_H
#define SEARCHPATH_SRC_HOST_QUESTIONS_RULE_EXPLANATION_H

#include "host/rules/ruled_path.h"
#include "searchpath/host/explanation.h"

namespace Corvane::PathManagement::host {

/// The look-up of `RuledPath::FindAll`, explained.
///
/// Cost: asks the disk again why a folder has no answer.
[[nodiscard]] Explanation ExplainByRules(const RuledPath& path, const RuledPath::Target& target,
                                         const RuledPath::Asker& asker);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_QUESTIONS_RULE_EXPLANATION_H
