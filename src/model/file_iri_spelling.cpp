#include "model/file_iri_spelling.h"

#include "model/path_components.h"
#include "model/percent_escapes.h"
#include "model/storage_exceptions.h"
#include "model/text_units.h"
#include "searchpath/model/byte_text.h"

#include <unicode/utf16.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace foundation::storage::vfs::detail {

namespace {

using Corvane::PathManagement::detail::ByteForUnit;
using Corvane::PathManagement::detail::IsByteAt;

constexpr std::u16string_view kAlwaysEscaped = u" \"#%<>?[]\\^`{|}\x7F";

constexpr auto kIsEscaped = [] {
  std::array<bool, 0x80> isEscaped = {};
  for (std::size_t control = 0; control < 0x20; ++control) isEscaped[control] = true;
  for (const char16_t unit : kAlwaysEscaped) isEscaped[unit] = true;
  return isEscaped;
}();

bool IsEscaped(char16_t unit) { return unit < kIsEscaped.size() && kIsEscaped[unit]; }

bool IsSurrogate(char16_t unit) { return U16_IS_SURROGATE(unit); }

/// A quick test that most paths pass. True only when `path` is spelled already; false also for some
/// such paths.
bool IsSpelled(std::u16string_view path) {
  char16_t before = 0;
  for (const char16_t unit : path) {
    if (IsEscaped(unit) || IsSurrogate(unit)) return false;
    if (before == u'/' && (unit == u'/' || unit == u'.')) return false;
    before = unit;
  }
  return before != u'/' || path.size() == 1;
}

/// `text`, with each character whose UTF-8 is given as units for bytes (see `TextFromBytes`) in
/// place of these units. Throws for a NUL and for other lone surrogates. Errors name `whole`, of
/// which `text` is a part.
ustring WithBytesJoined(std::u16string_view text, std::u16string_view whole) {
  if (text.find(u'\0') != text.npos) throw InvalidIRI("a NUL names no file", whole);
  if (std::ranges::none_of(text, IsSurrogate)) return ustring(text);
  const auto bytes = Corvane::PathManagement::BytesFromText(text);
  if (!bytes) throw InvalidIRI("a lone surrogate names no file", whole);
  return Corvane::PathManagement::TextFromBytes(*bytes);
}

void AppendSpelled(ustring& spelled, std::u16string_view component) {
  for (std::size_t at = 0; at < component.size(); ++at) {
    const char16_t unit = component[at];
    if (IsByteAt(component, at)) {
      AppendEscape(spelled, static_cast<std::uint8_t>(ByteForUnit(unit)));
    } else if (IsEscaped(unit)) {
      AppendEscape(spelled, static_cast<std::uint8_t>(unit));
    } else {
      spelled.push_back(unit);
    }
  }
}

/// Throws for escapes that a "file" path must not have. Errors name `whole`.
void CheckEscapes(std::u16string_view path, StrayPercent strayPercent, std::u16string_view whole) {
  for (std::size_t at = path.find(u'%'); at != path.npos; at = path.find(u'%', at + 1)) {
    const auto byte = EscapeAt(path, at);
    if (!byte && strayPercent == StrayPercent::Invalid) {
      throw InvalidIRI("\"%\" begins no escape", whole, "write \"%25\" for a literal \"%\"");
    }
    if (byte == std::uint8_t{'/'} || byte == std::uint8_t{0}) {
      throw InvalidIRI("an escaped separator or NUL names no file", whole);
    }
  }
}

/// Whether `authority` is empty or "localhost" in any case.
bool IsThisMachine(std::u16string_view authority) {
  constexpr std::u16string_view localHost = u"localhost";
  return authority.empty() || std::equal(authority.begin(), authority.end(), localHost.begin(),
                                         localHost.end(), [](char16_t given, char16_t expected) {
                                           return given == expected ||
                                                  (given < 0x80 && (given | 0x20) == expected);
                                         });
}

/// The path of a "file" IRI as it is written there; "/" when there is none.
std::u16string_view PathOfFileIRI(std::u16string_view iriText) {
  std::u16string_view path = iriText.substr(std::u16string_view(u"file:").size());
  if (path.starts_with(u"//")) {
    path.remove_prefix(2);
    const std::u16string_view authority = path.substr(0, path.find(u'/'));
    if (!IsThisMachine(authority)) {
      throw InvalidIRI("a \"file\" IRI names no other machine", iriText,
                       "write three slashes: \"file:///folder\"");
    }
    path.remove_prefix(authority.size());
    if (path.empty()) return u"/";
  }
  if (!path.starts_with(u'/')) {
    throw InvalidIRI("the path of a \"file\" IRI begins with \"/\"", iriText);
  }
  return path;
}

}  // namespace

ustring SpellNativePath(std::u16string_view nativePath) {
  if (IsSpelled(nativePath)) return ustring(nativePath);
  const ustring joined = WithBytesJoined(nativePath, nativePath);
  ustring spelled;
  spelled.reserve(joined.size() + 16);  // room for some escapes
  std::u16string_view rest = joined;
  for (auto component = TakeComponent(rest); !component.empty(); component = TakeComponent(rest)) {
    if (component == u".") continue;
    spelled.push_back(u'/');
    AppendSpelled(spelled, component);
  }
  return spelled.empty() ? ustring(u"/") : spelled;
}

ustring SpellPathOfFileIRI(std::u16string_view iriText, StrayPercent strayPercent) {
  const std::u16string_view path = PathOfFileIRI(iriText);
  if (IsSpelled(path)) return ustring(path);
  CheckEscapes(path, strayPercent, iriText);
  // Lone surrogates must be refused before escapes are decoded: a lead surrogate and the unit for
  // an escaped byte after it would then form a valid pair.
  const ustring joined = WithBytesJoined(path, iriText);
  return SpellNativePath(DecodeEscapes(joined, Undecodable::AsByte));
}

ustring WithoutDotSegments(std::u16string_view path) {
  ustring plain;
  for (auto component = TakeComponent(path); !component.empty(); component = TakeComponent(path)) {
    if (component == u"..") {
      plain.resize(std::min(plain.rfind(u'/'), plain.size()));  // at the root it stays ""
    } else {
      plain.append(u"/").append(component);
    }
  }
  return plain.empty() ? ustring(u"/") : plain;
}

}  // namespace foundation::storage::vfs::detail
