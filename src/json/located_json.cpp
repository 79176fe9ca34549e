#include "json/located_json.h"

#include "model/quoted_text.h"
#include "searchpath/model/byte_text.h"

#include <nlohmann/json.hpp>
#include <unicode/utf8.h>

#include <algorithm>
#include <iterator>
#include <string>

namespace Corvane::PathManagement::json {

namespace {

constexpr std::size_t kMostLevels = 32;  // as the words for `JsonFault::TooDeep` say

/// Counts the lines of a text while it is parsed: the parser does not report the line of a value.
class Lines {
 public:
  explicit Lines(std::string_view bytes) : text(bytes) {}

  /// The line of the token that has just been read. The last byte read does not count: the parser
  /// reads the byte after a number, too, which may be a line break.
  std::size_t GetLine() {
    const std::size_t end = std::max<std::size_t>(bytesRead, 1) - 1;
    const auto from = text.begin() + static_cast<std::ptrdiff_t>(counted);
    const auto to = text.begin() + static_cast<std::ptrdiff_t>(end);
    line += static_cast<std::size_t>(std::count(from, to, '\n'));
    counted = end;
    return line;
  }

  /// An iterator over the text that keeps `bytesRead` up to date.
  class Iterator {
   public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    Iterator(Lines& of, std::size_t from) : lines(&of), at(from) {}
    reference operator*() const { return lines->text[at]; }
    Iterator& operator++() {
      lines->bytesRead = ++at;
      return *this;
    }
    friend bool operator==(const Iterator& left, const Iterator& right) {
      return left.at == right.at;
    }

   private:
    Lines* lines;
    std::size_t at;
  };
  Iterator Begin() { return {*this, 0}; }
  Iterator End() { return {*this, text.size()}; }

 private:
  std::string_view text;
  std::size_t bytesRead = 0;  // by the parser
  std::size_t counted = 0;    // how many bytes have their line breaks counted in `line`
  std::size_t line = 1;
};

/// Builds the tree from the events of the parser, which prescribes the names of the handlers and
/// goes on while they return true.
class TreeBuilder {
 public:
  TreeBuilder(Lines& textLines, std::size_t most) : lines(textLines), mostValues(most) {}

  bool null() { return Add(nullptr); }
  bool boolean(bool value) { return Add(value); }
  bool number_integer(std::int64_t value) { return Add(value); }
  bool number_unsigned(std::uint64_t value) {
    if (!std::in_range<std::int64_t>(value)) Fail(JsonFault::OutOfRange);
    return Add(static_cast<std::int64_t>(value));
  }
  bool number_float(double value, const std::string& digits) {
    // An integer too large for 64 bits also comes as a double, and would lose digits. It is not
    // recognised by the missing decimal point, since `digits` has that of the locale.
    const bool isInteger = digits.find_first_not_of("-0123456789") == std::string::npos;
    if (isInteger) Fail(JsonFault::OutOfRange);
    return Add(value);
  }
  bool string(const std::string& value) { return Add(TextFromBytes(value)); }
  // Never called: JSON has no binary values.
  static bool binary(const nlohmann::json::binary_t& /*value*/) { return false; }
  bool start_object(std::size_t /*unknownSize*/) { return Open(LocatedJson::Object()); }
  bool start_array(std::size_t /*unknownSize*/) { return Open(LocatedJson::Array()); }
  bool key(const std::string& name) {
    // Added before its value is known, so that a message about the value can name the field.
    Members().push_back({TextFromBytes(name), {lines.GetLine(), nullptr}});
    return true;
  }
  bool end_object();
  bool end_array() {
    open.pop_back();
    return true;
  }
  [[noreturn]] bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                                const nlohmann::json::exception& error) {
    constexpr int kNumberOverflow = 406;  // as the parser numbers its errors
    if (error.id == kNumberOverflow) Fail(JsonFault::OutOfRange);
    throw JsonException(JsonFault::Syntax, lines.GetLine(), /*itsField=*/{});
  }

  LocatedJson TakeRoot() { return std::move(root); }

 private:
  [[nodiscard]] LocatedJson::Object& Members() const {
    return std::get<LocatedJson::Object>(open.back()->content);
  }
  /// The name, for messages, of the value that was added last.
  [[nodiscard]] ustring Field() const;
  [[noreturn]] void Fail(JsonFault fault) {
    MakeRoom();  // so that `Field` names this value if it is an element of an array
    throw JsonException(fault, lines.GetLine(), Field());
  }

  /// Where the next value belongs: in the innermost open container, or at the root.
  LocatedJson& MakeRoom();
  template <class Content>
  bool Add(Content content) {
    if (++values > mostValues) {  // the fault of the whole text, not of a line
      throw JsonException(JsonFault::TooManyValues, /*itsLine=*/{}, /*itsField=*/{});
    }
    MakeRoom() = {lines.GetLine(), std::move(content)};
    return true;
  }
  template <class Content>
  bool Open(Content content) {
    if (open.size() == kMostLevels) Fail(JsonFault::TooDeep);
    Add(std::move(content));
    open.push_back(open.empty() ? &root : LastBelow(*open.back()));
    return true;
  }
  /// The last element or member of the container `above`.
  static LocatedJson* LastBelow(LocatedJson& above) {
    if (auto* array = std::get_if<LocatedJson::Array>(&above.content)) return &array->back();
    return &std::get<LocatedJson::Object>(above.content).back().value;
  }

  Lines& lines;
  LocatedJson root = {1, nullptr};
  // The open containers, each in the one before it, which gets no other values meanwhile: so the
  // pointers stay valid.
  std::vector<LocatedJson*> open;
  std::size_t values = 0;  // added so far
  std::size_t mostValues;
};

LocatedJson& TreeBuilder::MakeRoom() {
  if (open.empty()) return root;
  if (auto* array = std::get_if<LocatedJson::Array>(&open.back()->content)) {
    return array->emplace_back(LocatedJson{1, nullptr});
  }
  return Members().back().value;
}

ustring TreeBuilder::Field() const {
  ustring field;
  for (const LocatedJson* container : open) {
    if (const auto* array = std::get_if<LocatedJson::Array>(&container->content)) {
      field = FieldBelow(field, array->size() - 1);
    } else {
      field = FieldBelow(field, std::get<LocatedJson::Object>(container->content).back().name);
    }
  }
  return field;
}

bool TreeBuilder::end_object() {
  const LocatedJson::Object& members = Members();
  std::vector<const JsonMember*> byName;
  byName.reserve(members.size());
  for (const JsonMember& member : members) byName.push_back(&member);
  const auto name = [](const JsonMember* member) -> const ustring& { return member->name; };
  std::ranges::stable_sort(byName, {}, name);
  const auto same = std::ranges::adjacent_find(byName, {}, name);
  open.pop_back();  // so that `Field` names this object
  if (same == byName.end()) return true;
  const JsonMember& second = **(same + 1);  // later in the text, since the sort is stable
  throw JsonException(JsonFault::RepeatedField, second.value.line,
                      FieldBelow(Field(), second.name));
}

/// Throws where `bytes` are not UTF-8. The parser would report that as an error of syntax.
void CheckUtf8(std::string_view bytes) {
  const auto* units = reinterpret_cast<const std::uint8_t*>(bytes.data());
  for (std::size_t at = 0; at < bytes.size();) {
    const std::size_t begin = at;
    UChar32 codePoint = 0;
    U8_NEXT(units, at, bytes.size(), codePoint);
    if (codePoint >= 0) continue;
    const auto line = 1 + std::ranges::count(bytes.substr(0, begin), '\n');
    throw JsonException(JsonFault::NotUtf8, static_cast<std::size_t>(line), /*itsField=*/{});
  }
}

bool IsWord(const ustring& name) {
  constexpr std::size_t kLongest = 60;
  return !name.empty() && name.size() <= kLongest && std::ranges::all_of(name, [](char16_t unit) {
    return (unit >= u'0' && unit <= u'9') || (unit >= u'A' && unit <= u'Z') ||
           (unit >= u'a' && unit <= u'z') || unit == u'_' || unit == u'-';
  });
}

}  // namespace

ustring FieldBelow(const ustring& object, const ustring& name) {
  // Names that are no words are quoted, lest they be taken for a part of the message. This also
  // shortens long names.
  return object + (object.empty() ? u"" : u".") +
         (IsWord(name) ? name : TextFromBytes(PathManagement::detail::QuotedText(name)));
}

ustring FieldBelow(const ustring& array, std::size_t index) {
  return array + u'[' + TextFromBytes(std::to_string(index)) + u']';
}

LocatedJson ParseJson(std::string_view bytes, std::size_t mostValues) {
  CheckUtf8(bytes);
  Lines lines(bytes);
  TreeBuilder builder(lines, mostValues);
  // The result does not matter: the builder throws on errors.
  static_cast<void>(nlohmann::json::sax_parse(lines.Begin(), lines.End(), &builder));
  return builder.TakeRoot();
}

}  // namespace Corvane::PathManagement::json
