#include "model/generic_iri_syntax.h"

#include "model/percent_escapes.h"
#include "model/storage_exceptions.h"
#include "model/text_units.h"
#include "searchpath/model/byte_text.h"

#include <uriparser/Uri.h>

#include <algorithm>
#include <cstdint>
#include <new>
#include <string>

namespace foundation::storage::vfs::detail {

namespace {

using Corvane::PathManagement::detail::IsByteAt;

// The parser recurses; longer texts could overflow a small stack.
constexpr std::size_t kLongestIRI = 64UL * 1024;  // in bytes

constexpr std::u16string_view kNeverLiteral = u" \"<>\\^`{|}\x7F";

// Put before a path that begins with "//" in an IRI without an authority: else "ab:/.//c" would
// become "ab://c", in which "c" is the authority.
constexpr std::u16string_view kNoAuthorityMark = u"/.";

constexpr bool IsAlpha(char16_t unit) {
  return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

constexpr bool IsSchemeUnit(char16_t unit) {
  return IsAlpha(unit) || (unit >= u'0' && unit <= u'9') || unit == u'+' || unit == u'-' ||
         unit == u'.';
}

/// Where the authority ends, or `afterScheme` when there is none. Only in the authority may
/// brackets be literal.
std::size_t AuthorityEnd(std::u16string_view text, std::size_t afterScheme) {
  if (!text.substr(afterScheme).starts_with(u"//")) return afterScheme;
  return std::min(text.find_first_of(u"/?#", afterScheme + 2), text.size());
}

/// `text` with every character escaped that no IRI may hold. Characters beyond ASCII are kept.
ustring WithIllegalEscaped(std::u16string_view text) {
  const auto bytes = Corvane::PathManagement::BytesFromText(text);
  if (!bytes || text.find(u'\0') != text.npos) {
    throw InvalidIRI("a NUL or a lone surrogate stands for nothing", text);
  }
  // Units for bytes that together are the UTF-8 of a character become that character.
  const ustring joined = Corvane::PathManagement::TextFromBytes(*bytes);
  const std::size_t authorityEnd = AuthorityEnd(joined, SchemeLength(joined) + 1);
  ustring escaped;
  for (std::size_t at = 0; at < joined.size(); ++at) {
    const char16_t unit = joined[at];
    const bool isBracket = (unit == u'[' || unit == u']') && at >= authorityEnd;
    if (unit < 0x20 || isBracket || kNeverLiteral.find(unit) != kNeverLiteral.npos ||
        IsByteAt(joined, at)) {
      // The low byte of a unit for a byte is that byte.
      AppendEscape(escaped, static_cast<std::uint8_t>(unit & 0xFFU));
    } else {
      escaped.push_back(unit);
    }
  }
  return escaped;
}

/// `escaped` with the characters beyond ASCII escaped as well.
std::string InAscii(std::u16string_view escaped) {
  std::string ascii;
  const std::string bytes = Corvane::PathManagement::BytesFromText(escaped).value();
  for (const char byte : bytes) {
    const auto value = static_cast<std::uint8_t>(byte);
    if (value < 0x80) {
      ascii.push_back(byte);
    } else {
      AppendEscape(ascii, value);
    }
  }
  return ascii;
}

/// Owns what the parser allocates for one text. Once the text is parsed, the parser fails only when
/// memory runs out.
class ParsedIRI {
 public:
  /// Parses `ascii`, which must outlive the last use of the other functions. Errors name `text`,
  /// from which `ascii` was made.
  ParsedIRI(std::u16string_view text, const std::string& ascii) {
    if (ascii.size() > kLongestIRI) throw InvalidIRI("it is longer than 64 KiB", text);
    const char* errorAt = nullptr;
    const int result =
        uriParseSingleUriExA(&uri, ascii.data(), ascii.data() + ascii.size(), &errorAt);
    if (result == URI_ERROR_MALLOC) throw std::bad_alloc();
    if (result != URI_SUCCESS) {
      const std::string rest(errorAt,
                             static_cast<std::size_t>(ascii.data() + ascii.size() - errorAt));
      throw InvalidIRI("it does not follow the IRI syntax from \"" + rest.substr(0, 20) + "\" on",
                       text);
    }
  }
  ParsedIRI(const ParsedIRI&) = delete;
  ParsedIRI& operator=(const ParsedIRI&) = delete;
  ~ParsedIRI() { uriFreeUriMembersA(&uri); }

  void Normalize() {
    // All parts but the scheme.
    constexpr unsigned mask = URI_NORMALIZE_USER_INFO | URI_NORMALIZE_HOST | URI_NORMALIZE_PATH |
                              URI_NORMALIZE_QUERY | URI_NORMALIZE_FRAGMENT;
    if (uriNormalizeSyntaxExA(&uri, mask) != URI_SUCCESS) throw std::bad_alloc();
  }

  [[nodiscard]] std::string Text() const {
    int length = 0;
    if (uriToStringCharsRequiredA(&uri, &length) != URI_SUCCESS) throw std::bad_alloc();
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    if (uriToStringA(text.data(), &uri, length + 1, nullptr) != URI_SUCCESS) throw std::bad_alloc();
    text.resize(static_cast<std::size_t>(length));
    return text;
  }

 private:
  UriUriA uri = {};
};

/// `path` without dot segments, as RFC 3986 removes them. A segment is removed with the separator
/// after it, not before it, so that "/a/b/.." becomes "/a/".
ustring PathWithoutDotSegments(std::u16string_view path) {
  const std::size_t rootLength = path.starts_with(u'/') ? 1 : 0;
  ustring plain(path.substr(0, rootLength));
  path.remove_prefix(rootLength);
  while (!path.empty()) {
    const std::size_t separator = path.find(u'/');
    const ustring segment = DecodeEscapes(path.substr(0, separator), Undecodable::Kept);
    const std::u16string_view written =
        path.substr(0, separator == path.npos ? separator : separator + 1);
    path.remove_prefix(written.size());
    if (segment == u"..") {
      if (plain.size() == rootLength) continue;
      plain.pop_back();                     // the separator after the segment to be removed
      plain.resize(plain.rfind(u'/') + 1);  // npos + 1 is 0
    } else if (segment != u".") {
      plain.append(written);
    }
  }
  return plain;
}

/// Mends the escapes in hosts, which the parser writes in lower case.
void WriteEscapesInUpperCase(ustring& text) {
  for (std::size_t at = text.find(u'%'); at != text.npos; at = text.find(u'%', at + 1)) {
    if (const auto byte = EscapeAt(text, at)) {
      ustring escape;
      AppendEscape(escape, *byte);
      text.replace(at, escape.size(), escape);
    }
  }
}

}  // namespace

std::size_t SchemeLength(std::u16string_view text) noexcept {
  if (text.empty() || !IsAlpha(text.front())) return 0;
  const auto end = std::find_if_not(text.begin(), text.end(), IsSchemeUnit);
  const auto length = static_cast<std::size_t>(end - text.begin());
  return end != text.end() && *end == u':' && length >= 2 ? length : 0;
}

bool HasIRIPrefix(std::u16string_view text) noexcept {
  const std::size_t length = SchemeLength(text);
  return length > 0 && text.substr(length).starts_with(u"://");
}

GenericIRI ParseGenericIRI(std::u16string_view text) {
  ustring escaped = WithIllegalEscaped(text);
  const ParsedIRI checked(text, InAscii(escaped));
  const std::size_t pathBegin = AuthorityEnd(escaped, SchemeLength(escaped) + 1);
  const std::size_t pathEnd = std::min(escaped.find_first_of(u"?#", pathBegin), escaped.size());
  return {std::move(escaped), pathBegin, pathEnd};
}

ustring NormalizeGenericIRI(std::u16string_view text) {
  const std::string ascii = InAscii(WithIllegalEscaped(text));
  ParsedIRI parsed(text, ascii);
  parsed.Normalize();
  const std::string normalAscii = parsed.Text();
  ustring normal(normalAscii.begin(), normalAscii.end());
  const std::size_t afterScheme = SchemeLength(text) + 1;
  const bool hadAuthority = ascii.compare(afterScheme, 2, "//") == 0;
  if (!hadAuthority && normal.compare(afterScheme, 2, u"//") == 0) {
    normal.insert(afterScheme, kNoAuthorityMark);
  }
  WriteEscapesInUpperCase(normal);
  return normal;
}

ustring GenericIRIWithoutDotSegments(std::u16string_view text) {
  const GenericIRI iri = ParseGenericIRI(text);
  const std::u16string_view whole = iri.text;
  const ustring path =
      PathWithoutDotSegments(whole.substr(iri.pathBegin, iri.pathEnd - iri.pathBegin));
  ustring plain(whole.substr(0, iri.pathBegin));
  const bool hasAuthority = iri.pathBegin > SchemeLength(whole) + 1;
  if (!hasAuthority && path.starts_with(u"//")) plain.append(kNoAuthorityMark);
  return plain.append(path).append(whole.substr(iri.pathEnd));
}

}  // namespace foundation::storage::vfs::detail
