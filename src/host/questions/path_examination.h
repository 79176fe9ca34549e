#ifndef SEARCHPATH_SRC_HOST_QUESTIONS_PATH_EXAMINATION_H
#define SEARCHPATH_SRC_HOST_QUESTIONS_PATH_EXAMINATION_H

#include "searchpath/host/path_examination.h"

#include <string_view>
#include <vector>

namespace Corvane::PathManagement::host {

class PathView;

/// As `Environment::Examine`, by the environment's own rules.
[[nodiscard]] std::vector<PathFinding> ExaminePath(const PathView& view,
                                                   const Examination& examination);

/// The finding about a folder that cannot be searched for this reason: that it is missing, or that
/// it is unreadable.
[[nodiscard]] FindingKind KindOf(current_working_folder::AbsolutizeError reason);

/// Whether the bytes of a file name are UTF-8.
[[nodiscard]] bool IsUtf8(std::string_view name);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_QUESTIONS_PATH_EXAMINATION_H
