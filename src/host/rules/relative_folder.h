#ifndef SEARCHPATH_SRC_HOST_RULES_RELATIVE_FOLDER_H
#define SEARCHPATH_SRC_HOST_RULES_RELATIVE_FOLDER_H

#include "host/folder/folder_listing.h"
#include "host/names/short_hash.h"
#include "host/rules/asked_file.h"
#include "host/rules/search_roots.h"
#include "searchpath/model/found_item.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Corvane::PathManagement::host {

/// The folders of one relative name, such as "sys", below the folders of a path, the roots. A root
/// is given by its index.
///
/// The first eight calls of `FindFirst` ask the disk for the wanted file alone, one root after the
/// other. The ninth lists the folders and makes a table of their files. Earlier answers stay as
/// they are. In folders that may be searched but not listed, the disk is asked for every name.
///
/// Threads: all operations, from any thread. A question that has been answered before takes no lock
/// once there is a table.
class RelativeFolder {
 public:
  /// A file that counts by the lookup rules.
  struct Match {
    std::size_t root = 0;
    FoundItem file;
  };
  /// What a look for one file name below one root has found.
  struct Sight {
    Standing standing;
    const Match* match;  // null unless a file counts; lives as long as the `RelativeFolder`
  };
  /// What a search for one file name, root by root, has found.
  struct Answer {
    const Match* match = nullptr;  // null when no file was found
    bool ended = false;            // whether `EndsSearch` ended the search before a file was found
  };

  /// `folderName` is as `GetName` returns it. Precondition: `searchRoots` outlives this object.
  RelativeFolder(const SearchRoots& searchRoots, LookupRules::Files countedFiles,
                 std::string folderName)
      : roots(searchRoots), files(countedFiles), name(std::move(folderName)) {}
  RelativeFolder(const RelativeFolder&) = delete;
  RelativeFolder& operator=(const RelativeFolder&) = delete;
  ~RelativeFolder() = default;

  /// The relative name: empty for the roots themselves, else without "/" at its end.
  [[nodiscard]] const std::string& GetName() const noexcept { return name; }

  /// The first file of that name that counts, in the order of the roots.
  [[nodiscard]] Answer FindFirst(std::string_view file);
  /// What stands at that name below one root.
  [[nodiscard]] Sight LookIn(std::size_t root, std::string_view file);

  /// Whether there is a table.
  [[nodiscard]] bool IsListed() const noexcept { return isListed.load(std::memory_order_acquire); }
  // Precondition of what follows: there is a table.

  /// The listing of the folder below one root; null where the disk is asked for every name.
  [[nodiscard]] const FolderListing* FindListing(std::size_t root) const;
  /// The first root that may have the file; the number of roots when none may.
  [[nodiscard]] std::size_t FirstRootToAsk(std::string_view file) const;

 private:
  /// A name that some root lists, or that has been asked for before there was a table.
  struct Record {
    std::size_t firstRoot;  // where to begin: no listed root before it has the name
    std::atomic<const Match*> answer = nullptr;  // null until it is known

    explicit Record(std::size_t root) : firstRoot(root) {}
  };

  [[nodiscard]] bool IsToBeListed();
  void List();
  void AddToTable(std::size_t root);
  void LookAtOtherNames(std::size_t root, const FolderListing& listing);
  /// Whether the disk is asked for every name below this root. Precondition: there is a table.
  [[nodiscard]] bool IsAlwaysAsked(std::size_t root) const;
  [[nodiscard]] Answer AskRoots(std::size_t begin, std::string_view file);
  [[nodiscard]] Sight LookInLocked(std::size_t root, std::string_view file);
  [[nodiscard]] Standing FindStanding(std::size_t root, std::string_view file);
  [[nodiscard]] const Match& Keep(std::size_t root, std::string_view file);
  [[nodiscard]] const std::shared_ptr<const FolderEntry>& EntryOf(std::size_t root);
  [[nodiscard]] std::string PathOf(std::size_t root, std::string_view file) const;

  const SearchRoots& roots;
  const LookupRules::Files files;
  const std::string name;

  std::atomic<unsigned> questionCount = 0;
  // Whether there is a table. From then on, the table, unlisted and entries never change, so they
  // are read without the mutex; of records, only the answers change.
  std::atomic<bool> isListed = false;
  boost::unordered_flat_map<std::string_view, Record*, NameBytesHash> table;  // by file name
  std::vector<std::size_t> unlisted;  // the roots below which the folder cannot be listed, in order

  std::mutex mutex;  // guards what follows
  // By root, the folder below it. Null until needed; with a table, null where there is no folder.
  std::vector<std::shared_ptr<const FolderEntry>> entries;
  std::map<std::pair<std::string, std::size_t>, Sight> seen;  // by file and root
  std::deque<Match> matches;
  std::deque<Record> records;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RULES_RELATIVE_FOLDER_H
