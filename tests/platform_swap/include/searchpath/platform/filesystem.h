#ifndef SEARCHPATH_PLATFORM_FILESYSTEM_H
#define SEARCHPATH_PLATFORM_FILESYSTEM_H

#include "searchpath/model/ustring.h"

#include <map>
#include <sstream>

namespace fl::filesystem {

using foundation::ustring;

/// A pathname whose own form has "/" where users may write "\".
class path {
 public:
  path() = default;
  path(const ustring& text, bool convertToNativeForm = true);
  path(const char16_t* text) : path(ustring(text)) {}

  const ustring& native() const { return pathname; }

 private:
  ustring pathname;
};

/// All the files that there are, by their pathnames.
extern std::map<ustring, std::string> files;

struct ifstream : std::istringstream {
  explicit ifstream(const path& pathname);
  bool is_open() const { return !fail(); }
};

namespace detail {

ustring make_native_form(const ustring& text, bool expand);
bool is_absolute_path_when_expanded(const ustring& text, bool expand);
ustring extract_root_path(const path& pathname);
ustring extract_parent_path(const path& pathname);
ustring extract_extension(const path& pathname);

}  // namespace detail

}  // namespace fl::filesystem

#endif  // SEARCHPATH_PLATFORM_FILESYSTEM_H
