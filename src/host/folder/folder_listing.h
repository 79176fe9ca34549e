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

/// What a link leads to, or led to when the folder was listed.
enum class LinkTarget : std::uint8_t { Neither = 0, File = 1, Folder = 2 };

/// What one pass over a folder found.
struct FolderListing {
  struct Subfolder {
    std::string name;
    PathEntryType kind;
    bool isLink;
  };
  /// A link, or a name whose type the file system does not report.
  struct Link {
    std::string name;
    LinkTarget target;
  };

  NameBlock files;                         // in the order of the disk, those behind links last
  std::vector<Subfolder> specialFolders;   // in path order
  std::vector<Subfolder> ordinaryFolders;  // in the order of their bytes
  std::vector<Link> links;                 // what they lead to is in the lists above as well
  /// Taken before the pass; empty if a later change could leave the folder with the same stamp.
  std::optional<FolderStamp> stamp;
  std::optional<current_working_folder::AbsolutizeError> problem;
};

/// Where entries take the listings of their folders from, when that is not the disk alone.
///
/// Threads: immutable.
class ListingSource {
 public:
  virtual ~ListingSource() = default;

  /// The listing of the folder at `location`. It may view memory of this object, which must outlive
  /// it.
  [[nodiscard]] virtual FolderListing List(const AbsoluteIRI& location,
                                           DiskPatience& patience) const = 0;

  /// Whether a listing shows a folder as it is, not as it was when the listing was saved.
  [[nodiscard]] virtual bool FollowsTheDisk() const noexcept = 0;

  /// The stamp of a saved listing of the folder; empty when there is none.
  [[nodiscard]] virtual std::optional<FolderStamp> FindStamp(const AbsoluteIRI& location) const = 0;

 protected:  // copied by derived classes only
  ListingSource() = default;
  ListingSource(const ListingSource&) = default;
  ListingSource& operator=(const ListingSource&) = default;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_FOLDER_LISTING_H
