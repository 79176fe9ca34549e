#ifndef SEARCHPATH_TOOLS_SEARCHPATH_FOUND_FILE_H
#define SEARCHPATH_TOOLS_SEARCHPATH_FOUND_FILE_H

#include "searchpath/model/found_item.h"
#include "searchpath/model/ustring.h"

#include <string>

namespace Corvane::PathManagement::tool {

class Output;

/// Writes a line with the path of `file`; in JSON, an object with its path, its folder and the kind
/// of that folder.
void WriteFile(const Output& output, const FoundItem& file);

/// The same for a file that `name` means or could mean; the object begins with the name.
void WriteAnswer(const Output& output, const std::string& name, const FoundItem& file);

/// The same for a file called `name`, which matches `pattern`; the object begins with both.
void WriteMatch(const Output& output, const std::string& pattern, const ustring& name,
                const FoundItem& file);

/// For output in JSON only: writes an object which says that `name` means no file.
void WriteMiss(const Output& output, const std::string& name);

/// For output in JSON only: writes an object which says that `name` has no further answers.
void WriteEnd(const Output& output, const std::string& name);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_FOUND_FILE_H
