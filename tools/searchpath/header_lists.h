#ifndef SEARCHPATH_TOOLS_SEARCHPATH_HEADER_LISTS_H
#define SEARCHPATH_TOOLS_SEARCHPATH_HEADER_LISTS_H

#include "compiler_folders.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

/// The folders in which a compiler looks for headers, and the files that it compiles with them.
struct HeaderList {
  CompilerFolders folders;         // absolute
  std::vector<std::string> files;  // absolute, in the order of the database
};

/// The distinct lists of folders of a compilation database, in the order of their first files.
struct HeaderLists {
  std::vector<HeaderList> lists;
  std::vector<std::string> problems;    // why compilers did not answer, each once
  std::vector<std::string> otherFiles;  // left out: in no language of the C family
};

/// Asks the compilers in `database` for their folders, once for each combination of compiler,
/// language, flags that may change the folders, and folder in which it runs. An answer is kept as
/// it is, since the compiler itself decides on the order and on which repeats it drops.
///
/// Errors: `UsageError` when the file `database` cannot be used.
[[nodiscard]] HeaderLists ReadHeaderLists(const std::string& database);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_HEADER_LISTS_H
