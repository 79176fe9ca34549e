#ifndef SEARCHPATH_SRC_HOST_CHANGES_LOCATION_SET_H
#define SEARCHPATH_SRC_HOST_CHANGES_LOCATION_SET_H

#include "host/common/held_hash.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/utilities/path_strings.h"

#include <boost/unordered/unordered_flat_set.hpp>

namespace Corvane::PathManagement::host {

using LocationSet = boost::unordered_flat_set<AbsoluteIRI, HeldHash>;

/// Adds a folder that has changed; with a special folder also those above it up to the ordinary
/// folder that it belongs to, since each of these holds the next.
inline void AddChangedFolder(LocationSet& locations, AbsoluteIRI location) {
  while (locations.insert(location).second && location.hasParent() &&
         GetPathEntryTypeFromBaseName(location.getName()) != PathEntryType::Ordinary) {
    location = location.getParent();
  }
}

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_CHANGES_LOCATION_SET_H
