#ifndef SEARCHPATH_UTILITIES_SPECIAL_SUBFOLDER_NOTIFICATION_H
#define SEARCHPATH_UTILITIES_SPECIAL_SUBFOLDER_NOTIFICATION_H

#include "searchpath/export.h"
#include "searchpath/model/absolute_iri.h"

namespace Corvane::PathManagement {

// An entry of a path knows what its special subfolders hold, so it has to hear when something
// changes in one of them. These functions publish, on the session's stream of events, a
// `FileFolderChangedEvent` for `location` itself if its name has a dot, then one for each special
// folder upwards from there and, last, one for the first ordinary folder.
//
// Threads: stateless; subscribers are called on this thread.
// Errors: what a subscriber throws passes through, except as said below.

/// Publishes for the location without its ".." components, which are removed as text. An
/// `InvalidIRIException`, also one that a subscriber raises, ends it silently.
SEARCHPATH_EXPORT void NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChanges(
    const AbsoluteIRI& location);

/// Publishes for the canonical location, by which observers know folders. After a storage error,
/// also one that a subscriber raises, it does what the function above does: a location that is gone
/// has no canonical one.
SEARCHPATH_EXPORT void NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesAndCanonicalize(
    const AbsoluteIRI& location);

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_SPECIAL_SUBFOLDER_NOTIFICATION_H
