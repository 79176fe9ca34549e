#ifndef SEARCHPATH_UTILITIES_SPECIAL_SUBFOLDER_NOTIFICATION_H
#define SEARCHPATH_UTILITIES_SPECIAL_SUBFOLDER_NOTIFICATION_H

#include "searchpath/export.h"
#include "searchpath/model/absolute_iri.h"

namespace Corvane::PathManagement {

// An entry of a path knows what its special subfolders hold, so it must be informed when something
// changes in one of them. These functions publish `FileFolderChangedEvent`s on the session's stream
// of events, from `location` upwards: for `location` itself if its name has a dot, as names of
// files do; then for each special folder; last for the first ordinary folder.
//
// Threads: stateless; subscribers are called on this thread.
// Errors: exceptions of a subscriber pass through, except as said below.

/// Publishes for `location` without its ".." components, which are removed as text. An
/// `InvalidIRIException`, even one that a subscriber raises, silently ends the function.
SEARCHPATH_EXPORT void NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChanges(
    const AbsoluteIRI& location);

/// Publishes for the canonical form of `location`, by which observers know folders. After a storage
/// error, even one that a subscriber raises, it does what the function above does: when `location`
/// is gone, its canonical form cannot be determined.
SEARCHPATH_EXPORT void NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesAndCanonicalize(
    const AbsoluteIRI& location);

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_SPECIAL_SUBFOLDER_NOTIFICATION_H
