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

  // Not explicit: where a pathname is wanted, callers pass text.
  /// With `convertToNativeForm` the text is brought into the platform's own form, which is the
  /// identity here.
  path(const ustring& text, bool convertToNativeForm = true)
      : pathname((static_cast<void>(convertToNativeForm), text)) {}
  /// Precondition: `text` is not null.
  path(const char16_t* text) : pathname(text) {}
  /// Text in any other form that callers have, a `std::filesystem::path` among them.
  template <std::convertible_to<Corvane::PathManagement::AnyText> Text>
  path(const Text& text) : pathname(Corvane::PathManagement::AnyText(text)) {}

  /// The text that it was made of.
  [[nodiscard]] const ustring& native() const noexcept { return pathname; }

  [[nodiscard]] friend bool operator==(const path& left, const path& right) noexcept = default;

 private:
  ustring pathname;
};

/// An unused pathname in `folder`: `prefix`, 16 random hexadecimal digits, `suffix`. Nothing is
/// created, so create the file in a way that refuses one that exists by then.
///
/// Errors: `std::system_error` when no file can be called so.
[[nodiscard]] SEARCHPATH_EXPORT path tmpnam(const path& folder, const ustring& prefix,
                                            const ustring& suffix);

/// Gives the file `from` the name `to`, in one step also when it replaces another file.
/// Errors: `std::system_error`.
SEARCHPATH_EXPORT void rename(const path& from, const path& to);

/// Removes a file, a link or an empty folder; returns whether it has. Failing is no error.
SEARCHPATH_EXPORT bool remove(const path& pathname) noexcept;

/// Reads the bytes of a regular file. Nothing else opens, so that no read waits for a FIFO or goes
/// on for ever. As with `std::ifstream`, `failbit` says that it did not open.
class SEARCHPATH_EXPORT ifstream : public std::istream {
 public:
  /// Opens the file.
  explicit ifstream(const path& pathname);
  ifstream(const ifstream&) = delete;
  ifstream& operator=(const ifstream&) = delete;
  ~ifstream() override;

  /// Whether it did open.
  [[nodiscard]] bool is_open() const noexcept { return buffer->is_open(); }

  /// Why the file did not open.
  [[nodiscard]] const std::error_code& openError() const noexcept { return error; }

 private:
  std::error_code error;
  std::unique_ptr<std::filebuf> buffer;  // never null
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

/// `pathname` without its last component and the separators before that: "a" of "a/b" and of
/// "a//b"; the root of what stands directly below it, and of itself; "" of a bare name, meaning the
/// working folder.
[[nodiscard]] SEARCHPATH_EXPORT ustring extract_parent_path(const path& pathname);

/// From the last dot of the last component, the dot included: ".x" of "a/fn.x", "." of "fn.", "" of
/// "fn" and of ".profile".
[[nodiscard]] SEARCHPATH_EXPORT ustring extract_extension(const path& pathname);

}  // namespace detail

}  // namespace fl::filesystem

#endif  // SEARCHPATH_PLATFORM_FILESYSTEM_H
