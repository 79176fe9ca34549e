#ifndef SEARCHPATH_TOOLS_SEARCHPATH_DIFFERENCE_OUTPUT_H
#define SEARCHPATH_TOOLS_SEARCHPATH_DIFFERENCE_OUTPUT_H

#include "searchpath/host/name_changes.h"
#include "searchpath/host/path_differences.h"

namespace Corvane::PathManagement::tool {

class Output;

/// A line, or a JSON object, with the change of a folder, its positions, counted from 1, and its path.
void WriteDifference(const Output& output, const host::FolderDifference& difference);

/// The same with the file that a name meant and the file that it means now.
void WriteDifference(const Output& output, const host::NameChange& name);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_DIFFERENCE_OUTPUT_H
