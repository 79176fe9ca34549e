#ifndef SEARCHPATH_SRC_HOST_NAMES_SHARED_NAMES_H
#define SEARCHPATH_SRC_HOST_NAMES_SHARED_NAMES_H

#include "host/names/short_hash.h"
#include "searchpath/model/filename_matching_policy.h"
#include "searchpath/model/ustring.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement::host {

class NameBlock;

/// Collects the plain names, those without folders, by which the files of a path can be looked up,
/// and finds the names that several files share.
///
/// Ownership: views the name blocks, which must outlive it.
class SharedNames {
 public:
  /// Without extensions, files are looked up by their whole names. Otherwise, by the names that a
  /// look-up tries with the extensions of `extensionList`; see `Lookup`.
  SharedNames(const std::vector<ustring>& extensionList, FilenameMatchingPolicy policy);

  /// Adds the files of the next folder in path order.
  void AddFolder(const NameBlock& files);

  /// Whether a file may be collected by `name`: whether a look-up tries `name` with extensions, or
  /// `name` is a file name such as "a.b.zt", which a look-up of "a.b" does not find.
  [[nodiscard]] bool IsName(std::string_view name) const;

  /// Whether `GetShared` has names so far.
  [[nodiscard]] bool HasShared() const noexcept { return hasShared; }
  /// The names that several files share, in the order in which they were added; also a name by
  /// which one file is collected twice, for two extensions: callers look up each name anyway. Of several spellings, gives one from
  /// the first folder that has the name: the first in the order of bytes.
  [[nodiscard]] std::vector<std::string> GetShared() const;
  /// Those of `GetShared` that are spelled in several ways.
  [[nodiscard]] std::vector<std::string> GetRespelled() const;

 private:
  struct Name {
    std::string_view spelling;  // in the first folder that has the name
    std::size_t folder;         // the number of that folder
    bool isShared = false;      // by several files, or by one file with several extensions
    bool isRespelled = false;   // spelled in several ways
  };

  void Add(std::string_view name);
  /// The spellings of the names for which `condition` is true.
  [[nodiscard]] std::vector<std::string> SpellingsOf(bool Name::* condition) const;
  template <class Use>
  void ForEachName(std::string_view file, const Use& use) const;

  bool hasExtensions;  // whether any were given
  std::vector<std::string>
      extensions;  // those that a name can end with; folded when case is ignored
  bool foldsCase;
  std::size_t folderCount = 0;
  bool hasShared = false;
  std::vector<Name> names;  // in the order in which they were added
  boost::unordered_flat_map<std::string_view, std::size_t, NameBytesHash>
      indices;                         // in names, by the name, folded when case is ignored
  std::deque<std::string> foldedKeys;  // owns the keys that differ from the name as written
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_NAMES_SHARED_NAMES_H
