#include "platform/module.h"
#include "text/case_folding.h"

namespace Corvane::PathManagement::detail {

// The library's version of this function: it calls the function of the same name in the module.
extern "C" const CaseFolding* SearchpathCaseFolding() {
  static const auto* const loaded = reinterpret_cast<decltype(&SearchpathCaseFolding)>(
      FindInModule("case_folding.so", "SearchpathCaseFolding"))();
  return loaded;
}

}  // namespace Corvane::PathManagement::detail
