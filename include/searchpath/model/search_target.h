#ifndef SEARCHPATH_MODEL_SEARCH_TARGET_H
#define SEARCHPATH_MODEL_SEARCH_TARGET_H

#include "searchpath/model/ustring.h"

#include <utility>
#include <vector>

namespace Corvane::PathManagement::detail {

/// What a lookup searches for: a name as it stands, or a name with one of several extensions. With
/// extensions, the bare name alone does not match; within one folder the earlier extension wins. A
/// name that holds a pathname separator is a partial pathname: its last part is the file, the parts
/// before it match the trailing folders of an entry.
class SearchTarget {
 public:
  /// A name that is searched as it stands.
  explicit SearchTarget(ustring fileName) : name(std::move(fileName)) {}

  /// `extensionList` holds extensions with their dot, the preferred one first.
  SearchTarget(ustring fileName, std::vector<ustring> extensionList)
      : name(std::move(fileName)), extensions(std::move(extensionList)) {}

  /// The name as it was asked.
  [[nodiscard]] const ustring& GetName() const noexcept { return name; }

  /// Empty when the name is searched as it stands.
  [[nodiscard]] const std::vector<ustring>& GetExtensions() const noexcept { return extensions; }

 private:
  ustring name;
  std::vector<ustring> extensions;
};

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_MODEL_SEARCH_TARGET_H
