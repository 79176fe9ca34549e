#ifndef SEARCHPATH_TOOLS_SEARCHPATH_DIFFERENCE_OUTPUT_H
#define SEARCHPATH_TOOLS_SEARCHPATH_DIFFERENCE_OUTPUT_H

#include "searchpath/host/name_changes.h"
#include "searchpath/host/path_differences.h"

namespace Corvane::PathManagement::tool {

class Output;

/// Writes, as a line or a JSON object, how a folder has changed, its positions on both paths,
/// counted from 1, and its location.
void WriteDifference(const Output& output, const host::FolderDifference& difference);

/// The same for a name, with the file that it meant and the file that it means now.
void WriteDifference(const Output& output, const host::NameChange& name);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_DIFFERENCE_OUTPUT_H
