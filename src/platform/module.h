#ifndef SEARCHPATH_SRC_PLATFORM_MODULE_H
#define SEARCHPATH_SRC_PLATFORM_MODULE_H

namespace Corvane::PathManagement::detail {

/// The function `name` of a module, never null. A module is a part of this library that few
/// programs need and that depends on another library. It is the file `module` in the folder
/// "searchpath" beside this library. Once opened, it stays open.
///
/// Threads: from any thread.
/// Errors: `std::runtime_error` when the module cannot be opened or does not have the function.
[[nodiscard]] void* FindInModule(const char* module, const char* name);

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_PLATFORM_MODULE_H
