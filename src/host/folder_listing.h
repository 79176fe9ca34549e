#ifndef SEARCHPATH_SRC_HOST_FOLDER_LISTING_H
#define SEARCHPATH_SRC_HOST_FOLDER_LISTING_H

#include "searchpath/model/path_entry_type.h"
#include "searchpath/platform/current_working_folder.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement::host {

/// Names as the disk gives them, one behind the other in one block, each ended by a NUL.
class NameBlock {
 public:
  void Add(std::string_view name) {
    begins.push_back(static_cast<std::uint32_t>(bytes.size()));
    bytes.append(name).push_back('\0');
  }

  [[nodiscard]] std::size_t size() const noexcept { return begins.size(); }

  [[nodiscard]] std::string_view operator[](std::size_t index) const noexcept {
    const std::size_t end = index + 1 < begins.size() ? begins[index + 1] : bytes.size();
    return std::string_view(bytes).substr(begins[index], end - begins[index] - 1);
  }

  void ShrinkToFit() {
    bytes.shrink_to_fit();
    begins.shrink_to_fit();
  }

 private:
  std::string bytes;
  std::vector<std::uint32_t> begins;  // where each name begins in bytes
};

/// What one pass over a folder found.
struct FolderListing {
  struct Subfolder {
    std::string name;
    PathEntryType kind;
    bool isLink;
  };

  NameBlock files;                         // in the order of the disk
  std::vector<Subfolder> specialFolders;   // in path order
  std::vector<Subfolder> ordinaryFolders;  // in the order of their bytes
  std::optional<current_working_folder::AbsolutizeError> problem;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_LISTING_H
