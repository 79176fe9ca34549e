#ifndef SEARCHPATH_SRC_HOST_NAMES_EXTENSIONS_H
#define SEARCHPATH_SRC_HOST_NAMES_EXTENSIONS_H

#include "searchpath/model/ustring.h"

#include <vector>

namespace Corvane::PathManagement::host {

/// The extensions as look-ups use them: puts a dot in front of those that have none. "" (no
/// extension) stays as it is, and so does "/main.zt" (the file main.zt in a folder that has the
/// name looked up).
[[nodiscard]] inline std::vector<ustring> WithDots(std::vector<ustring> extensions) {
  for (ustring& extension : extensions) {
    const bool isBare = !extension.empty() && extension[0] != u'.' && extension[0] != u'/';
    if (isBare) extension.insert(0, 1, u'.');
  }
  return extensions;
}

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_NAMES_EXTENSIONS_H
