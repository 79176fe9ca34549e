#ifndef SEARCHPATH_MODEL_PATH_ITEM_H
#define SEARCHPATH_MODEL_PATH_ITEM_H

#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/ustring.h"

#include <memory>
#include <utility>
#include <vector>

namespace Corvane::PathManagement {

/// A file in a folder of the path: where the folder is, and the file's name in two parts.
///
/// Threads: immutable.
class PathItem {
 public:
  /// `fileExtension` begins with its dot or is empty; `baseName` and `fileExtension` joined are the
  /// file's name in `folder`.
  PathItem(AbsoluteIRI folder, ustring baseName, ustring fileExtension)
      : location(std::move(folder)),
        name(std::move(baseName)),
        extension(std::move(fileExtension)) {}

  /// The folder that holds the item.
  [[nodiscard]] const AbsoluteIRI& GetLocation() const noexcept { return location; }
  /// The file's name without its extension: "fn" of "fn.x".
  [[nodiscard]] const ustring& GetName() const noexcept { return name; }
  /// The extension with its dot, ".x" of "fn.x"; empty when there is none.
  [[nodiscard]] const ustring& GetExtension() const noexcept { return extension; }

 private:
  AbsoluteIRI location;
  ustring name;
  ustring extension;
};

/// Files, in the order that the function which returns them documents. Never holds a null pointer.
using PathItems = std::vector<std::shared_ptr<const PathItem>>;

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_MODEL_PATH_ITEM_H
