#include "searchpath/host/native_location.h"

#include "searchpath/model/path_entry.h"
#include "searchpath/model/path_item.h"

namespace Corvane::PathManagement::host {

ustring GetNativePath(const FoundItem& found) {
  const auto item = found.GetPathItem();
  ustring path = found.GetPathEntry()->GetAbsoluteIRI().getPath();
  if (!path.ends_with(u'/')) path.push_back(u'/');
  return path + item->GetName() + item->GetExtension();
}

}  // namespace Corvane::PathManagement::host
