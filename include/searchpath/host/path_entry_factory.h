#ifndef SEARCHPATH_HOST_PATH_ENTRY_FACTORY_H
#define SEARCHPATH_HOST_PATH_ENTRY_FACTORY_H

#include "searchpath/export.h"
#include "searchpath/host/folder_entry.h"
#include "searchpath/host/invalid_listing_exception.h"
#include "searchpath/host/listing_use.h"
#include "searchpath/model/path_entry_factory.h"

#include <istream>
#include <memory>
#include <ostream>
#include <vector>

namespace Corvane::PathManagement::host {

class SavedListings;

/// Writes the listings of folders, and makes entries from them without reading the folders again.
/// One format serves as cache and as saved listing of a path; docs/formats.md describes it.
///
/// It holds main folders in path order, and the listings of them and of all special folders below
/// them. What stands below the root is kept relative to it, so that a tree can be moved together
/// with its cache. The cache of a copied tree answers as well, but reads each folder again, since
/// nothing makes sure that the copy is one.
///
/// An entry made under `WhileFresh` answers as one that reads the disk does: when it is first asked
/// for what it holds, one question to the disk tells whether its folder has changed, and links are
/// always followed anew. Where that is not so, the folder is listed.
///
/// Threads: constant operations, from any thread.
/// Ownership: shares its folders; entries share the bytes that were read.
class SEARCHPATH_EXPORT PathEntryFactory : public IPathEntryFactory {
 public:
  /// Empty, to be read into.
  explicit PathEntryFactory(ListingUse listingUse = ListingUse::WhileFresh) : use(listingUse) {}
  /// With the main folders of a path, to be written.
  explicit PathEntryFactory(FolderEntries mainFolders);
  PathEntryFactory(const PathEntryFactory&) = default;
  PathEntryFactory& operator=(const PathEntryFactory&) = default;
  ~PathEntryFactory() override;

  /// Reads the stream to its end and verifies all of it, then replaces the folders. Trusts nothing
  /// that it reads.
  ///
  /// Errors: `InvalidListingException` for anything but a whole listing in a version that is known;
  /// nothing has changed then.
  /// Cost: the bytes of the stream, once in memory and three times looked at; one small object a
  /// folder; no question to the disk.
  void ReadEntries(std::istream& stream, const AbsoluteIRI& root) override;

  /// Lists all folders that have not been listed, special ones too.
  ///
  /// Errors: those of the stream; `std::length_error` for more than two gigabytes.
  void WriteEntries(std::ostream& stream, const AbsoluteIRI& root) const override;

  /// The main folders in path order.
  [[nodiscard]] FolderEntries GetFolders() const { return folders; }

  /// The main folders as users write them: native paths, and IRIs of other schemes than "file".
  [[nodiscard]] std::vector<ustring> GetFolderStrings() const;

  /// Entries for all folders that were read, special ones too, each once; made anew at each call.
  /// Their freshness is that of the listings which were read.
  [[nodiscard]] FolderEntries CreateSavedFolders() const;

 private:
  /// What `factory` has read; null when that is nothing.
  friend std::shared_ptr<const SavedListings> SavedListingsOf(const PathEntryFactory& factory);

  ListingUse use = ListingUse::WhileFresh;
  FolderEntries folders;
  std::shared_ptr<const SavedListings> saved;  // null unless they were read
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_PATH_ENTRY_FACTORY_H
