// Storage for machines of one folder tree in memory, without links, where "\" separates as well.
#include "searchpath/platform/atomic_file_writer.h"
#include "searchpath/platform/iri_text.h"
#include "searchpath/platform/storage.h"

#include <algorithm>

namespace fl::filesystem {

std::map<ustring, std::string> files;

path::path(const ustring& text, bool convertToNativeForm) : pathname(text) {
  if (convertToNativeForm) std::replace(pathname.begin(), pathname.end(), u'\\', u'/');
}

ifstream::ifstream(const path& pathname) {
  files.contains(pathname.native()) ? str(files.at(pathname.native())) : setstate(failbit);
}

struct AtomicFileWriter::Parts {
  ustring target, temporary;
  std::ostringstream stream = {};
};

AtomicFileWriter::AtomicFileWriter(const path& targetFile, const ustring& prefix,
                                   const ustring& suffix)
    : parts(new Parts{targetFile.native(),
                      detail::extract_parent_path(targetFile) + u"/" + prefix + u"1" + suffix}) {
  parts->stream.exceptions(std::ios::failbit | std::ios::badbit);
  files[parts->temporary];
}
AtomicFileWriter::~AtomicFileWriter() { files.erase(parts->temporary); }
std::ostream& AtomicFileWriter::Stream() noexcept { return parts->stream; }
void AtomicFileWriter::Commit() { files[parts->target] = parts->stream.str(); }

ustring detail::make_native_form(const ustring& text, bool) { return path(text).native(); }
bool detail::is_absolute_path_when_expanded(const ustring& text, bool) {
  return text.starts_with(u'/');
}
ustring detail::extract_root_path(const path& pathname) {
  return pathname.native().starts_with(u'/') ? u"/" : u"";
}
ustring detail::extract_parent_path(const path& pathname) {
  return pathname.native().substr(0, pathname.native().rfind(u'/'));
}
ustring detail::extract_extension(const path& pathname) {
  return pathname.native().substr(
      std::min(pathname.native().rfind(u'.'), pathname.native().size()));
}

}  // namespace fl::filesystem

namespace foundation::storage {

bool vfs::hasIRIPrefix(const ustring& text) noexcept { return text.find(u"://") != ustring::npos; }
vfs::AbsoluteIRI vfs::toAbsoluteIRI(const ustring& scheme, const fl::filesystem::path& path) {
  return AbsoluteIRI(scheme + u"://" + path.native());
}
fl::filesystem::path vfs::fromAbsoluteIRI(const AbsoluteIRI& iri) { return iri.getPath(); }

vfs::Folder::Folder(const AbsoluteIRI& folderLocation, StorageSystemReference)
    : location(folderLocation) {}
vfs::CanonicalAbsoluteIRI vfs::Folder::getCanonicalLocation() const {
  return {location.getResolvedIRI(), u""};
}
vfs::File::File(const AbsoluteIRI& fileLocation, StorageSystemReference) : location(fileLocation) {}
vfs::CanonicalAbsoluteIRI vfs::File::getCanonicalLocation() const {
  return {location.getResolvedIRI(), u""};
}

void utility::normalizeURL(ustring& text) { text = vfs::AbsoluteIRI(text).toString(); }
void utility::decodeURL(ustring&, bool) {}

}  // namespace foundation::storage

foundation::storage::vfs::StorageSystemReference
storage::microservicestoragesystem::GetStorageSystemReference() noexcept {
  return {};
}
