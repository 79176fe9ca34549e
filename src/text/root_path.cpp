#include "text/root_path.h"

#include <stdexcept>

namespace Corvane::PathManagement::detail {

ustring EraseRoot(ustring text, const ustring& root) {
  const std::size_t position = text.find(root);
  // Thrown here, since the text of the error that `erase` would raise differs between libraries.
  if (position == ustring::npos) throw std::out_of_range("invalid string position");
  text.erase(position, position + root.size());
  return text;
}

}  // namespace Corvane::PathManagement::detail
