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

/// A file on disk that is compared with others. Its status is asked for, and the file is opened,
/// when that is first needed.
///
/// Threads: not synchronised.
class ComparedFile {
 public:
  using Block = std::array<char, 32 * std::size_t{1024}>;

  explicit ComparedFile(std::string nativePath) : path(std::move(nativePath)) {}

  /// Its status on disk; null when there is none, or when it is no regular file (any more).
  [[nodiscard]] const struct stat* GetStatus();

  /// The bytes from `offset` on, as many as the block takes unless the file ends before; no value
  /// when they cannot be read. Views the block.
  [[nodiscard]] std::optional<std::string_view> Read(std::uint64_t offset, Block& block);

  /// Why its status or its bytes could not be had; no error if they could.
  [[nodiscard]] std::error_code GetError() const noexcept { return error; }

 private:
  void Fail(int systemError) noexcept;
  [[nodiscard]] bool Open();

  std::string path;
  struct stat status = {};
  bool wasAsked = false;  // for its status
  Descriptor file{-1};
  std::error_code error;
};

/// What one file is to another. `Unknown`: one of them cannot be read.
enum class FileRelation : std::uint8_t { SameFile, SameBytes, OtherBytes, Unknown };

/// Whether they are one file on disk; false when the status of one cannot be had.
[[nodiscard]] bool AreOneFile(ComparedFile& first, ComparedFile& second);

/// Compares by identity, then by size, then by bytes, and reads no further than it must. `Unknown`
/// when one of the two has an error.
[[nodiscard]] FileRelation CompareFiles(ComparedFile& first, ComparedFile& second);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_QUESTIONS_FILE_COMPARISON_H
