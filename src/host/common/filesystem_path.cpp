#include "searchpath/host/filesystem_path.h"

#include "searchpath/host/native_location.h"
#include "searchpath/model/byte_text.h"

namespace Corvane::PathManagement::host {

// No file on disk has a path that cannot become bytes: the answer is then empty.

std::filesystem::path GetFilesystemPath(const FoundItem& found) {
  return BytesFromText(GetNativePath(found)).value_or("");
}

std::filesystem::path GetFilesystemPath(const IPathEntry& entry) {
  const AbsoluteIRI folder = entry.GetAbsoluteIRI();
  if (folder.getScheme() != u"file") return {};
  return BytesFromText(folder.getPath()).value_or("");
}

}  // namespace Corvane::PathManagement::host
