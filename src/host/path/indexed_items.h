#ifndef SEARCHPATH_SRC_HOST_PATH_INDEXED_ITEMS_H
#define SEARCHPATH_SRC_HOST_PATH_INDEXED_ITEMS_H

#include "searchpath/model/path_item.h"

#include <atomic>
#include <cstddef>
#include <memory>

namespace Corvane::PathManagement::host {

/// Pointers to the items of the first files of their names in an index, by the number of the name,
/// each set when its item is first asked for: a look-up that comes again takes the item from here,
/// without a detour through its folder.
///
/// Threads: `Get` from any thread, without a lock.
/// Ownership: none; the folders own their items and must outlive this.
/// Cost: one pointer for each slot of the index, from the first `Get` on.
class IndexedItems {
 public:
  IndexedItems() = default;
  IndexedItems(const IndexedItems&) = delete;
  IndexedItems& operator=(const IndexedItems&) = delete;
  ~IndexedItems() { delete[] slots.load(std::memory_order_relaxed); }

  /// The item at `place` of `count`, a number that never changes. When it has not been asked for
  /// before, `find` returns a reference to it, the same one at every call.
  template <class Find>
  [[nodiscard]] const PathItem& Get(std::size_t place, std::size_t count, const Find& find) {
    Slot& slot = Slots(count)[place];
    const PathItem* item = slot.load(std::memory_order_acquire);
    if (item == nullptr) {
      item = &find();
      slot.store(item, std::memory_order_release);
    }
    return *item;
  }

 private:
  using Slot = std::atomic<const PathItem*>;

  Slot* Slots(std::size_t count) {
    if (Slot* all = slots.load(std::memory_order_acquire)) return all;
    auto made = std::make_unique<Slot[]>(count);
    Slot* winner = nullptr;
    if (slots.compare_exchange_strong(winner, made.get(), std::memory_order_acq_rel)) {
      winner = made.release();
    }
    return winner;
  }

  std::atomic<Slot*> slots = nullptr;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_PATH_INDEXED_ITEMS_H
