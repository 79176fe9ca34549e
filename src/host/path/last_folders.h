#ifndef SEARCHPATH_SRC_HOST_PATH_LAST_FOLDERS_H
#define SEARCHPATH_SRC_HOST_PATH_LAST_FOLDERS_H

#include "host/names/short_hash.h"
#include "host/path/path_table.h"
#include "searchpath/model/ustring.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Corvane::PathManagement::host {

/// The entries of a path by the name of the folder, the last one of the location: a partial
/// pathname is compared only with those that its last folder may mean.
///
/// Threads: immutable once made.
class LastFolders {
 public:
  explicit LastFolders(const PathTable& table);

  /// The rows of the table whose folder is called `name`, or that with "+" or "@" in front, in path
  /// order.
  [[nodiscard]] const std::vector<std::uint32_t>& RowsOf(const ustring& name) const;

 private:
  struct Hash {
    using is_avalanching = void;
    std::size_t operator()(const ustring& name) const noexcept {
      return ShortHash(name.data(), name.size() * sizeof(char16_t));
    }
  };

  boost::unordered_flat_map<ustring, std::vector<std::uint32_t>, Hash> rows;
  const std::vector<std::uint32_t> none;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_PATH_LAST_FOLDERS_H
