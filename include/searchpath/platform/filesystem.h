#ifndef SEARCHPATH_PLATFORM_FILESYSTEM_H
#define SEARCHPATH_PLATFORM_FILESYSTEM_H

#include "searchpath/export.h"
#include "searchpath/model/any_text.h"
#include "searchpath/model/ustring.h"

#include <concepts>
#include <fstream>
#include <istream>
#include <memory>
#include <system_error>

namespace fl::filesystem {

using foundation::ustring;

/// A pathname of the file system, as text. Two spellings of one file are two paths.
class path {
 public:
  path() = default;

  // Not explicit: callers pass text where a pathname is wanted.
  /// `convertToNativeForm` asks for the platform's own form of `text`, which here is `text` itself.
  path(const ustring& text, [[maybe_unused]] bool convertToNativeForm = true) : pathname(text) {}
  /// Precondition: `text` is not null.
  path(const char16_t* text) : pathname(text) {}
  /// Text in any other form that callers have, a `std::filesystem::path` among them.
  template <std::convertible_to<Corvane::PathManagement::AnyText> Text>
  path(const Text& text) : pathname(Corvane::PathManagement::AnyText(text)) {}

  /// The text that the path was made from.
  [[nodiscard]] const ustring& native() const noexcept { return pathname; }

  [[nodiscard]] friend bool operator==(const path& left, const path& right) noexcept = default;

 private:
  ustring pathname;
};

/// An unused pathname in `folder`: `prefix`, 16 random hexadecimal digits, `suffix`. Creates
/// nothing: another process may take the name first, so create the file exclusively.
///
/// Errors: `std::system_error` when no file can have that name.
[[nodiscard]] SEARCHPATH_EXPORT path tmpnam(const path& folder, const ustring& prefix,
                                            const ustring& suffix);

/// Gives the file `from` the name `to`, in one step even when that replaces another file.
/// Errors: `std::system_error`.
SEARCHPATH_EXPORT void rename(const path& from, const path& to);

/// Removes a file, a link or an empty folder. Returns whether it succeeded, and never raises.
SEARCHPATH_EXPORT bool remove(const path& pathname) noexcept;

/// Reads the bytes of a regular file. It opens nothing else: reading a FIFO could wait, and reading
/// a device could go on, for ever. As with `std::ifstream`, `failbit` is set when it did not open.
class SEARCHPATH_EXPORT ifstream : public std::istream {
 public:
  /// Opens the file `pathname`.
  explicit ifstream(const path& pathname);
  ifstream(const ifstream&) = delete;
  ifstream& operator=(const ifstream&) = delete;
  ~ifstream() override;

  /// Whether the file did open.
  [[nodiscard]] bool is_open() const noexcept { return buffer->is_open(); }

  /// Why the file did not open; no error when it did.
  [[nodiscard]] const std::error_code& openError() const noexcept { return error; }

 private:
  std::error_code error;
  std::unique_ptr<std::filebuf> buffer;  // never null
};

namespace detail {

/// `text` in the platform's own form, which here is `text` itself, whatever `expand` is.
[[nodiscard]] SEARCHPATH_EXPORT ustring make_native_form(const ustring& text, bool expand);

/// Whether `text` names one place in whatever working folder it is used: it begins with "/", with
/// an IRI prefix or, when `expand` is set, with "~".
[[nodiscard]] SEARCHPATH_EXPORT bool is_absolute_path_when_expanded(const ustring& text,
                                                                    bool expand);

/// The leading run of separators; "" for a relative path.
[[nodiscard]] SEARCHPATH_EXPORT ustring extract_root_path(const path& pathname);

/// `pathname` without its last component and the separators before that: "a" of "a/b" and of
/// "a//b", "/" of "/a" and of "/". For a bare name it is "", which means the working folder.
[[nodiscard]] SEARCHPATH_EXPORT ustring extract_parent_path(const path& pathname);

/// The last component from its last dot on, the dot included: ".x" of "a/fn.x", "." of "fn.", "" of
/// "fn" and of ".profile".
[[nodiscard]] SEARCHPATH_EXPORT ustring extract_extension(const path& pathname);

}  // namespace detail

}  // namespace fl::filesystem

#endif  // SEARCHPATH_PLATFORM_FILESYSTEM_H
