#ifndef SEARCHPATH_SRC_HOST_QUESTIONS_SHADOW_SEARCH_H
#define SEARCHPATH_SRC_HOST_QUESTIONS_SHADOW_SEARCH_H

#include "searchpath/host/shadow_search.h"

namespace Corvane::PathManagement::host {

class PathView;

/// As `Environment::FindShadows`.
[[nodiscard]] ShadowReport CollectShadows(const PathView& view, const ShadowLookup& lookup);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_QUESTIONS_SHADOW_SEARCH_H
