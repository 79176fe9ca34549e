#ifndef SEARCHPATH_SRC_HOST_FOLDER_ITEM_STORE_H
#define SEARCHPATH_SRC_HOST_FOLDER_ITEM_STORE_H

#include "searchpath/model/path_item.h"

#include <atomic>
#include <cstddef>
#include <memory>
#include <utility>

namespace Corvane::PathManagement::host {

/// A pointer to `item`, an item of the entry `folder`, that keeps the entry alive. So an item needs
/// no reference count of its own, and a look-up changes only the count of the entry, which it
/// changes anyway.
template <class Folder>
[[nodiscard]] std::shared_ptr<const PathItem> ShareItem(const std::shared_ptr<Folder>& folder,
                                                        const PathItem& item) {
  return {folder, &item};
}

/// The items of a folder. Each is made when it is first asked for and then kept, so that the same
/// file is always the same object.
///
/// Threads: `Get` from any thread, without a lock.
/// Ownership: owns the items. Whoever gets one keeps the entry alive: see `ShareItem`.
/// Cost: one pointer for each file, from the first `Get` on.
class ItemStore {
 public:
  ItemStore() = default;
  ItemStore(const ItemStore&) = delete;
  ItemStore& operator=(const ItemStore&) = delete;
  ~ItemStore() {
    Slot* const all = slots.load(std::memory_order_relaxed);
    for (std::size_t index = 0; all != nullptr && index < count; ++index) {
      delete all[index].load(std::memory_order_relaxed);
    }
    delete[] all;
  }

  /// To be called once, before any `Get` or `Put`.
  void SetCount(std::size_t itemCount) noexcept { count = itemCount; }

  /// The item at `index`, made by make() when it is first asked for. When two threads make it at
  /// once, both get the one that is stored first.
  template <class Make>
  [[nodiscard]] const PathItem& Get(std::size_t index, const Make& make) {
    Slot& slot = Slots()[index];
    if (const PathItem* known = slot.load(std::memory_order_acquire)) return *known;
    auto made = std::make_unique<const PathItem>(make());
    const PathItem* winner = nullptr;
    if (slot.compare_exchange_strong(winner, made.get(), std::memory_order_acq_rel)) {
      winner = made.release();
    }
    return *winner;
  }

  /// Stores at `index` an item that was made before the folder was listed. When that raises, for
  /// lack of memory, `item` still owns it, as callers of the path may view it.
  /// Precondition: there is none at `index`.
  void Put(std::size_t index, std::unique_ptr<const PathItem>& item) {
    Slots()[index].store(item.release(), std::memory_order_release);
  }

 private:
  using Slot = std::atomic<const PathItem*>;

  Slot* Slots() {
    if (Slot* all = slots.load(std::memory_order_acquire)) return all;
    auto made = std::make_unique<Slot[]>(count);
    Slot* winner = nullptr;
    if (slots.compare_exchange_strong(winner, made.get(), std::memory_order_acq_rel)) {
      winner = made.release();
    }
    return winner;
  }

  std::size_t count = 0;
  std::atomic<Slot*> slots = nullptr;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_ITEM_STORE_H
