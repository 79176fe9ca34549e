#ifndef SEARCHPATH_MODEL_SEARCH_TARGET_H
#define SEARCHPATH_MODEL_SEARCH_TARGET_H

#include "searchpath/model/ustring.h"

#include <utility>
#include <vector>

namespace Corvane::PathManagement::detail {

/// What a lookup searches for: exactly the given name, or the name with one of several extensions
/// appended. With extensions, the name alone does not match, and within one folder the earlier
/// extension wins. What a name with a pathname separator means is up to the path. Mostly it is a partial
/// pathname: its last part is the file, and the parts before it match the last folders of an entry's
/// location.
class SearchTarget {
 public:
  /// Searches for exactly `fileName`.
  explicit SearchTarget(ustring fileName) : name(std::move(fileName)) {}

  /// Searches for `fileName` with one of `extensionList` appended: extensions with their dot, the
  /// preferred one first.
  SearchTarget(ustring fileName, std::vector<ustring> extensionList)
      : name(std::move(fileName)), extensions(std::move(extensionList)) {}

  /// The name as it was given, without the extensions.
  [[nodiscard]] const ustring& GetName() const noexcept { return name; }

  /// Empty when exactly the name is searched for.
  [[nodiscard]] const std::vector<ustring>& GetExtensions() const noexcept { return extensions; }

 private:
  ustring name;
  std::vector<ustring> extensions;
};

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_MODEL_SEARCH_TARGET_H
