#ifndef SEARCHPATH_SRC_JSON_JSON_FIELD_H
#define SEARCHPATH_SRC_JSON_JSON_FIELD_H

#include "json/located_json.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace Corvane::PathManagement::json {

/// A value of a JSON text, and its name in messages.
///
/// Ownership: refers to the value.
/// Errors: `JsonException` when the value is not what an operation expects.
struct Field {
  const LocatedJson& value;
  ustring name;

  [[noreturn]] void Refuse(JsonFault fault, ustring detail = {}) const {
    throw JsonException(fault, value.line, name, std::move(detail));
  }

  /// The content; `expected` is its type in words, for the message about a value of another type.
  template <class Content>
  [[nodiscard]] const Content& As(const char16_t* expected) const {
    const auto* content = std::get_if<Content>(&value.content);
    if (content == nullptr) Refuse(JsonFault::WrongType, expected);
    return *content;
  }
  [[nodiscard]] bool AsTruth() const { return As<bool>(u"true or false"); }
  /// The text; "" is refused.
  [[nodiscard]] const ustring& AsText() const {
    const auto& text = As<ustring>(u"a text");
    if (text.empty()) Refuse(JsonFault::WrongType, u"a text that is not empty");
    return text;
  }
  [[nodiscard]] int AsInt() const {
    const auto number = As<std::int64_t>(u"an integer");
    if (!std::in_range<int>(number)) Refuse(JsonFault::OutOfRange);
    return static_cast<int>(number);
  }
  [[nodiscard]] std::vector<Field> GetElements() const {
    const auto& array = As<LocatedJson::Array>(u"a list");
    std::vector<Field> elements;
    elements.reserve(array.size());
    for (std::size_t i = 0; i < array.size(); ++i) {
      elements.push_back({array[i], FieldBelow(name, i)});
    }
    return elements;
  }
  /// The member called `key`; nullopt when there is none.
  [[nodiscard]] std::optional<Field> Find(const ustring& key) const {
    for (const JsonMember& member : As<LocatedJson::Object>(u"an object")) {
      if (member.name == key) return Field{member.value, FieldBelow(name, key)};
    }
    return std::nullopt;
  }
  /// The member called `key`, which has to be there.
  [[nodiscard]] Field Get(const ustring& key) const {
    if (const auto found = Find(key)) return *found;
    throw JsonException(JsonFault::MissingField, value.line, FieldBelow(name, key));
  }
  /// Refuses an object with a member whose name is not one of `known`.
  void CheckMembers(std::initializer_list<std::u16string_view> known) const {
    for (const JsonMember& member : As<LocatedJson::Object>(u"an object")) {
      if (std::ranges::find(known, member.name) != known.end()) continue;
      throw JsonException(JsonFault::UnknownField, member.value.line,
                          FieldBelow(name, member.name));
    }
  }
};

}  // namespace Corvane::PathManagement::json

#endif  // SEARCHPATH_SRC_JSON_JSON_FIELD_H
