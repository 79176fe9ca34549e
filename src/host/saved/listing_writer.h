#ifndef SEARCHPATH_SRC_HOST_SAVED_LISTING_WRITER_H
#define SEARCHPATH_SRC_HOST_SAVED_LISTING_WRITER_H

#include "searchpath/host/folder_entry.h"
#include "searchpath/model/absolute_iri.h"

#include <ostream>

namespace Corvane::PathManagement::host {

/// Writes the listings of `mainFolders`, the folders of a path, and of all special folders below
/// them, as `PathEntryFactory::WriteEntries` says. Then writes those of `furtherFolders` alone,
/// without folders below them.
void WriteListings(std::ostream& stream, const AbsoluteIRI& root, const FolderEntries& mainFolders,
                   const FolderEntries& furtherFolders = {});

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_SAVED_LISTING_WRITER_H
