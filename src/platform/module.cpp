#include "platform/module.h"

#include <dlfcn.h>
#include <stdexcept>
#include <string>

namespace Corvane::PathManagement::detail {

namespace {

/// The folder of the library that this function is linked into, with a "/" at its end. $ORIGIN
/// would not do: a sanitizer that intercepts `dlopen` makes the loader expand it to another folder.
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
