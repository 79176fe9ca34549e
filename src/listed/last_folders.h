#ifndef SEARCHPATH_SRC_LISTED_LAST_FOLDERS_H
#define SEARCHPATH_SRC_LISTED_LAST_FOLDERS_H

#include "model/short_hash.h"
#include "searchpath/model/ustring.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstdint>
#include <vector>

namespace Corvane::PathManagement::detail {

/// The entries of a path by the name of the folder, the last one of the location: a partial
/// pathname is compared only with those that its last folder may mean.
///
/// Threads: immutable once filled.
class LastFolders {
 public:
  struct Row {
    std::uint32_t number;
    bool isWhole;  // whether the name has nothing in front in the location
  };

  template <class Table>
  explicit LastFolders(const Table& table) {
    for (const auto& row : table.Rows()) Add(row.entry->GetCanonicalAbsoluteIRI().getName());
  }

  /// The rows of the table whose folder is called `name`, or that with "+" or "@" in front, in path
  /// order.
  [[nodiscard]] const std::vector<Row>& RowsOf(const ustring& name) const;

 private:
  void Add(const ustring& name);

  std::uint32_t count = 0;  // of the rows
  boost::unordered_flat_map<ustring, std::vector<Row>, TextHash> rows;
  const std::vector<Row> none;
};

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_LISTED_LAST_FOLDERS_H
