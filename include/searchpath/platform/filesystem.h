#ifndef SEARCHPATH_PLATFORM_FILESYSTEM_H
#define SEARCHPATH_PLATFORM_FILESYSTEM_H

#include "searchpath/export.h"
#include "searchpath/model/ustring.h"

#include <string>
#include <utility>

namespace fl::filesystem {

using foundation::ustring;

/// A pathname of the file system, as text. Two spellings of one file are two paths.
class path {
 public:
  path() = default;

  // Not explicit: a pathname is written as text wherever one is wanted.
  /// With `convertToNativeForm` the text is brought into the platform's own form, which is the
  /// identity here.
  path(const ustring& text, bool convertToNativeForm = true)
      : pathname((static_cast<void>(convertToNativeForm), text)) {}
  path(const char16_t* text) : pathname(text) {}

  [[nodiscard]] const ustring& native() const noexcept { return pathname; }

  [[nodiscard]] friend bool operator==(const path& left, const path& right) noexcept = default;

 private:
  ustring pathname;
};

namespace detail {

/// `text` in the platform's own form: the identity here, with or without `expand`.
[[nodiscard]] SEARCHPATH_EXPORT ustring make_native_form(const ustring& text, bool expand);

/// Whether `text` names one place wherever it is used: it begins with "/", carries an IRI prefix,
/// or, when `expand` is set, begins with "~".
[[nodiscard]] SEARCHPATH_EXPORT bool is_absolute_path_when_expanded(const ustring& text,
                                                                    bool expand);

/// The leading run of separators; "" for a relative path.
[[nodiscard]] SEARCHPATH_EXPORT ustring extract_root_path(const path& pathname);

/// From the last dot of the last component, the dot included: ".x" of "a/fn.x", "." of "fn.", "" of
/// "fn" and of ".profile".
[[nodiscard]] SEARCHPATH_EXPORT ustring extract_extension(const path& pathname);

}  // namespace detail

}  // namespace fl::filesystem

#endif  // SEARCHPATH_PLATFORM_FILESYSTEM_H
