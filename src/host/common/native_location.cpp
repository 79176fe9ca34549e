#include "searchpath/host/native_location.h"

#include "searchpath/model/path_entry.h"
#include "searchpath/model/path_item.h"
#include "searchpath/utilities/iri_conversion.h"

namespace Corvane::PathManagement::host {

namespace {

ustring Below(ustring folder, const PathItem& item) {
  folder.reserve(folder.size() + 1 + item.GetName().size() + item.GetExtension().size());
  if (!folder.ends_with(u'/')) folder.push_back(u'/');
  folder += item.GetName();
  folder += item.GetExtension();
  return folder;
}

}  // namespace

ustring GetNativePath(const FoundItem& found) {
  const AbsoluteIRI folder = found.GetPathEntry()->GetAbsoluteIRI();
  return folder.getScheme() == u"file" ? Below(folder.getPath(), *found.GetPathItem()) : ustring();
}

ustring GetLocationText(const FoundItem& found) {
  return Below(GetStringFromIRI(found.GetPathEntry()->GetAbsoluteIRI()), *found.GetPathItem());
}

}  // namespace Corvane::PathManagement::host
