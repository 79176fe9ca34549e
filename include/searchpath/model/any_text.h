#ifndef SEARCHPATH_MODEL_ANY_TEXT_H
#define SEARCHPATH_MODEL_ANY_TEXT_H

#include "searchpath/model/byte_text.h"
#include "searchpath/model/ustring.h"

#include <concepts>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Corvane::PathManagement {

/// A parameter type for text that callers have in any form: UTF-16, the bytes of a name
/// (`TextFromBytes`), or a `std::filesystem::path`. It is a `ustring` and nothing more; no byte is
/// lost in the conversion.
///
/// Precondition: a pointer is not null.
class AnyText : public ustring {
 public:
  AnyText() = default;
  /// UTF-16, as it is.
  explicit(false) AnyText(ustring text) noexcept : ustring(std::move(text)) {}
  /// UTF-16 up to its NUL.
  explicit(false) AnyText(const char16_t* text) : ustring(text) {}
  /// UTF-16, which may hold NUL.
  explicit(false) AnyText(std::u16string_view text) : ustring(text) {}
  /// Bytes, see `TextFromBytes`.
  explicit(false) AnyText(std::string_view bytes) : ustring(TextFromBytes(bytes)) {}
  /// Bytes, which may hold NUL.
  explicit(false) AnyText(const std::string& bytes) : ustring(TextFromBytes(bytes)) {}
  /// Bytes up to their NUL.
  explicit(false) AnyText(const char* bytes) : ustring(TextFromBytes(bytes)) {}
  /// Bytes of a `std::filesystem::path`. A template, since `<filesystem>` is slow to compile.
  template <class Path>
    requires requires(const Path& path) {
      { path.native() } -> std::same_as<const std::string&>;
    }
  explicit(false) AnyText(const Path& path) : ustring(TextFromBytes(path.native())) {}
};

/// A list of texts, made from any container of what converts to `AnyText`.
class AnyTexts : public std::vector<ustring> {
 public:
  AnyTexts() = default;
  /// Texts as they are.
  explicit(false) AnyTexts(std::vector<ustring> texts) noexcept
      : std::vector<ustring>(std::move(texts)) {}
  /// Texts, each of which may have another form.
  explicit(false) AnyTexts(std::initializer_list<AnyText> texts)
      : std::vector<ustring>(texts.begin(), texts.end()) {}
  /// The texts of any other container. What converts to one `AnyText` is not taken for a container:
  /// a `std::filesystem::path` is also a range of its parts.
  template <class Range>
    requires(!std::convertible_to<const Range&, AnyText>) && requires(const Range& range) {
      { *range.begin() } -> std::convertible_to<AnyText>;
      range.end();
    }
  explicit(false) AnyTexts(const Range& range) {
    for (const auto& text : range) push_back(AnyText(text));
  }
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_MODEL_ANY_TEXT_H
