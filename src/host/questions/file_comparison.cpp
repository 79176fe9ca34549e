#include "host/questions/file_comparison.h"

#include <fcntl.h>

#include <cerrno>
#include <memory>

namespace Corvane::PathManagement::host {

void ComparedFile::Fail(int systemError) noexcept {
  error = std::error_code(systemError, std::generic_category());
}

const struct stat* ComparedFile::GetStatus() {
  if (!wasAsked) {
    wasAsked = true;
    if (stat(path.c_str(), &status) != 0) {
      // The path may be too long for the kernel in one piece.
      const Descriptor place = OpenPath(path, O_PATH);
      if (!place.IsOpen() || fstat(place.Get(), &status) != 0) Fail(errno);
    }
    // What was listed as a file may have been replaced since.
    if (!error && !S_ISREG(status.st_mode)) Fail(EINVAL);
  }
  return error ? nullptr : &status;
}

bool ComparedFile::Open() {
  if (file.IsOpen()) return true;
  if (error) return false;
  // With these flags, opening never waits, whatever stands there by now.
  file = OpenPath(path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
  if (!file.IsOpen()) Fail(errno);
  return file.IsOpen();
}

std::optional<std::string_view> ComparedFile::Read(std::uint64_t offset, Block& block) {
  if (!Open()) return std::nullopt;
  std::size_t size = 0;
  while (size < block.size()) {
    const ssize_t got = fl::filesystem::detail::WithoutInterruption([&] {
      return pread(file.Get(), block.data() + size, block.size() - size,
                   static_cast<off_t>(offset + size));
    });
    if (got < 0) {
      Fail(errno);
      return std::nullopt;
    }
    if (got == 0) break;
    size += static_cast<std::size_t>(got);
    // Spares a further read, if the size is right. Files of the kernel may state 0, and are read
    // until nothing comes.
    if (offset + size == static_cast<std::uint64_t>(status.st_size)) break;
  }
  return std::string_view(block.data(), size);
}

bool AreOneFile(ComparedFile& first, ComparedFile& second) {
  const struct stat* const left = first.GetStatus();
  const struct stat* const right = second.GetStatus();
  return left != nullptr && right != nullptr && left->st_dev == right->st_dev &&
         left->st_ino == right->st_ino;
}

FileRelation CompareFiles(ComparedFile& first, ComparedFile& second) {
  if (AreOneFile(first, second)) return FileRelation::SameFile;
  const struct stat* const left = first.GetStatus();
  const struct stat* const right = second.GetStatus();
  if (left == nullptr || right == nullptr) return FileRelation::Unknown;
  if (left->st_size != right->st_size) return FileRelation::OtherBytes;
  // On the heap: threads may have small stacks.
  const auto blocks = std::make_unique_for_overwrite<std::array<ComparedFile::Block, 2>>();
  for (std::uint64_t offset = 0;; offset += blocks->front().size()) {
    const auto leftBytes = first.Read(offset, blocks->front());
    const auto rightBytes = second.Read(offset, blocks->back());
    if (!leftBytes || !rightBytes) return FileRelation::Unknown;
    if (*leftBytes != *rightBytes) return FileRelation::OtherBytes;
    if (leftBytes->size() < blocks->front().size()) return FileRelation::SameBytes;
  }
}

}  // namespace Corvane::PathManagement::host
