#include "searchpath/platform/filesystem.h"

#include "searchpath/model/constants.h"
#include "searchpath/platform/iri_text.h"

#include <cstddef>

namespace fl::filesystem::detail {

using Corvane::PathManagement::Constants;

ustring make_native_form(const ustring& text, bool /*expand*/) { return text; }

bool is_absolute_path_when_expanded(const ustring& text, bool expand) {
  return text.starts_with(u'/') || (expand && text.starts_with(u'~')) ||
         foundation::storage::vfs::hasIRIPrefix(text);
}

ustring extract_root_path(const path& pathname) {
  const ustring& text = pathname.native();
  const auto rootEnd = text.find_first_not_of(Constants::PathnameSeparatorStr);
  return text.substr(0, rootEnd);
}

ustring extract_extension(const path& pathname) {
  const ustring& text = pathname.native();
  const auto lastSeparator = text.find_last_of(Constants::PathnameSeparatorStr);
  const std::size_t nameBegin = lastSeparator == ustring::npos ? 0 : lastSeparator + 1;
  const auto dot = text.rfind(u'.');
  // A dot that leads the name hides the file; it begins no extension.
  return dot == ustring::npos || dot <= nameBegin ? ustring() : text.substr(dot);
}

}  // namespace fl::filesystem::detail
