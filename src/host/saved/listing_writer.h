#ifndef SEARCHPATH_SRC_HOST_SAVED_LISTING_WRITER_H
#define SEARCHPATH_SRC_HOST_SAVED_LISTING_WRITER_H

#include "searchpath/host/folder_entry.h"
#include "searchpath/model/absolute_iri.h"

#include <ostream>

namespace Corvane::PathManagement::host {

/// Does what `PathEntryFactory::WriteEntries` describes, for `mainFolders`, and writes the listings of
/// `furtherFolders` beside theirs.
void WriteListings(std::ostream& stream, const AbsoluteIRI& root, const FolderEntries& mainFolders,
                   const FolderEntries& furtherFolders = {});

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_SAVED_LISTING_WRITER_H
