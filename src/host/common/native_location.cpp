#include "searchpath/host/native_location.h"

#include "searchpath/model/path_entry.h"
#include "searchpath/model/path_item.h"
#include "searchpath/utilities/iri_conversion.h"

#include <utility>

namespace Corvane::PathManagement::host {

namespace {

ustring Below(ustring folder, const PathItem& item) {
  if (!folder.ends_with(u'/')) folder.push_back(u'/');
  return std::move(folder) + item.GetName() + item.GetExtension();
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
