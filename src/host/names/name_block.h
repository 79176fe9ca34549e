#ifndef SEARCHPATH_SRC_HOST_NAMES_NAME_BLOCK_H
#define SEARCHPATH_SRC_HOST_NAMES_NAME_BLOCK_H

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace Corvane::PathManagement::host {

/// Names as the disk gives them, one after the other in one block, each ended by a NUL. This object
/// either owns the block or views one that outlives it; adding a name to a viewed block copies the
/// block first. `kSlack` bytes after the last NUL may be read as well, so that names can be
/// compared a word at a time.
class NameBlock {
 public:
  static constexpr std::size_t kSlack = 7;  // for a word of 8 bytes that begins at the last NUL

  NameBlock() = default;
  /// Views the `nameCount` names of `block`, which begin at `nameBegins`. Precondition: `block`
  /// ends with the NUL of the last name, and `kSlack` bytes after it may be read.
  NameBlock(std::string_view block, const std::uint32_t* nameBegins, std::size_t nameCount) noexcept
      : bytes(block.data()), byteCount(block.size()), begins(nameBegins), count(nameCount) {}
  NameBlock(const NameBlock& other)
      : NameBlock({other.bytes, other.byteCount}, other.begins, other.count) {
    if (other.IsOwner()) CopyViewed();
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
    if (!IsOwner()) CopyViewed();
    ownBegins.push_back(static_cast<std::uint32_t>(byteCount));
    ownBytes.resize(byteCount);  // without the slack
    ownBytes.insert(ownBytes.end(), name.begin(), name.end());
    ownBytes.resize(ownBytes.size() + 1 + kSlack);  // the NUL and the slack
    ViewOwn();
  }

  [[nodiscard]] std::size_t size() const noexcept { return count; }

  [[nodiscard]] std::string_view operator[](std::size_t index) const noexcept {
    const std::size_t end = index + 1 < count ? begins[index + 1] : byteCount;
    return {bytes + begins[index], end - begins[index] - 1};
  }

  void ShrinkToFit() {
    ownBytes.shrink_to_fit();
    ownBegins.shrink_to_fit();
    if (IsOwner()) ViewOwn();
  }

 private:
  [[nodiscard]] bool IsOwner() const noexcept { return !ownBegins.empty(); }

  /// Makes a block of its own from the one that is viewed.
  void CopyViewed() {
    ownBytes.assign(bytes, bytes + byteCount);
    ownBytes.resize(byteCount + kSlack);
    ownBegins.assign(begins, begins + count);
    ViewOwn();
  }

  void ViewOwn() noexcept {
    bytes = ownBytes.data();
    byteCount = ownBytes.size() - kSlack;
    begins = ownBegins.data();
    count = ownBegins.size();
  }

  std::vector<char> ownBytes;             // the own block, with the slack
  std::vector<std::uint32_t> ownBegins;   // empty: there is no own block
  const char* bytes = nullptr;            // the block, own or viewed
  std::size_t byteCount = 0;              // of the block, without the slack
  const std::uint32_t* begins = nullptr;  // for each name, where it begins in `bytes`
  std::size_t count = 0;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_NAMES_NAME_BLOCK_H
