#ifndef SEARCHPATH_SRC_HOST_PATH_INDEXED_ITEMS_H
#define SEARCHPATH_SRC_HOST_PATH_INDEXED_ITEMS_H

#include "searchpath/model/path_item.h"

#include <atomic>
#include <cstddef>
#include <memory>

namespace Corvane::PathManagement::host {

/// For each name in an index, a pointer to the item of the first file of that name, set when it is
/// first asked for. A look-up that is repeated takes the item from here, without a detour through
/// its folder.
///
/// Threads: `Get` from any thread, without a lock.
/// Ownership: none; the folders own their items and must outlive this.
/// Cost: one pointer for each number of a name in the index, from the first `Get` on.
class IndexedItems {
 public:
  IndexedItems() = default;
  IndexedItems(const IndexedItems&) = delete;
  IndexedItems& operator=(const IndexedItems&) = delete;
  ~IndexedItems() { delete[] slots.load(std::memory_order_relaxed); }

  /// The item for the name with the number `index`, which is below `count`. When the item is first
  /// asked for, it is taken from find(), perhaps by several threads at once. Precondition: `count`
  /// is the same at every call, and find() returns the same object for the same `index`.
  template <class Find>
  [[nodiscard]] const PathItem& Get(std::size_t index, std::size_t count, const Find& find) {
    Slot& slot = Slots(count)[index];
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
