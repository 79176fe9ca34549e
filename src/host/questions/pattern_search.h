#ifndef SEARCHPATH_SRC_HOST_QUESTIONS_PATTERN_SEARCH_H
#define SEARCHPATH_SRC_HOST_QUESTIONS_PATTERN_SEARCH_H

#include "host/rules/ruled_path.h"
#include "searchpath/host/name_pattern.h"
#include "searchpath/model/search_target.h"

#include <optional>
#include <vector>

namespace Corvane::PathManagement::host {

class PathView;

// Both functions return the names that match the pattern `target` with one of its extensions: in
// the order of the folders that hold them first and, within a folder, of their bytes. Each has the
// files that `FindAll` finds for it, of which there is at least one.
//
// Errors: `std::invalid_argument` when a folder in the name of `target` is a pattern.

/// By the rules of the environment, for code in the folder `asker` if there is one.
[[nodiscard]] std::vector<MatchingName> FindMatchingNames(
    const PathView& view, const std::optional<AbsoluteIRI>& asker,
    const PathManagement::detail::SearchTarget& target, FilenameMatchingPolicy policy);

/// By the rules of `path`.
[[nodiscard]] std::vector<MatchingName> FindMatchingNamesByRules(
    const RuledPath& path, const PathManagement::detail::SearchTarget& target,
    const RuledPath::Asker& asker);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_QUESTIONS_PATTERN_SEARCH_H
