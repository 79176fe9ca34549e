#include "host/names/case_folding.h"
#include "platform/module.h"

namespace Corvane::PathManagement::host {

// Stands in the library for the function of the same name in the module.
extern "C" const CaseFolding* SearchpathCaseFolding() {
  static const auto* const loaded = reinterpret_cast<decltype(&SearchpathCaseFolding)>(
      PathManagement::detail::FindInModule("case_folding.so", "SearchpathCaseFolding"))();
  return loaded;
}

}  // namespace Corvane::PathManagement::host
