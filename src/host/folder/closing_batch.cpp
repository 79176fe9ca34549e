#include "host/folder/closing_batch.h"

#include <unistd.h>

#include <algorithm>

namespace Corvane::PathManagement::host {

namespace {

/// Closes the descriptors from `first` to `last`, all of which are the caller's.
void CloseFromTo(int first, int last) noexcept {
  const fl::filesystem::detail::CancellationPause pause;
  // Closing a range is new in Linux 5.9; a sandbox may forbid it as well.
  const bool isClosed = first < last && close_range(static_cast<unsigned>(first),
                                                    static_cast<unsigned>(last), 0) == 0;
  for (; !isClosed && first <= last; ++first) close(first);
}

}  // namespace

void ClosingBatch::Add(fl::filesystem::detail::Descriptor descriptor) noexcept {
  if (!descriptor.IsOpen()) return;
  if (count == numbers.size()) CloseAll();
  numbers[count++] = descriptor.Release();
}

void ClosingBatch::CloseAll() noexcept {
  const auto end = numbers.begin() + count;
  std::sort(numbers.begin(), end);
  for (auto first = numbers.begin(); first != end;) {
    auto last = first;
    while (last + 1 != end && last[1] == *last + 1) ++last;
    CloseFromTo(*first, *last);
    first = last + 1;
  }
  count = 0;
}

}  // namespace Corvane::PathManagement::host
