#ifndef SEARCHPATH_HOST_PATH_ENTRY_FACTORY_H
#define SEARCHPATH_HOST_PATH_ENTRY_FACTORY_H

#include "searchpath/export.h"
#include "searchpath/host/folder_entry.h"
#include "searchpath/host/invalid_listing_exception.h"
#include "searchpath/host/listing_use.h"
#include "searchpath/model/path_entry_factory.h"

#include <iosfwd>
#include <memory>
#include <vector>

namespace Corvane::PathManagement::host {

class SavedListings;

/// Writes the listings of folders to a stream, and makes entries from such a stream without reading
/// the folders again. One format serves as cache and as saved listing of a path; docs/formats.md
/// describes it.
///
/// The stream holds the main folders of a path, those on the path itself, in path order, and the
/// listings of them and of all special folders below them. Folders below `root` are saved relative
/// to it, so that a tree can be moved together with its cache. The cache of a copied tree works,
/// too, but each folder is listed again: nothing shows that the copy holds the same.
///
/// An entry made under `WhileFresh` answers like one that reads the disk: when it is first asked
/// for what its folder holds, it asks the disk once whether the folder has changed, and lists the
/// folder if it has. Links are always followed anew.
///
/// Threads: constant operations, from any thread.
/// Ownership: shares its folders; entries share the bytes that were read.
class SEARCHPATH_EXPORT PathEntryFactory : public IPathEntryFactory {
 public:
  /// A factory to fill by `ReadEntries`; `listingUse` says when its listings are used.
  explicit PathEntryFactory(ListingUse listingUse = ListingUse::WhileFresh);
  /// A factory of the main folders of a path, for `WriteEntries`.
  explicit PathEntryFactory(FolderEntries mainFolders);
  PathEntryFactory(const PathEntryFactory&);
  PathEntryFactory& operator=(const PathEntryFactory&);
  ~PathEntryFactory() override;

  /// Reads the stream to its end, verifies all of it, and then replaces the folders by those that
  /// were read. Folders that were saved relative to a root are now below `root`.
  ///
  /// Errors: `InvalidListingException` for anything but a whole listing in the version that this
  /// program reads; nothing has changed then.
  /// Cost: memory for the bytes of the stream, which are read three times, and for one small object
  /// per folder; the disk is not asked.
  void ReadEntries(std::istream& stream, const AbsoluteIRI& root) override;

  /// Writes the listings of the main folders and of all special folders below them; lists folders
  /// that have not been listed. Locations below `root` are written relative to it.
  ///
  /// Errors: those of the stream; `std::length_error` for more than two gigabytes.
  void WriteEntries(std::ostream& stream, const AbsoluteIRI& root) const override;

  /// The main folders in path order.
  [[nodiscard]] FolderEntries GetFolders() const;

  /// The main folders as users write them: native paths, and IRIs of other schemes than "file".
  [[nodiscard]] std::vector<ustring> GetFolderStrings() const;

  /// Entries for all folders that were read, each once, special folders as well; made anew at each
  /// call. `FolderEntry::GetFreshness` then compares the disk with what was read.
  [[nodiscard]] FolderEntries CreateSavedFolders() const;

 private:
  /// What `factory` has read; null when it has read nothing.
  friend std::shared_ptr<const SavedListings> SavedListingsOf(const PathEntryFactory& factory);

  ListingUse use = ListingUse::WhileFresh;
  FolderEntries folders;
  std::shared_ptr<const SavedListings> saved;  // null unless the folders were read from a stream
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_PATH_ENTRY_FACTORY_H
