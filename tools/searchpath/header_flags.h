#ifndef SEARCHPATH_TOOLS_SEARCHPATH_HEADER_FLAGS_H
#define SEARCHPATH_TOOLS_SEARCHPATH_HEADER_FLAGS_H

#include "compilation_database.h"
#include "compiler_folders.h"

#include <optional>

namespace Corvane::PathManagement::tool {

/// How `command` calls the compiler: the program, without a launcher that caches or distributes
/// compilations, and those flags that change the folders in which it looks for headers. `nullopt`
/// when the file is in no language of the C family.
///
/// Precondition: `command.words` is not empty.
[[nodiscard]] std::optional<CompilerCall> FindCompilerCall(const CompileCommand& command);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_HEADER_FLAGS_H
