#ifndef SEARCHPATH_SRC_PLATFORM_MODULE_H
#define SEARCHPATH_SRC_PLATFORM_MODULE_H

namespace Corvane::PathManagement::detail {

/// The function `name` of a module: a part of this library that depends on another library, which
/// few programs need. The module is the file `module` in the folder "searchpath" beside this
/// library. Once opened it stays open. Never null.
///
/// Threads: from any thread.
/// Errors: `std::runtime_error` when the module cannot be opened or does not have the function.
[[nodiscard]] void* FindInModule(const char* module, const char* name);

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_PLATFORM_MODULE_H
