#ifndef SEARCHPATH_SRC_HOST_QUESTIONS_PATH_EXAMINATION_H
#define SEARCHPATH_SRC_HOST_QUESTIONS_PATH_EXAMINATION_H

#include "searchpath/host/path_examination.h"

#include <vector>

namespace Corvane::PathManagement::host {

class PathView;

/// As `Environment::Examine`.
[[nodiscard]] std::vector<PathFinding> ExaminePath(const PathView& view,
                                                   const Examination& examination);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_QUESTIONS_PATH_EXAMINATION_H
