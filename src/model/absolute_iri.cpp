#include "searchpath/model/absolute_iri.h"

#include "model/file_iri_spelling.h"
#include "model/generic_iri_syntax.h"
#include "model/path_components.h"
#include "model/percent_escapes.h"
#include "model/quoted_text.h"
#include "model/storage_exceptions.h"

#include <xxhash.h>

#include <atomic>
#include <cassert>
#include <limits>
#include <new>
#include <string>
#include <vector>

namespace foundation::storage::vfs {

namespace detail {

/// What all copies of one IRI share. The text of the IRI follows it in the same allocation.
struct IRIRepresentation {
  mutable std::atomic<std::uint32_t> owners;
  std::uint32_t schemeLength;  // this and the next three: in code units of the text
  std::uint32_t pathBegin;
  std::uint32_t pathEnd;
  std::uint32_t length;
  std::uint64_t hash;

  [[nodiscard]] const char16_t* Text() const noexcept {
    return reinterpret_cast<const char16_t*>(this + 1);
  }
};

namespace {

/// Where the parts of an IRI are in its text.
struct Parts {
  std::size_t schemeLength;
  std::size_t pathBegin;
  std::size_t pathEnd;
};

/// A new representation of the IRI `text`, with one owner.
const IRIRepresentation* Share(std::u16string_view text, const Parts& parts) {
  if (text.size() > std::numeric_limits<std::uint32_t>::max()) {
    throw InvalidIRI("it is too long", text);
  }
  const std::size_t bytes = text.size() * sizeof(char16_t);
  void* memory = ::operator new(sizeof(IRIRepresentation) + bytes);
  auto* shared =
      new (memory) IRIRepresentation{.owners = 1,
                                     .schemeLength = static_cast<std::uint32_t>(parts.schemeLength),
                                     .pathBegin = static_cast<std::uint32_t>(parts.pathBegin),
                                     .pathEnd = static_cast<std::uint32_t>(parts.pathEnd),
                                     .length = static_cast<std::uint32_t>(text.size()),
                                     .hash = XXH3_64bits(text.data(), bytes)};
  text.copy(reinterpret_cast<char16_t*>(shared + 1), text.size());
  return shared;
}

const IRIRepresentation* ShareFileIRI(std::u16string_view spelledPath) {
  constexpr std::u16string_view prefix = u"file://";
  ustring text;
  text.reserve(prefix.size() + spelledPath.size());
  text.append(prefix).append(spelledPath);
  return Share(text, {.schemeLength = 4, .pathBegin = prefix.size(), .pathEnd = text.size()});
}

const IRIRepresentation* Parse(std::u16string_view text) {
  const std::size_t schemeLength = SchemeLength(text);
  if (schemeLength == 0) {
    throw InvalidIRI("it has no scheme", text, "write \"file:///folder\" or the like");
  }
  if (text.substr(0, schemeLength) == u"file") {
    return ShareFileIRI(SpellPathOfFileIRI(text, StrayPercent::Invalid));
  }
  const GenericIRI iri = ParseGenericIRI(text);
  return Share(iri.text,
               {.schemeLength = schemeLength, .pathBegin = iri.pathBegin, .pathEnd = iri.pathEnd});
}

std::u16string_view WithoutTrailingSeparators(std::u16string_view path) {
  const std::size_t last = path.find_last_not_of(u'/');
  return path.substr(0, last == path.npos ? 0 : last + 1);
}

/// Where the parent of `path` ends in it; npos when `path` is a root and has no parent.
/// Precondition: `path` has no trailing separators.
std::size_t ParentEnd(std::u16string_view path) {
  const std::size_t separator = path.rfind(u'/');
  if (path.empty() || separator == path.npos) return path.npos;
  // The separator that begins a path is the root itself.
  return separator == 0 ? 1 : separator;
}

/// The components of `path` with "." and ".." resolved. Errors name `wholeText`.
std::vector<std::u16string_view> ResolvedComponents(std::u16string_view path,
                                                    std::u16string_view wholeText) {
  std::vector<std::u16string_view> components;
  for (auto component = TakeComponent(path); !component.empty(); component = TakeComponent(path)) {
    if (component == u"..") {
      if (components.empty()) throw InvalidIRI("\"..\" leads above the root", wholeText);
      components.pop_back();
    } else if (component != u".") {
      components.push_back(component);
    }
  }
  return components;
}

/// `escaped`, a part of the path of `iri`, decoded. In schemes other than "file", escapes that are
/// not UTF-8 or stand for a separator or NUL are kept.
ustring Decoded(const IRIRepresentation& iri, std::u16string_view escaped) {
  const bool isFile = std::u16string_view(iri.Text(), iri.schemeLength) == u"file";
  return DecodeEscapes(escaped, isFile ? Undecodable::AsByte : Undecodable::KeptWithSeparators);
}

}  // namespace

}  // namespace detail

AbsoluteIRI::AbsoluteIRI(const ustring& text) : shared(detail::Parse(text)) {}

AbsoluteIRI::AbsoluteIRI(const AbsoluteIRI& other) noexcept : shared(other.shared) {
  assert(shared != nullptr);
  shared->owners.fetch_add(1, std::memory_order_relaxed);
}

AbsoluteIRI& AbsoluteIRI::operator=(const AbsoluteIRI& other) noexcept {
  AbsoluteIRI copy(other);
  std::swap(shared, copy.shared);
  return *this;
}

AbsoluteIRI::~AbsoluteIRI() {
  if (shared == nullptr || shared->owners.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
  shared->~IRIRepresentation();
  ::operator delete(const_cast<detail::IRIRepresentation*>(shared));
}

std::u16string_view AbsoluteIRI::toStringView() const noexcept {
  return {shared->Text(), shared->length};
}

std::u16string_view AbsoluteIRI::pathText() const noexcept {
  return toStringView().substr(shared->pathBegin, shared->pathEnd - shared->pathBegin);
}

ustring AbsoluteIRI::getName() const {
  const std::u16string_view path = detail::WithoutTrailingSeparators(pathText());
  return detail::Decoded(*shared, path.substr(path.rfind(u'/') + 1));
}

bool AbsoluteIRI::hasParent() const noexcept {
  return detail::ParentEnd(detail::WithoutTrailingSeparators(pathText())) !=
         std::u16string_view::npos;
}

AbsoluteIRI AbsoluteIRI::getParent() const {
  const std::size_t end = detail::ParentEnd(detail::WithoutTrailingSeparators(pathText()));
  if (end == std::u16string_view::npos) {
    throw detail::InvalidIRI("a root has no parent", toStringView());
  }
  const std::size_t pathEnd = shared->pathBegin + end;
  return AbsoluteIRI(detail::Share(toStringView().substr(0, pathEnd),
                                   {shared->schemeLength, shared->pathBegin, pathEnd}));
}

ustring AbsoluteIRI::getPath() const {
  ustring path = detail::Decoded(*shared, pathText());
  if (!path.starts_with(u'/')) path.insert(path.begin(), u'/');
  return path;
}

ustring AbsoluteIRI::getScheme() const { return {shared->Text(), shared->schemeLength}; }

AbsoluteIRI AbsoluteIRI::getResolvedIRI() const {
  const std::u16string_view path = pathText();
  if (!detail::HasDoubleDots(path)) return *this;
  ustring text(toStringView().substr(0, shared->pathBegin));
  // The path of a scheme such as "urn" need not begin with a separator.
  std::u16string_view separator = path.starts_with(u'/') ? u"/" : u"";
  for (const std::u16string_view component : detail::ResolvedComponents(path, toStringView())) {
    text.append(separator).append(component);
    separator = u"/";
  }
  if (text.size() == shared->pathBegin) text.push_back(u'/');
  const std::size_t pathEnd = text.size();
  text.append(toStringView().substr(shared->pathEnd));
  return AbsoluteIRI(detail::Share(text, {shared->schemeLength, shared->pathBegin, pathEnd}));
}

ustring AbsoluteIRI::toString() const { return ustring(toStringView()); }

ustring AbsoluteIRI::makePathRelativeTo(const AbsoluteIRI& above) const {
  const auto rootOf = [](const AbsoluteIRI& iri) {
    return iri.toStringView().substr(0, iri.shared->pathBegin);
  };
  const std::u16string_view path = detail::WithoutTrailingSeparators(pathText());
  const std::u16string_view abovePath = detail::WithoutTrailingSeparators(above.pathText());
  if (rootOf(*this) != rootOf(above) || !path.starts_with(abovePath) ||
      !path.substr(abovePath.size()).starts_with(u'/')) {
    throw detail::InvalidIRI(
        "it is not below " + Corvane::PathManagement::detail::QuotedText(above.toStringView()),
        toStringView());
  }
  const std::u16string_view below = path.substr(abovePath.size());
  return detail::Decoded(*shared, below.substr(below.find_first_not_of(u'/')));
}

std::uint64_t AbsoluteIRI::hashValue() const noexcept { return shared->hash; }

bool AbsoluteIRI::hasSameText(const AbsoluteIRI& other) const noexcept {
  return shared->hash == other.shared->hash && toStringView() == other.toStringView();
}

std::size_t hash_value(const AbsoluteIRI& iri) noexcept {
  return static_cast<std::size_t>(iri.hashValue());
}

CanonicalAbsoluteIRI::CanonicalAbsoluteIRI(const AbsoluteIRI& iri, const ustring& furtherText)
    : AbsoluteIRI(iri), further(furtherText) {}

}  // namespace foundation::storage::vfs
