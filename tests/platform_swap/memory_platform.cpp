// A platform for machines of one folder tree in memory, without links, where "\" separates as well.
#include "searchpath/platform/atomic_file_writer.h"
#include "searchpath/platform/event_manager.h"
#include "searchpath/platform/iri_text.h"
#include "searchpath/platform/storage.h"

#include <algorithm>
#include <stdexcept>

namespace fl::filesystem {

std::map<ustring, std::string> files;

path::path(const ustring& text, bool convertToNativeForm) : pathname(text) {
  if (convertToNativeForm) std::replace(pathname.begin(), pathname.end(), u'\\', u'/');
}

ifstream::ifstream(const path& pathname) : isOpen(files.count(pathname.native()) == 1) {
  isOpen ? str(files.at(pathname.native())) : setstate(failbit);
}

AtomicFileWriter::AtomicFileWriter(const path& targetFile, const ustring& prefix,
                                   const ustring& suffix)
    : target(targetFile),
      temporary(detail::extract_parent_path(target) + u"/" + prefix + u"1" + suffix) {
  stream.exceptions(std::ios::failbit | std::ios::badbit);
  files[temporary.native()];
}

AtomicFileWriter::~AtomicFileWriter() { files.erase(temporary.native()); }

void AtomicFileWriter::Commit() { files[target.native()] = stream.str(); }

namespace detail {

ustring make_native_form(const ustring& text, bool) { return path(text).native(); }

bool is_absolute_path_when_expanded(const ustring& text, bool) { return text.starts_with(u'/'); }

ustring extract_root_path(const path& pathname) {
  return pathname.native().starts_with(u'/') ? u"/" : u"";
}

ustring extract_parent_path(const path& pathname) {
  return pathname.native().substr(0, pathname.native().rfind(u'/'));
}

ustring extract_extension(const path& pathname) {
  const auto dot = pathname.native().rfind(u'.');
  return dot == ustring::npos ? u"" : pathname.native().substr(dot);
}

}  // namespace detail

}  // namespace fl::filesystem

namespace foundation::storage {

namespace vfs {

bool hasIRIPrefix(const ustring& text) { return text.find(u"://") != ustring::npos; }

AbsoluteIRI toAbsoluteIRI(const ustring& scheme, const fl::filesystem::path& path) {
  return AbsoluteIRI(scheme + u"://" + path.native());
}

fl::filesystem::path fromAbsoluteIRI(const AbsoluteIRI& iri) { return iri.getPath(); }

CanonicalAbsoluteIRI Folder::getCanonicalLocation() const {
  return {location.getResolvedIRI(), u""};
}

}  // namespace vfs

void utility::normalizeURL(ustring& text) { text = vfs::AbsoluteIRI(text).toString(); }

void utility::decodeURL(ustring&, bool) {}

}  // namespace foundation::storage

namespace storage {

foundation::storage::vfs::StorageSystemReference
microservicestoragesystem::GetStorageSystemReference() {
  return {};
}

}  // namespace storage

namespace foundation::msg_svc::eventmgr {

std::vector<std::unique_ptr<Event>> published;

void EventMgr::publish(std::unique_ptr<Event> event) { published.push_back(std::move(event)); }

std::shared_ptr<EventMgr> createLocalEventMgr(EventMgrId) { return std::make_shared<EventMgr>(); }

}  // namespace foundation::msg_svc::eventmgr
