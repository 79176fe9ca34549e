#ifndef SEARCHPATH_SRC_HOST_PATH_PATH_TABLE_H
#define SEARCHPATH_SRC_HOST_PATH_PATH_TABLE_H

#include "host/common/held_hash.h"
#include "searchpath/host/folder_entry.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace Corvane::PathManagement::host {

/// All entries of a path in path order, and where each stands.
///
/// Threads: immutable once made.
class PathTable {
 public:
  struct Row {
    std::shared_ptr<const FolderEntry> entry;
    std::uint32_t parent;  // the row of the entry above; its own row for a main entry
    std::uint32_t main;    // the row of the main entry that it belongs to
  };

  /// Lists every folder of the path.
  explicit PathTable(const FolderEntries& mainFolders);

  [[nodiscard]] const std::vector<Row>& Rows() const noexcept { return rows; }

  /// The first row of that very object, or else of that folder; empty when it is not on the path.
  [[nodiscard]] std::optional<std::uint32_t> Find(const IPathEntry& entry) const;
  [[nodiscard]] std::optional<std::uint32_t> Find(const AbsoluteIRI& canonical) const;

 private:
  void Add(const std::shared_ptr<const FolderEntry>& top);

  std::vector<Row> rows;
  boost::unordered_flat_map<const IPathEntry*, std::uint32_t> byObject;
  boost::unordered_flat_map<AbsoluteIRI, std::uint32_t, HeldHash> byLocation;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_PATH_PATH_TABLE_H
