#ifndef SEARCHPATH_TOOLS_SEARCHPATH_HEADER_LISTS_H
#define SEARCHPATH_TOOLS_SEARCHPATH_HEADER_LISTS_H

#include "compiler_folders.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

/// In which folders a compiler looks for the headers of some files.
struct HeaderList {
  CompilerFolders folders;         // in full
  std::vector<std::string> files;  // in full, in the order of the database
};

/// The distinct lists of a compilation database, in the order of the files that come first.
struct HeaderLists {
  std::vector<HeaderList> lists;
  std::vector<std::string> problems;    // why compilers did not answer, each once
  std::vector<std::string> otherFiles;  // in no language of the C family
};

/// Asks each compiler once for each set of flags that may change its folders, in each folder where it
/// runs, and takes the order that it names: which repeats it drops is its own affair.
///
/// Errors: `UsageError` when `database` cannot be used.
[[nodiscard]] HeaderLists ReadHeaderLists(const std::string& database);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_HEADER_LISTS_H
