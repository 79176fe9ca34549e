#include "platform/module.h"

#include <dlfcn.h>
#include <stdexcept>
#include <string>

namespace Corvane::PathManagement::detail {

namespace {

/// The folder of the library that holds a copy of this function. Asked for by hand: the loader does
/// not expand $ORIGIN as meant when a sanitizer stands between it and the library.
std::string FindOwnFolder() {
  Dl_info library = {};
  if (dladdr(reinterpret_cast<const void*>(&FindOwnFolder), &library) == 0) return {};
  const std::string file = library.dli_fname;
  return file.substr(0, file.rfind('/') + 1);
}

}  // namespace

void* FindInModule(const char* module, const char* name) {
  void* const opened = dlopen((FindOwnFolder() + "searchpath/" + module).c_str(), RTLD_NOW);
  void* const function = opened == nullptr ? nullptr : dlsym(opened, name);
  if (function != nullptr) return function;
  throw std::runtime_error(std::string("a part of the library is missing: ") + dlerror());
}

}  // namespace Corvane::PathManagement::detail
