#ifndef SEARCHPATH_HOST_FILENAME_COMPARISON_H
#define SEARCHPATH_HOST_FILENAME_COMPARISON_H

#include "searchpath/utilities/filename_comparison.h"

namespace Corvane::PathManagement::host {

using PathManagement::AreSameFilename;

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_FILENAME_COMPARISON_H
