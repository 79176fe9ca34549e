#ifndef SEARCHPATH_SRC_HOST_NAMES_NAME_BLOCK_H
#define SEARCHPATH_SRC_HOST_NAMES_NAME_BLOCK_H

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace Corvane::PathManagement::host {

/// Names as the disk gives them, one behind the other in one block, each ended by a NUL. This
/// object either owns the block or views one that outlives it; adding a name to a viewed block
/// copies the block first. `kSlack` bytes behind the last name may be read as well, so that names
/// can be compared a word at a time.
class NameBlock {
 public:
  static constexpr std::size_t kSlack = 7;

  NameBlock() = default;
  /// Views the names of `block` that begin at `nameBegins`. Precondition: `kSlack` bytes behind
  /// `block` may be read.
  NameBlock(std::string_view block, const std::uint32_t* nameBegins, std::size_t nameCount) noexcept
      : bytes(block.data()), byteCount(block.size()), begins(nameBegins), count(nameCount) {}
  NameBlock(const NameBlock& other)
      : NameBlock({other.bytes, other.byteCount}, other.begins, other.count) {
    if (other.IsOwner()) TakeOver();
  }
  // Moving leaves the bytes where they are, so views of the names stay valid.
  NameBlock(NameBlock&&) noexcept = default;
  NameBlock& operator=(NameBlock other) noexcept {
    std::swap(ownBytes, other.ownBytes);
    std::swap(ownBegins, other.ownBegins);
    bytes = other.bytes;
    byteCount = other.byteCount;
    begins = other.begins;
    count = other.count;
    return *this;
  }
  ~NameBlock() = default;

  void Add(std::string_view name) {
    if (!IsOwner()) TakeOver();
    ownBegins.push_back(static_cast<std::uint32_t>(byteCount));
    ownBytes.resize(byteCount);  // without the slack
    ownBytes.insert(ownBytes.end(), name.begin(), name.end());
    ownBytes.resize(ownBytes.size() + 1 + kSlack);  // the NUL and the slack
    View();
  }

  [[nodiscard]] std::size_t size() const noexcept { return count; }

  [[nodiscard]] std::string_view operator[](std::size_t index) const noexcept {
    const std::size_t end = index + 1 < count ? begins[index + 1] : byteCount;
    return {bytes + begins[index], end - begins[index] - 1};
  }

  void ShrinkToFit() {
    ownBytes.shrink_to_fit();
    ownBegins.shrink_to_fit();
    if (IsOwner()) View();
  }

 private:
  [[nodiscard]] bool IsOwner() const noexcept { return !ownBegins.empty(); }

  void TakeOver() {
    ownBytes.assign(bytes, bytes + byteCount);
    ownBytes.resize(byteCount + kSlack);
    ownBegins.assign(begins, begins + count);
    View();
  }

  void View() noexcept {
    bytes = ownBytes.data();
    byteCount = ownBytes.size() - kSlack;
    begins = ownBegins.data();
    count = ownBegins.size();
  }

  std::vector<char> ownBytes;
  std::vector<std::uint32_t> ownBegins;
  const char* bytes = nullptr;
  std::size_t byteCount = 0;
  const std::uint32_t* begins = nullptr;  // for each name, where it begins in `bytes`
  std::size_t count = 0;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_NAMES_NAME_BLOCK_H
