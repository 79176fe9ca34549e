#ifndef SEARCHPATH_HOST_NATIVE_LOCATION_H
#define SEARCHPATH_HOST_NATIVE_LOCATION_H

#include "searchpath/export.h"
#include "searchpath/model/found_item.h"
#include "searchpath/model/ustring.h"

namespace Corvane::PathManagement::host {

/// The native path of a found file, below the folder as it was given to the path.
[[nodiscard]] SEARCHPATH_EXPORT ustring GetNativePath(const FoundItem& found);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_NATIVE_LOCATION_H
