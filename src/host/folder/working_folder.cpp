#include "searchpath/host/working_folder.h"

#include "host/folder/directory_scan.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/platform/filesystem.h"
#include "searchpath/platform/iri_text.h"
#include "searchpath/utilities/iri_conversion.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <new>
#include <string>
#include <vector>

namespace Corvane::PathManagement::host {

namespace {

using current_working_folder::AbsolutizeError;
using current_working_folder::FailedToAbsolutizeException;

/// The home folder of `user`; when `user` is empty, of whoever runs this process.
ustring HomeOf(const std::string& user) {
  std::vector<char> buffer(1024);
  passwd entry = {};
  passwd* found = nullptr;
  const auto ask = [&] {
    return user.empty() ? getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found)
                        : getpwnam_r(user.c_str(), &entry, buffer.data(), buffer.size(), &found);
  };
  while (ask() == ERANGE) buffer.resize(2 * buffer.size());
  if (found == nullptr) throw FailedToAbsolutizeException(AbsolutizeError::Absent);
  return TextFromBytes(found->pw_dir);
}

/// `text` with the "~" or "~user" at its beginning replaced by the home folder.
ustring WithHomeExpanded(const ustring& text) {
  const std::size_t userEnd = std::min(text.find(u'/'), text.size());
  const auto user = BytesFromText(std::u16string_view(text).substr(1, userEnd - 1));
  const bool isName = user && user->find('\0') == std::string::npos;
  if (!isName) throw FailedToAbsolutizeException(AbsolutizeError::InvalidText);
  return HomeOf(*user) + text.substr(userEnd);
}

ustring CurrentFolderOfProcess() {
  struct Free {
    void operator()(char* memory) const noexcept { std::free(memory); }
  };
  const std::unique_ptr<char, Free> folder(getcwd(nullptr, 0));
  if (folder == nullptr && errno == ENOMEM) throw std::bad_alloc();
  // A folder outside of this process's root is reported as a relative path.
  if (folder == nullptr || *folder != '/') {
    throw FailedToAbsolutizeException(AbsolutizeError::NoWorkingFolder);
  }
  return TextFromBytes(folder.get());
}

}  // namespace

AbsoluteIRI WorkingFolder::Locate(const AnyText& folder) const try {
  namespace vfs = foundation::storage::vfs;
  if (folder.empty()) throw FailedToAbsolutizeException(AbsolutizeError::InvalidText);
  if (vfs::hasIRIPrefix(folder)) {
    AbsoluteIRI iri = GetIRIFromString(folder);
    if (iri.getScheme() == u"file") return iri;
    throw FailedToAbsolutizeException(AbsolutizeError::InvalidText);
  }
  ustring native = fl::filesystem::detail::make_native_form(folder, /*expand=*/true);
  if (native.starts_with(u'~')) native = WithHomeExpanded(native);
  if (!native.starts_with(u'/')) {
    native.insert(0, (base ? base->getPath() : CurrentFolderOfProcess()) + u'/');
  }
  return vfs::toAbsoluteIRI(u"file", native);
} catch (const foundation::storage::vfs::InvalidIRIException&) {
  throw FailedToAbsolutizeException(AbsolutizeError::InvalidText);
}

AbsoluteIRI WorkingFolder::absolutize(const ustring& folder) const {
  AbsoluteIRI location = Locate(folder);
  DiskPatience patience;
  if (const auto reason = ProbeFolder(location, patience))
    throw FailedToAbsolutizeException(*reason);
  return location;
}

}  // namespace Corvane::PathManagement::host
