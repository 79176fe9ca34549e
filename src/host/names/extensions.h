#ifndef SEARCHPATH_SRC_HOST_NAMES_EXTENSIONS_H
#define SEARCHPATH_SRC_HOST_NAMES_EXTENSIONS_H

#include "searchpath/model/ustring.h"

#include <vector>

namespace Corvane::PathManagement::host {

/// Extensions as they are looked up, each with its dot; "" is none, and "/__init__.py" is a file in a
/// folder.
[[nodiscard]] inline std::vector<ustring> WithDots(std::vector<ustring> extensions) {
  for (ustring& extension : extensions) {
    const bool isBare = !extension.empty() && extension[0] != u'.' && extension[0] != u'/';
    if (isBare) extension.insert(0, 1, u'.');
  }
  return extensions;
}

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_NAMES_EXTENSIONS_H
