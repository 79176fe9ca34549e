#ifndef SEARCHPATH_SRC_HOST_OPEN_PATH_H
#define SEARCHPATH_SRC_HOST_OPEN_PATH_H

#include <unistd.h>

#include <string>
#include <utility>

namespace Corvane::PathManagement::host {

/// Owns a file descriptor.
class Descriptor {
 public:
  explicit Descriptor(int opened) noexcept : number(opened) {}
  Descriptor(Descriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number, other.number);
    return *this;
  }
  ~Descriptor() {
    if (number >= 0) close(number);
  }

  [[nodiscard]] bool IsOpen() const noexcept { return number >= 0; }
  [[nodiscard]] int Get() const noexcept { return number; }
  [[nodiscard]] int Release() noexcept { return std::exchange(number, -1); }

 private:
  int number;  // -1 when there is none
};

/// Opens a path that may be longer than the kernel takes at once, piece by piece, the last piece
/// with `flags`. Holds two descriptors at most. Not open on failure; errno then says why.
[[nodiscard]] Descriptor OpenPath(const std::string& path, int flags);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_OPEN_PATH_H
