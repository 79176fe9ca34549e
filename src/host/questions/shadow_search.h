#ifndef SEARCHPATH_SRC_HOST_QUESTIONS_SHADOW_SEARCH_H
#define SEARCHPATH_SRC_HOST_QUESTIONS_SHADOW_SEARCH_H

#include "searchpath/host/shadow_search.h"

namespace Corvane::PathManagement::host {

class PathView;
class RuledPath;

/// As `Environment::FindShadows`; the extensions of `lookup` begin with their dots.
[[nodiscard]] ShadowReport CollectShadows(const PathView& view, const ShadowLookup& lookup);

/// The same by the rules of `path`: compares names relative to its folders, each with its
/// extension. If `lookup` has extensions, only files with one of them are searched.
[[nodiscard]] ShadowReport CollectShadowsByRules(const RuledPath& path, const ShadowLookup& lookup);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_QUESTIONS_SHADOW_SEARCH_H
