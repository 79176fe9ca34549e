#include "fuzz_input.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/platform/iri_text.h"

using namespace Corvane::PathManagement;
using namespace foundation::storage::vfs;
using fuzz::Require;

namespace {

/// `name` comes back from an IRI however its place is written.
void CheckFileName(const std::string& name) {
  const ustring text = TextFromBytes(name);
  for (const ustring& path : {u"/d/" + text, u"//d/.//" + text + u"/./"}) {
    const AbsoluteIRI iri(toAbsoluteIRI(u"file", path).toString());
    Require(BytesFromText(fromAbsoluteIRI(iri).native()) == "/d/" + name, "a path survives");
    Require(BytesFromText(iri.getName()) == name, "a name survives");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  Require(BytesFromText(TextFromBytes(bytes)) == bytes, "bytes survive text");
  if (const auto named = BytesFromText(fuzz::TextFrom(data, size))) {
    Require(BytesFromText(TextFromBytes(*named)) == named, "the bytes of text survive");
  }
  std::string name = bytes;
  std::erase_if(name, [](char byte) { return byte == '/' || byte == '\0'; });
  if (!name.empty() && name != ".") CheckFileName(name);
  return 0;
}
