#ifndef SEARCHPATH_SRC_HOST_QUESTIONS_PATTERN_SEARCH_H
#define SEARCHPATH_SRC_HOST_QUESTIONS_PATTERN_SEARCH_H

#include "host/rules/ruled_path.h"
#include "searchpath/host/name_pattern.h"
#include "searchpath/model/search_target.h"

#include <optional>
#include <vector>

namespace Corvane::PathManagement::host {

class PathView;

// The names that match the name of `target`, with each of its extensions, in the order in which the
// path holds them first and, within a folder, of their bytes. Their files are those that `FindAll`
// finds.
//
// Errors: `std::invalid_argument` when a folder in that name is a pattern.

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
