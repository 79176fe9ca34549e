#ifndef SEARCHPATH_SRC_HOST_QUESTIONS_SHADOW_SEARCH_H
#define SEARCHPATH_SRC_HOST_QUESTIONS_SHADOW_SEARCH_H

#include "searchpath/host/shadow_search.h"

#include <functional>
#include <vector>

namespace Corvane::PathManagement::host {

class PathView;

/// The shadows of a path. `findAll` is its look-up: all that is reported of a name is its answer. It
/// is called on several threads at once.
[[nodiscard]] ShadowReport CollectShadows(
    const PathView& view, const ShadowLookup& lookup,
    const std::function<std::vector<FoundItem>(const ustring&)>& findAll);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_QUESTIONS_SHADOW_SEARCH_H
