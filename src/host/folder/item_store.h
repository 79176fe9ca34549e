#ifndef SEARCHPATH_SRC_HOST_FOLDER_ITEM_STORE_H
#define SEARCHPATH_SRC_HOST_FOLDER_ITEM_STORE_H

#include "searchpath/model/path_item.h"

#include <atomic>
#include <cstddef>
#include <memory>
#include <utility>

namespace Corvane::PathManagement::host {

/// The items of a folder, each made when it is first asked for, so that the same file is always the
/// same object.
///
/// Threads: `Get` from any thread, without a lock.
/// Cost: one pointer for each file, from the first `Get` on.
class ItemStore {
 public:
  /// An item, and the pointer to it that is handed out and keeps both alive until it is released.
  /// All of this, with the count of owners, is one allocation, and a look-up reads nothing else.
  struct Kept {
    explicit Kept(PathItem&& newItem) : item(std::move(newItem)) {}
    std::shared_ptr<const PathItem> self;
    PathItem item;
  };
  struct Release {
    void operator()(Kept* kept) const noexcept {
      const std::shared_ptr<const PathItem> last = std::move(kept->self);
    }
  };
  /// An item that no store holds yet.
  using Loose = std::unique_ptr<Kept, Release>;

  [[nodiscard]] static Loose Keep(PathItem&& item) {
    const auto made = std::make_shared<Kept>(std::move(item));
    made->self = std::shared_ptr<const PathItem>(made, &made->item);
    return Loose(made.get());
  }

  ItemStore() = default;
  ItemStore(const ItemStore&) = delete;
  ItemStore& operator=(const ItemStore&) = delete;
  ~ItemStore() {
    Slot* const all = slots.load(std::memory_order_relaxed);
    for (std::size_t index = 0; all != nullptr && index < count; ++index) {
      if (Kept* const known = all[index].load(std::memory_order_relaxed)) Release()(known);
    }
    delete[] all;
  }

  /// To be called once, before any `Get`.
  void SetCount(std::size_t itemCount) noexcept { count = itemCount; }

  /// The item at `index`, made by make() when it is first asked for. When two threads make it at
  /// once, both get the one that is stored first. The reference is valid as long as this object.
  template <class Make>
  [[nodiscard]] const std::shared_ptr<const PathItem>& Get(std::size_t index, const Make& make) {
    Slot& slot = Slots()[index];
    if (const Kept* known = slot.load(std::memory_order_acquire)) return known->self;
    Loose made = Keep(make());
    Kept* winner = nullptr;
    if (slot.compare_exchange_strong(winner, made.get(), std::memory_order_acq_rel)) {
      winner = made.release();
    }
    return winner->self;
  }

  /// Stores an item that was made before the files were counted, for `index`, which has none.
  void Put(std::size_t index, Loose item) {
    Slots()[index].store(item.release(), std::memory_order_release);
  }

 private:
  using Slot = std::atomic<Kept*>;

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
