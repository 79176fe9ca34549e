#include "diff/entry_sort.h"
#include "platform/module.h"

namespace Corvane::PathManagement::detail {

// The library's version of this function: it calls the function of the same name in the module.
extern "C" const EntrySort* SearchpathEntrySort() {
  static const auto* const loaded = reinterpret_cast<decltype(&SearchpathEntrySort)>(
      FindInModule("entry_sort.so", "SearchpathEntrySort"))();
  return loaded;
}

}  // namespace Corvane::PathManagement::detail
