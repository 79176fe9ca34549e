#include "searchpath/platform/iri_text.h"

#include "model/file_iri_spelling.h"
#include "model/generic_iri_syntax.h"
#include "model/percent_escapes.h"
#include "model/storage_exceptions.h"

#include <cstddef>
#include <string_view>

namespace foundation::storage::vfs {

namespace {

bool IsScheme(const ustring& text) {
  return !text.empty() && detail::SchemeLength(text + u':') == text.size();
}

}  // namespace

bool hasIRIPrefix(const ustring& text) noexcept { return detail::HasIRIPrefix(text); }

AbsoluteIRI toAbsoluteIRI(const ustring& scheme, const fl::filesystem::path& path) {
  const ustring& native = path.native();
  if (!IsScheme(scheme)) throw detail::InvalidIRI("it is no scheme", scheme);
  if (native.empty()) throw detail::InvalidIRI("an empty path names no file", native);
  if (native.front() != u'/') {
    throw detail::InvalidIRI("a relative path has no IRI", native, "write the absolute path");
  }
  return AbsoluteIRI(scheme + u"://" + detail::SpellNativePath(native));
}

fl::filesystem::path fromAbsoluteIRI(const AbsoluteIRI& iri) {
  if (!iri.toStringView().starts_with(u"file:")) {
    throw detail::InvalidIRI("only a \"file\" IRI has a native path", iri.toStringView());
  }
  return {iri.getPath()};
}

}  // namespace foundation::storage::vfs

namespace foundation::storage::utility {

namespace detail = vfs::detail;

void normalizeURL(ustring& text) {
  const std::size_t schemeLength = detail::SchemeLength(text);
  if (schemeLength == 0) {
    throw detail::InvalidIRI("it has no scheme", text, "write \"file:///folder\" or the like");
  }
  if (std::u16string_view(text).substr(0, schemeLength) != u"file") {
    text = detail::NormalizeGenericIRI(text);
    return;
  }
  const ustring path = detail::SpellPathOfFileIRI(text, detail::StrayPercent::Literal);
  text = u"file://" + detail::WithoutDotSegments(path);
}

void decodeURL(ustring& text, bool decodeUtf8) {
  text = decodeUtf8 ? detail::DecodeEscapes(text, detail::Undecodable::Kept)
                    : detail::DecodeAsciiEscapes(text);
}

}  // namespace foundation::storage::utility
