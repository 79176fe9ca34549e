#include "fuzz_input.h"
#include "searchpath/platform/iri_text.h"
#include "searchpath/utilities/iri_conversion.h"

using namespace Corvane::PathManagement;
using namespace foundation::storage;
using fuzz::Require;
using fuzz::Try;

namespace {

void CheckParents(AbsoluteIRI iri) {
  const bool isFile = iri.getScheme() == u"file";
  for (; iri.hasParent(); iri = iri.getParent()) {
    const AbsoluteIRI parent = iri.getParent();
    const ustring name = iri.getName();
    Require(parent.toString().size() < iri.toString().size(), "a chain of parents ends");
    Require(iri.getPath().find(name) != ustring::npos, "the name is part of the path");
    if (!isFile) continue;
    Require(AbsoluteIRI(parent.toString()) == parent, "a parent has the one spelling");
    Require(iri.makePathRelativeTo(parent) == name, "a step below the parent is the name");
    Require(iri.getPath() == (parent.hasParent() ? parent.getPath() : u"") + u'/' + name,
            "the path is the parent's and the name");
  }
  Require(!Try([&] { return iri.getParent(); }), "a root has no parent");
}

void CheckIRI(const AbsoluteIRI& iri) {
  const AbsoluteIRI again(iri.toString());
  Require(again == iri && again.hashValue() == iri.hashValue(), "one spelling");
  Require(iri.getPath().find(u'\0') == ustring::npos, "no escape becomes a NUL");
  Require(!Try([&] { return iri.makePathRelativeTo(iri); }), "nothing is below itself");
  CheckParents(iri);
  if (const auto resolved = Try([&] { return iri.getResolvedIRI(); })) {
    Require(AbsoluteIRI(resolved->toString()) == *resolved, "a resolved IRI has the one spelling");
    Require(resolved->getResolvedIRI() == *resolved, "resolved is resolved");
  }
  const ustring shown = GetStringFromIRI(iri);
  const bool isFile = iri.getScheme() == u"file";
  Require(!isFile || vfs::toAbsoluteIRI(u"file", shown) == iri, "a native path names its IRI");
}

void CheckNormal(const ustring& text, ustring normal) {
  const AbsoluteIRI iri(normal);
  Require(iri.toString() == normal, "the normal form is the one spelling");
  utility::normalizeURL(normal);
  Require(iri.toString() == normal, "normal is normal");
  if (vfs::hasIRIPrefix(text)) Require(GetIRIFromString(text) == iri, "text is normalised");
  if (normal != text) CheckIRI(iri);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ustring text = fuzz::TextFrom(data, size);
  const auto parsed = Try([&] { return AbsoluteIRI(text); });
  const auto native = Try([&] { return vfs::toAbsoluteIRI(u"file", u'/' + text); });
  if (parsed || native) CheckIRI(parsed ? *parsed : *native);
  ustring changed = text;
  const auto normal = Try([&] { return utility::normalizeURL(changed), changed; });
  Require(normal || !parsed, "every IRI has a normal form");
  if (normal) CheckNormal(text, *normal);
  for (const bool decodeUtf8 : {false, true}) {
    utility::decodeURL(changed = text, decodeUtf8);
    Require(changed.size() <= text.size(), "decoding never makes a text longer");
    Require(changed == text || text.find(u'%') != text.npos, "only escapes are decoded");
  }
  return 0;
}
