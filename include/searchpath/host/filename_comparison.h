#ifndef SEARCHPATH_HOST_FILENAME_COMPARISON_H
#define SEARCHPATH_HOST_FILENAME_COMPARISON_H

#include "searchpath/utilities/filename_comparison.h"

namespace Corvane::PathManagement::host {

/// The comparison for programs that use the headers of the host alone.
using PathManagement::AreSameFilename;

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_FILENAME_COMPARISON_H
