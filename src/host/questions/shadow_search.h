#ifndef SEARCHPATH_SRC_HOST_QUESTIONS_SHADOW_SEARCH_H
#define SEARCHPATH_SRC_HOST_QUESTIONS_SHADOW_SEARCH_H

#include "searchpath/host/shadow_search.h"

namespace Corvane::PathManagement::host {

class PathView;
class RuledPath;

/// As `Environment::FindShadows`.
[[nodiscard]] ShadowReport CollectShadows(const PathView& view, const ShadowLookup& lookup);

/// The same by the rules of `path`, which compares names relative to its folders. With extensions, of
/// files that have one of them; a name has its extension.
[[nodiscard]] ShadowReport CollectShadowsByRules(const RuledPath& path, const ShadowLookup& lookup);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_QUESTIONS_SHADOW_SEARCH_H
