#ifndef SEARCHPATH_TOOLS_SEARCHPATH_HEADER_FLAGS_H
#define SEARCHPATH_TOOLS_SEARCHPATH_HEADER_FLAGS_H

#include "compilation_database.h"
#include "compiler_folders.h"

#include <optional>

namespace Corvane::PathManagement::tool {

/// The compiler of `command`, and those of its flags that change in which folders it looks for
/// headers; without a launcher that caches or distributes compilations. Empty when the file is in no
/// language of the C family.
[[nodiscard]] std::optional<CompilerCall> FindCompilerCall(const CompileCommand& command);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_HEADER_FLAGS_H
