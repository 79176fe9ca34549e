#include "fuzz_input.h"
#include "host/packages/package_manifest.h"

#include <algorithm>

using namespace Corvane::PathManagement;
using fuzz::Require;

namespace {

void CheckManifest(const host::PackageManifest& manifest, std::size_t lines) {
  Require(!manifest.identifier.name.empty() && !manifest.identifier.version.empty(), "a name");
  Require(manifest.nameLine >= 1 && manifest.nameLine <= lines, "a line of the text");
  for (const char16_t* key : {u"IsQRX", u"ManualInstall"}) {
    const auto value = manifest.package->GetProperty(key);
    Require(!value || std::holds_alternative<bool>(*value), "a truth value");
  }
  for (const auto& each : manifest.package->GetFolders()) {
    Require(each.tags != nullptr, "tags are there");
    // What is no IRI in the text stands below the package's own folder, as a text and on disk.
    const ustring path = each.folder.getPath();
    const bool isBelow = path == u"/p" || path.starts_with(u"/p/");
    Require(!isBelow || path.find(u"/../") == ustring::npos, "nothing leads out of the folder");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const auto lines = 1 + static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\n'));
  try {
    CheckManifest(host::ReadManifest(bytes, AbsoluteIRI(u"file:///p")), lines);
  } catch (const host::ManifestException& error) {
    Require(!error.line || (*error.line >= 1 && *error.line <= lines), "a line of the text");
  }
  return 0;
}
