#ifndef SEARCHPATH_SRC_TEXT_ITEM_OF_FILE_H
#define SEARCHPATH_SRC_TEXT_ITEM_OF_FILE_H

#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/path_item.h"
#include "searchpath/model/ustring.h"
#include "searchpath/platform/filesystem.h"

#include <utility>

namespace Corvane::PathManagement::detail {

/// The item for a file that is called `name` in `folder`.
[[nodiscard]] inline PathItem ItemOfFile(AbsoluteIRI folder, ustring name) {
  ustring extension = fl::filesystem::detail::extract_extension(name);
  name.resize(name.size() - extension.size());
  return {std::move(folder), std::move(name), std::move(extension)};
}

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_TEXT_ITEM_OF_FILE_H
