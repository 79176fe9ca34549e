#ifndef SEARCHPATH_SRC_LISTED_LAST_FOLDERS_H
#define SEARCHPATH_SRC_LISTED_LAST_FOLDERS_H

#include "model/short_hash.h"
#include "searchpath/model/path_entry_type.h"
#include "searchpath/model/ustring.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstdint>
#include <vector>

namespace Corvane::PathManagement::detail {

/// Finds the entries of a path by folder name, the last component of the canonical location. A
/// partial pathname such as "pkg/cls" need then be compared only with the entries that its last
/// folder may mean: those called "cls", "+cls" or "@cls". Method entries are also found by the last
/// component of the location, such as "@cls", since that may be the name of a link.
///
/// Threads: immutable once filled.
class LastFolders {
 public:
  /// An entry that a name may mean.
  struct Candidate {
    std::uint32_t row;  // of the entry: an index in the rows of the table
    bool isExact;       // whether the canonical name is exactly this, without "+" or "@" in front
  };

  /// `table` is an `EntryTable`.
  template <class Table>
  explicit LastFolders(const Table& table) {
    for (const auto& row : table.Rows()) {
      Add(row.entry->GetCanonicalAbsoluteIRI().getName());
      if (row.entry->GetPathEntryType() == PathEntryType::AtFolder) {
        AddNameOfLast(row.entry->GetAbsoluteIRI().getName());
      }
    }
  }

  /// The entries whose folder is called `name`, or `name` with "+" or "@" in front, in path order;
  /// also method entries that only their locations call so.
  [[nodiscard]] const std::vector<Candidate>& CandidatesFor(const ustring& name) const;

 private:
  void Add(const ustring& name);
  void AddNameOfLast(const ustring& name);

  std::uint32_t rowCount = 0;                                                       // so far
  boost::unordered_flat_map<ustring, std::vector<Candidate>, TextHash> candidates;  // by name
  const std::vector<Candidate> none;  // what `CandidatesFor` returns for an unknown name
};

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_LISTED_LAST_FOLDERS_H
