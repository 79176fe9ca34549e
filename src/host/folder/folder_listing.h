#ifndef SEARCHPATH_SRC_HOST_FOLDER_FOLDER_LISTING_H
#define SEARCHPATH_SRC_HOST_FOLDER_FOLDER_LISTING_H

#include "host/common/disk_patience.h"
#include "host/folder/folder_stamp.h"
#include "host/names/name_block.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/path_entry_type.h"
#include "searchpath/platform/current_working_folder.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Corvane::PathManagement::host {

/// What a link leads to, or led to when the folder was listed. `Neither`: to no file or folder. The
/// numbers are written to saved listings.
enum class LinkTarget : std::uint8_t { Neither = 0, File = 1, Folder = 2 };

/// What one pass over a folder found.
struct FolderListing {
  struct Subfolder {
    std::string name;
    PathEntryType kind;
    bool isLink;  // true also where the file system does not report the type
  };
  /// A link, a device or the like, or a name whose type the file system does not report.
  struct Link {
    std::string name;
    LinkTarget target;
  };

  NameBlock files;                         // in the order of the disk, links to files last
  std::vector<Subfolder> specialFolders;   // in path order: private, resources, "+", "@"
  std::vector<Subfolder> ordinaryFolders;  // in the order of the bytes of their names
  std::vector<Link> links;                 // those to files and folders are in the lists above, too
  /// Taken before the pass; `nullopt` if a later change could leave the folder with the same stamp.
  std::optional<FolderStamp> stamp;
  /// Why the folder could not be listed, or not to its end; `nullopt` when it was.
  std::optional<current_working_folder::AbsolutizeError> problem;
};

/// Gives entries the listings of their folders, when these do not come from the disk alone.
///
/// Threads: immutable.
class ListingSource {
 public:
  virtual ~ListingSource() = default;

  /// The listing of the folder at `location`. May view memory of this source, which must outlive
  /// the listing.
  [[nodiscard]] virtual FolderListing List(const AbsoluteIRI& location,
                                           DiskPatience& patience) const = 0;

  /// Whether listings show folders as they are now, not as they were when a listing was saved.
  [[nodiscard]] virtual bool FollowsTheDisk() const noexcept = 0;

  /// The stamp in a saved listing of the folder; `nullopt` when there is none.
  [[nodiscard]] virtual std::optional<FolderStamp> FindStamp(const AbsoluteIRI& location) const = 0;

 protected:  // copied by derived classes only
  ListingSource() = default;
  ListingSource(const ListingSource&) = default;
  ListingSource& operator=(const ListingSource&) = default;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_FOLDER_LISTING_H
