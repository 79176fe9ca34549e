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

/// A text that callers hand over as they have it: UTF-16, the bytes of a name (`TextFromBytes`), or a
/// `std::filesystem::path`. It is a `ustring` and nothing more; no byte is lost on the way.
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
  /// Of a `std::filesystem::path`, whose header is slow to compile and not needed here.
  template <class Path>
    requires requires(const Path& path) {
      { path.native() } -> std::same_as<const std::string&>;
    }
  explicit(false) AnyText(const Path& path) : ustring(TextFromBytes(path.native())) {}
};

/// Several such texts, from any container of them.
class AnyTexts : public std::vector<ustring> {
 public:
  AnyTexts() = default;
  /// Texts as they are.
  explicit(false) AnyTexts(std::vector<ustring> texts) noexcept
      : std::vector<ustring>(std::move(texts)) {}
  /// Texts of any form, each of its own.
  explicit(false) AnyTexts(std::initializer_list<AnyText> texts)
      : std::vector<ustring>(texts.begin(), texts.end()) {}
  /// A path is a range of its parts as well: one text is never taken for several.
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
