#include "searchpath/host/name_pattern.h"

#include "host/names/folded_name.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/utilities/filename_comparison.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>

namespace Corvane::PathManagement::host {

namespace {

using Ranges = std::vector<std::pair<char32_t, char32_t>>;

// In a name of ASCII, each byte is a character.
char32_t TakeCharacter(std::string_view text, std::size_t& at) {
  return static_cast<unsigned char>(text[at++]);
}

char32_t TakeCharacter(std::u16string_view text, std::size_t& at) {
  const char32_t unit = text[at++];
  const bool isPair =
      (unit & 0xFC00U) == 0xD800U && at < text.size() && (text[at] & 0xFC00U) == 0xDC00U;
  return isPair ? 0x10000U + ((unit & 0x3FFU) << 10U) + (text[at++] & 0x3FFU) : unit;
}

/// Takes a class, such as "[:alpha:]", off the beginning of `rest`; `nullopt` when there is none.
std::optional<Ranges> TakeClass(std::u16string_view& rest) {
  static const std::vector<std::pair<std::u16string_view, Ranges>> classes = {
      {u"[:alnum:]", {{U'0', U'9'}, {U'A', U'Z'}, {U'a', U'z'}}},
      {u"[:alpha:]", {{U'A', U'Z'}, {U'a', U'z'}}},
      {u"[:blank:]", {{U'\t', U'\t'}, {U' ', U' '}}},
      {u"[:cntrl:]", {{0, 0x1F}, {0x7F, 0x7F}}},
      {u"[:digit:]", {{U'0', U'9'}}},
      {u"[:graph:]", {{U'!', U'~'}}},
      {u"[:lower:]", {{U'a', U'z'}}},
      {u"[:print:]", {{U' ', U'~'}}},
      {u"[:punct:]", {{U'!', U'/'}, {U':', U'@'}, {U'[', U'`'}, {U'{', U'~'}}},
      {u"[:space:]", {{U'\t', U'\r'}, {U' ', U' '}}},
      {u"[:upper:]", {{U'A', U'Z'}}},
      {u"[:xdigit:]", {{U'0', U'9'}, {U'A', U'F'}, {U'a', U'f'}}}};
  const auto found = std::ranges::find_if(
      classes, [&](const auto& named) { return rest.starts_with(named.first); });
  if (found == classes.end()) return std::nullopt;
  rest.remove_prefix(found->first.size());
  return found->second;
}

/// Takes a character in brackets, and a backslash before it, off the beginning of `rest`; `nullopt`
/// at the end of the pattern.
std::optional<char32_t> TakeMember(std::u16string_view& rest) {
  std::size_t at = rest.starts_with(u'\\') ? 1 : 0;
  if (at >= rest.size()) return std::nullopt;
  const char32_t member = TakeCharacter(rest, at);
  rest.remove_prefix(at);
  return member;
}

/// Takes the ranges up to the "]", and the "]", off the beginning of `rest`; `nullopt` when there
/// is no "]". A "]" that comes first is a character.
std::optional<Ranges> TakeRanges(std::u16string_view& rest) {
  Ranges ranges;
  for (bool isFirst = true; isFirst || !rest.starts_with(u']'); isFirst = false) {
    if (const auto named = TakeClass(rest)) {
      ranges.insert(ranges.end(), named->begin(), named->end());
      continue;
    }
    const auto first = TakeMember(rest);
    if (!first) return std::nullopt;
    auto last = first;
    if (rest.size() > 1 && rest[0] == u'-' && rest[1] != u']') {
      rest.remove_prefix(1);
      last = TakeMember(rest);
      if (!last) return std::nullopt;
    }
    ranges.emplace_back(*first, *last);
  }
  rest.remove_prefix(1);
  return ranges;
}

}  // namespace

NamePattern::NamePattern(const AnyText& pattern, FilenameMatchingPolicy matchingPolicy)
    : ignoresCase(matchingPolicy == FilenameMatchingPolicy::IgnoreCase) {
  const ustring text = ignoresCase ? FoldFilename(pattern) : ustring(pattern);
  for (std::u16string_view rest = text; !rest.empty();) parts.push_back(TakePart(rest));
}

bool NamePattern::IsPattern(std::u16string_view text) noexcept {
  return text.find_first_of(u"*?[") != std::u16string_view::npos;
}

NamePattern::Part NamePattern::TakePart(std::u16string_view& rest) {
  if (rest.starts_with(u'[')) {
    const bool excludes = rest.size() > 1 && (rest[1] == u'!' || rest[1] == u'^');
    std::u16string_view fromRanges = rest.substr(excludes ? 2 : 1);
    if (auto ranges = TakeRanges(fromRanges)) {
      rest = fromRanges;
      return {excludes ? Kind::NoneOf : Kind::OneOf, std::move(*ranges)};
    }
  }
  std::size_t at = 0;
  char32_t character = TakeCharacter(rest, at);
  const bool isEscaped = character == U'\\' && at < rest.size();
  const bool isLoneBackslash = character == U'\\' && !isEscaped;
  if (isEscaped) character = TakeCharacter(rest, at);
  rest.remove_prefix(at);
  if (isLoneBackslash) return {};  // a part that no name matches
  if (!isEscaped && character == U'*') return {Kind::AnyCharacters};
  if (!isEscaped && character == U'?') return {Kind::AnyCharacter};
  return {Kind::Character, {{character, character}}};
}

bool NamePattern::Part::Accepts(char32_t character) const {
  if (kind == Kind::AnyCharacter) return true;
  if (kind == Kind::Nothing) return false;
  const bool isAmong = std::ranges::any_of(ranges, [&](const auto& range) {
    return range.first <= character && character <= range.second;
  });
  return isAmong == (kind != Kind::NoneOf);
}

/// When a match fails, only the last "*" reached takes one more character: whatever an earlier "*"
/// could take in addition, the last one can take as well.
template <class Text>
bool NamePattern::MatchText(const Text& name) const {
  std::size_t part = 0;
  std::size_t at = 0;
  std::optional<std::size_t> afterStar;  // the part after the last "*" reached
  std::size_t taken = 0;                 // where in the name the characters of that "*" end
  while (true) {
    if (part < parts.size() && parts[part].kind == Kind::AnyCharacters) {
      afterStar = ++part;
      taken = at;
      continue;
    }
    if (at == name.size() && part == parts.size()) return true;
    std::size_t next = at;
    if (at < name.size() && part < parts.size() && parts[part].Accepts(TakeCharacter(name, next))) {
      ++part;
      at = next;
      continue;
    }
    if (!afterStar || taken == name.size()) return false;
    static_cast<void>(TakeCharacter(name, taken));
    part = *afterStar;
    at = taken;
  }
}

bool NamePattern::Matches(std::string_view name) const {
  std::string buffer;
  if (ignoresCase) name = FoldName(name, buffer);
  const bool isAscii =
      std::ranges::all_of(name, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
  if (isAscii) return MatchText(name);
  return MatchText(std::u16string_view(TextFromBytes(name)));
}

}  // namespace Corvane::PathManagement::host
