#ifndef SEARCHPATH_SRC_HOST_TRUST_TRUST_EXAMINATION_H
#define SEARCHPATH_SRC_HOST_TRUST_TRUST_EXAMINATION_H

#include "searchpath/host/lookup_rules.h"
#include "searchpath/host/trust.h"

namespace Corvane::PathManagement::host {

class PathView;
class RuledPath;

/// As `Environment::ExamineTrust`, for the path of `view`. `ruled` is the same path under `rules`;
/// null where `rules.foldersHaveMeaning`.
[[nodiscard]] TrustReport ExamineTrustOf(const PathView& view, const RuledPath* ruled,
                                         const LookupRules& rules, const TrustLookup& lookup);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_TRUST_TRUST_EXAMINATION_H
