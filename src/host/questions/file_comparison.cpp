#include "host/questions/file_comparison.h"

#include <algorithm>
#include <cerrno>
#include <memory>

namespace Corvane::PathManagement::host {

namespace {

/// How many bytes of a file with this status are compared at once: a small file is read whole, and
/// one byte more, which tells where it ends.
std::size_t BlockSizeFor(const struct stat& status) {
  constexpr off_t most = off_t{32} * 1024;
  // A file of the kernel may state 0.
  return static_cast<std::size_t>(status.st_size == 0 ? most : std::min(status.st_size + 1, most));
}

}  // namespace

std::shared_ptr<const ComparedFolder> ComparedFolders::Get(
    const std::shared_ptr<const IPathEntry>& entry) {
  {
    const std::lock_guard lock(mutex);
    for (const Opened& opened : last) {
      if (opened.entry == entry) return opened.folder;
    }
  }
  // Without the lock, as the disk may be slow; at worst, two threads open the folder.
  auto folder =
      std::make_shared<const ComparedFolder>(NativeBytes(entry->GetAbsoluteIRI()).value_or(""));
  const std::lock_guard lock(mutex);
  last[oldest] = {entry, folder};
  oldest = (oldest + 1) % last.size();
  return folder;
}

void ComparedFile::Fail(int systemError) noexcept {
  error = std::error_code(systemError, std::generic_category());
}

const struct stat* ComparedFile::GetStatus() {
  if (!wasAsked) {
    wasAsked = true;
    if (fstatat(folder->GetStart(), path.c_str(), &status, 0) != 0) Fail(errno);
    // What was listed as a file may have been replaced since.
    if (!error && !S_ISREG(status.st_mode)) Fail(EINVAL);
  }
  return error ? nullptr : &status;
}

bool ComparedFile::Open() {
  if (file.IsOpen()) return true;
  if (error) return false;
  // With these flags, opening never waits, whatever stands there by now.
  constexpr int flags = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
  file = Descriptor(openat(folder->GetStart(), path.c_str(), flags));
  if (!file.IsOpen()) Fail(errno);
  return file.IsOpen();
}

std::optional<std::string_view> ComparedFile::Read(std::uint64_t offset, std::span<char> block) {
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
  const std::size_t size = BlockSizeFor(*left);
  // On the heap: threads may have small stacks.
  const auto blocks = std::make_unique_for_overwrite<char[]>(2 * size);
  for (std::uint64_t offset = 0;; offset += size) {
    const auto leftBytes = first.Read(offset, {blocks.get(), size});
    const auto rightBytes = second.Read(offset, {blocks.get() + size, size});
    if (!leftBytes || !rightBytes) return FileRelation::Unknown;
    if (*leftBytes != *rightBytes) return FileRelation::OtherBytes;
    if (leftBytes->size() < size) return FileRelation::SameBytes;
  }
}

}  // namespace Corvane::PathManagement::host
