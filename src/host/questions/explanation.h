#ifndef SEARCHPATH_SRC_HOST_QUESTIONS_EXPLANATION_H
#define SEARCHPATH_SRC_HOST_QUESTIONS_EXPLANATION_H

#include "searchpath/host/explanation.h"
#include "searchpath/model/filename_matching_policy.h"
#include "searchpath/model/search_target.h"

#include <optional>

namespace Corvane::PathManagement::host {

class PathView;

/// The answer of `FindAllFiles`, and which folders were asked for it: see `Environment::Explain`.
/// `asker` is the folder of the code that asks, if there is one.
[[nodiscard]] Explanation ExplainLookup(const PathView& view,
                                        const std::optional<AbsoluteIRI>& asker,
                                        const PathManagement::detail::SearchTarget& target,
                                        FilenameMatchingPolicy policy);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_QUESTIONS_EXPLANATION_H
