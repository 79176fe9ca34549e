#ifndef SEARCHPATH_SRC_HOST_PATH_KNOWN_ITEMS_H
#define SEARCHPATH_SRC_HOST_PATH_KNOWN_ITEMS_H

#include "searchpath/model/path_item.h"

#include <atomic>
#include <cstddef>
#include <memory>

namespace Corvane::PathManagement::host {

/// Where the items of all files of a path are, once they have been asked for: a look-up that comes
/// again reaches its item without a way through the folder.
///
/// Threads: `Get` from any thread, without a lock.
/// Ownership: none; the folders own their items and must outlive this.
/// Cost: one pointer for each file, from the first `Get` on.
class KnownItems {
 public:
  using Item = std::shared_ptr<const PathItem>;

  KnownItems() = default;
  KnownItems(const KnownItems&) = delete;
  KnownItems& operator=(const KnownItems&) = delete;
  ~KnownItems() { delete[] places.load(std::memory_order_relaxed); }

  /// The item of the file `record` of `count`, which `find` finds when it is not known: always the
  /// same one.
  template <class Find>
  [[nodiscard]] const Item& Get(std::size_t record, std::size_t count, const Find& find) {
    std::atomic<const Item*>& place = Places(count)[record];
    const Item* item = place.load(std::memory_order_acquire);
    if (item == nullptr) {
      item = &find();
      place.store(item, std::memory_order_release);
    }
    return *item;
  }

 private:
  using Place = std::atomic<const Item*>;

  Place* Places(std::size_t count) {
    if (Place* all = places.load(std::memory_order_acquire)) return all;
    auto made = std::make_unique<Place[]>(count);
    Place* winner = nullptr;
    if (places.compare_exchange_strong(winner, made.get(), std::memory_order_acq_rel)) {
      winner = made.release();
    }
    return winner;
  }

  std::atomic<Place*> places = nullptr;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_PATH_KNOWN_ITEMS_H
