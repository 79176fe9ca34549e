#ifndef SEARCHPATH_HOST_NATIVE_LOCATION_H
#define SEARCHPATH_HOST_NATIVE_LOCATION_H

#include "searchpath/export.h"
#include "searchpath/model/found_item.h"
#include "searchpath/model/ustring.h"

namespace Corvane::PathManagement::host {

/// The native path of a found file: its folder as it was given to the path, and its name. "" for a
/// file that is not on disk: one whose folder has a location of another scheme than "file".
[[nodiscard]] SEARCHPATH_EXPORT ustring GetNativePath(const FoundItem& found);

/// Where a found file is, for people to read: its native path or, for a file that is not on disk,
/// the text of its location with escapes decoded.
[[nodiscard]] SEARCHPATH_EXPORT ustring GetLocationText(const FoundItem& found);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_NATIVE_LOCATION_H
