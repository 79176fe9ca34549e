#ifndef SEARCHPATH_SRC_HOST_RULES_RELATIVE_LOOKUP_H
#define SEARCHPATH_SRC_HOST_RULES_RELATIVE_LOOKUP_H

#include "host/rules/relative_folder.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement::host {

/// Finds files by their names relative to the folders of a path, the roots: "a/b.h" below each of
/// them. A root is given by its index.
///
/// Threads: all operations, from any thread.
/// Cost: once a relative folder, such as "a", has been asked often, two hash probes, however many
/// roots there are; see `RelativeFolder`. Relative folders that were asked for stay in memory.
class RelativeLookup {
 public:
  RelativeLookup(SearchRoots searchRoots, LookupRules::Files countedFiles)
      : roots(std::move(searchRoots)), files(countedFiles) {}
  RelativeLookup(const RelativeLookup&) = delete;
  RelativeLookup& operator=(const RelativeLookup&) = delete;
  ~RelativeLookup() = default;

  [[nodiscard]] const SearchRoots& GetRoots() const noexcept { return roots; }

  /// The first file of that relative name that counts, in the order of the roots.
  [[nodiscard]] RelativeFolder::Answer FindFirst(std::string_view relative);
  /// What stands at that relative name below one root.
  [[nodiscard]] RelativeFolder::Sight LookIn(std::size_t root, std::string_view relative);
  /// The folders of that relative name; null unless they have been listed.
  [[nodiscard]] const RelativeFolder* FindListed(std::string_view folder) const;

 private:
  /// A hash table with open addressing over atomic pointers, so that readers take no lock. When it
  /// is too full, a larger one replaces it; the old one is kept for threads that still read it.
  struct Table {
    explicit Table(std::size_t size)
        : mask(size - 1), slots(std::make_unique<std::atomic<RelativeFolder*>[]>(size)) {}
    std::size_t mask;  // a slot is a hash & mask: the size is a power of two
    std::unique_ptr<std::atomic<RelativeFolder*>[]> slots;
  };

  [[nodiscard]] RelativeFolder& FolderNamed(std::string_view name);
  [[nodiscard]] static RelativeFolder* Find(const Table& table, std::string_view name);
  [[nodiscard]] RelativeFolder& Add(std::string_view name);
  void Grow();
  static void Put(Table& table, RelativeFolder& folder);

  const SearchRoots roots;
  const LookupRules::Files files;
  std::atomic<Table*> current = nullptr;  // the last of tables; null when there is none
  std::mutex mutex;                       // guards what follows
  std::vector<std::unique_ptr<Table>> tables;
  std::vector<std::unique_ptr<RelativeFolder>> folders;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RULES_RELATIVE_LOOKUP_H
