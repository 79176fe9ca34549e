#ifndef SEARCHPATH_SRC_PLATFORM_MODULE_H
#define SEARCHPATH_SRC_PLATFORM_MODULE_H

namespace Corvane::PathManagement::detail {

/// The function `name` of a module: a part of this library that stands on another library which few
/// programs need. It is the file `module` in the folder "searchpath" beside this library, and stays
/// open once it has been opened.
///
/// Threads: from any thread.
/// Errors: `std::runtime_error` when there is no such module or it cannot be opened.
[[nodiscard]] void* FindInModule(const char* module, const char* name);

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_PLATFORM_MODULE_H
