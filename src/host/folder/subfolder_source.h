#ifndef SEARCHPATH_SRC_HOST_FOLDER_SUBFOLDER_SOURCE_H
#define SEARCHPATH_SRC_HOST_FOLDER_SUBFOLDER_SOURCE_H

#include "host/folder/directory_scan.h"

#include <memory>
#include <utility>

namespace Corvane::PathManagement::host {

/// Gives listings without files: those of another source, or else of the disk.
class SubfolderSource : public ListingSource {
 public:
  /// Null stands for the disk.
  explicit SubfolderSource(std::shared_ptr<const ListingSource> listings)
      : source(std::move(listings)) {}

  [[nodiscard]] FolderListing List(const AbsoluteIRI& location,
                                   DiskPatience& patience) const override {
    if (source == nullptr) return ListSubfolders(location, patience);
    FolderListing listing = source->List(location, patience);
    listing.files = {};
    return listing;
  }
  [[nodiscard]] bool FollowsTheDisk() const noexcept override {
    return source == nullptr || source->FollowsTheDisk();
  }
  [[nodiscard]] std::optional<FolderStamp> FindStamp(const AbsoluteIRI& location) const override {
    if (source == nullptr) return std::nullopt;
    return source->FindStamp(location);
  }

 private:
  std::shared_ptr<const ListingSource> source;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_SUBFOLDER_SOURCE_H
