#ifndef SEARCHPATH_SRC_HOST_CHANGES_LOCATION_SET_H
#define SEARCHPATH_SRC_HOST_CHANGES_LOCATION_SET_H

#include "host/common/held_hash.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/utilities/path_strings.h"

#include <boost/unordered/unordered_flat_set.hpp>

namespace Corvane::PathManagement::host {

using LocationSet = boost::unordered_flat_set<AbsoluteIRI, HeldHash>;

/// Adds a folder that has changed. A special folder ("+", "@", private, resources) is part of
/// the folder above it, so that one is added, too, and so on up to the first ordinary folder.
inline void AddChangedFolder(LocationSet& locations, AbsoluteIRI location) {
  while (locations.insert(location).second && location.hasParent() &&
         GetPathEntryTypeFromBaseName(location.getName()) != PathEntryType::Ordinary) {
    location = location.getParent();
  }
}

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_CHANGES_LOCATION_SET_H
