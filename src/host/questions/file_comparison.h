#ifndef SEARCHPATH_SRC_HOST_QUESTIONS_FILE_COMPARISON_H
#define SEARCHPATH_SRC_HOST_QUESTIONS_FILE_COMPARISON_H

#include "host/folder/open_path.h"

#include <sys/stat.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace Corvane::PathManagement::host {

/// A file on disk that is compared with others: asked about and opened when that is first needed.
///
/// Threads: not synchronised.
class ComparedFile {
 public:
  using Block = std::array<char, 32 * std::size_t{1024}>;

  explicit ComparedFile(std::string nativePath) : path(std::move(nativePath)) {}

  /// What the disk says of it; null when it cannot be asked or is no regular file (any more).
  [[nodiscard]] const struct stat* Ask();

  /// The bytes from `offset` on, as many as the block takes unless the file ends; empty optional
  /// when they cannot be read. Views the block.
  [[nodiscard]] std::optional<std::string_view> Read(std::uint64_t offset, Block& block);

  /// Why it could not be asked or read.
  [[nodiscard]] std::error_code GetError() const noexcept { return error; }

 private:
  [[nodiscard]] bool Fail(int number) noexcept;
  [[nodiscard]] bool Open();

  std::string path;
  struct stat status = {};
  bool wasAsked = false;
  Descriptor file{-1};
  std::error_code error;
};

/// What comparing two files says of the second.
enum class Sameness : std::uint8_t { SameFile, SameBytes, OtherBytes, Unknown };

/// Whether they are one file on disk; not when one of them cannot be asked.
[[nodiscard]] bool AreOneFile(ComparedFile& first, ComparedFile& second);

/// Compares by identity, size and bytes, in this order, as far as it must. `Unknown` when one of the
/// two has an error.
[[nodiscard]] Sameness CompareFiles(ComparedFile& first, ComparedFile& second);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_QUESTIONS_FILE_COMPARISON_H
