#ifndef SEARCHPATH_TOOLS_SEARCHPATH_FOUND_FILE_H
#define SEARCHPATH_TOOLS_SEARCHPATH_FOUND_FILE_H

#include "searchpath/model/found_item.h"
#include "searchpath/model/ustring.h"

#include <string>

namespace Corvane::PathManagement::tool {

class Output;

/// A line with the path of `file`, or an object with its path, folder and kind of folder.
void WriteFile(const Output& output, const FoundItem& file);

/// The same for an answer to `name`, which the object holds too.
void WriteAnswer(const Output& output, const std::string& name, const FoundItem& file);

/// The same for a file called `name`, which matches `pattern`.
void WriteMatch(const Output& output, const std::string& pattern, const ustring& name,
                const FoundItem& file);

/// An object which says that `name` means no file.
void WriteMiss(const Output& output, const std::string& name);

/// An object which says that there are no further answers to `name`.
void WriteEnd(const Output& output, const std::string& name);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_FOUND_FILE_H
