#ifndef SEARCHPATH_SRC_HOST_QUESTIONS_SHADOW_SEARCH_H
#define SEARCHPATH_SRC_HOST_QUESTIONS_SHADOW_SEARCH_H

#include "searchpath/host/shadow_search.h"

namespace Corvane::PathManagement::host {

class PathView;
class RuledPath;

/// As `Environment::FindShadows`.
[[nodiscard]] ShadowReport CollectShadows(const PathView& view, const ShadowLookup& lookup);

/// As above, by the rules of `path`: compares names relative to its folders, each with its
/// extension. Extensions of `lookup` restrict the search to the files that have one of them.
[[nodiscard]] ShadowReport CollectShadowsByRules(const RuledPath& path, const ShadowLookup& lookup);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_QUESTIONS_SHADOW_SEARCH_H
