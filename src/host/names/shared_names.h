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
#include <utility>
#include <vector>

namespace Corvane::PathManagement::host {

class NameBlock;

/// The plain names by which the files of a path are looked up, to find those that several files
/// have.
///
/// Ownership: views the name blocks, which must outlive it.
class SharedNames {
 public:
  /// With `extensionList`, the names that are tried with these extensions; see `Lookup`.
  SharedNames(const std::vector<ustring>& extensionList, FilenameMatchingPolicy matchingPolicy);

  /// Adds the files of the next folder in path order.
  void AddFolder(const NameBlock& files);

  /// Whether `name` is such a name: one that extensions are tried with, or a whole file name.
  [[nodiscard]] bool IsName(std::string_view name) const;

  /// The names that several files have, each in the spelling of its first folder there, the least
  /// by its bytes. In no order.
  [[nodiscard]] std::vector<std::string> GetShared() const;
  /// Those of them that are spelled in several ways.
  [[nodiscard]] std::vector<std::string> GetRespelled() const;

 private:
  struct Hash {
    using is_avalanching = void;
    std::size_t operator()(std::string_view key) const noexcept {
      return ShortHash(key.data(), key.size());
    }
  };
  struct Name {
    std::string_view spelling;
    std::size_t folder;  // the first that has it, by number
    bool isShared = false;
    bool isRespelled = false;
  };

  void Add(std::string_view name);
  template <class Use>
  void ForEachName(std::string_view file, const Use& use) const;

  bool hasExtensions;
  std::vector<std::pair<ustring, std::string>> extensions;  // each as text and as bytes
  FilenameMatchingPolicy policy;
  std::size_t folderCount = 0;
  boost::unordered_flat_map<std::string_view, Name, Hash> names;  // by what the same names share
  std::deque<std::string> foldedKeys;                             // those keys that are no names
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_NAMES_SHARED_NAMES_H
