#ifndef SEARCHPATH_TOOLS_SEARCHPATH_DIFFERENCE_OUTPUT_H
#define SEARCHPATH_TOOLS_SEARCHPATH_DIFFERENCE_OUTPUT_H

#include "searchpath/host/name_changes.h"
#include "searchpath/host/path_differences.h"

namespace Corvane::PathManagement::tool {

class Output;

/// A line, or an object, with what became of a folder, its places, from 1 on, and its path.
void WriteDifference(const Output& output, const host::FolderDifference& difference);

/// The same with the files that a name meant and means.
void WriteDifference(const Output& output, const host::NameChange& name);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_DIFFERENCE_OUTPUT_H
