#ifndef SEARCHPATH_SRC_HOST_QUESTIONS_RULE_EXPLANATION_H
#define SEARCHPATH_SRC_HOST_QUESTIONS_RULE_EXPLANATION_H

#include "host/rules/ruled_path.h"
#include "searchpath/host/explanation.h"

namespace Corvane::PathManagement::host {

/// The answer of `RuledPath::FindAll`, and which folders were asked for it: see
/// `Environment::Explain`.
///
/// Cost: for each folder without an answer, asks the disk once more to see why.
[[nodiscard]] Explanation ExplainByRules(const RuledPath& path, const RuledPath::Target& target,
                                         const RuledPath::Asker& asker);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_QUESTIONS_RULE_EXPLANATION_H
