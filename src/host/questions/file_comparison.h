#ifndef SEARCHPATH_SRC_HOST_QUESTIONS_FILE_COMPARISON_H
#define SEARCHPATH_SRC_HOST_QUESTIONS_FILE_COMPARISON_H

#include "host/folder/open_path.h"
#include "searchpath/model/path_entry.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace Corvane::PathManagement::host {

/// A folder whose files are compared. They are reached from the open folder, so that the kernel
/// does not walk the whole path for each of them.
class ComparedFolder {
 public:
  explicit ComparedFolder(std::string nativePath)
      : path(std::move(nativePath)),
        folder(path.empty() ? Descriptor(-1) : OpenPath(path, O_PATH | O_DIRECTORY)) {}

  [[nodiscard]] bool IsOnDisk() const noexcept { return !path.empty(); }

  /// Where to begin the walk to a file of the folder, and the path from there. From the working
  /// folder, if this folder could not be opened: the walk then reports why. The path is "", which
  /// leads nowhere, when this folder is not on disk.
  [[nodiscard]] int GetStart() const noexcept { return folder.IsOpen() ? folder.Get() : AT_FDCWD; }
  [[nodiscard]] std::string GetPathTo(const std::string& file) const {
    if (folder.IsOpen()) return file;
    return IsOnDisk() ? path + '/' + file : std::string();
  }

 private:
  std::string path;  // native; empty when it is not on disk
  Descriptor folder;
};

/// Opens folders whose files are compared, and keeps the last ones open: neighbouring files mostly
/// lie in the same folders.
///
/// Threads: all operations, from any thread.
class ComparedFolders {
 public:
  [[nodiscard]] std::shared_ptr<const ComparedFolder> Get(
      const std::shared_ptr<const IPathEntry>& entry);

 private:
  struct Opened {
    std::shared_ptr<const IPathEntry> entry;
    std::shared_ptr<const ComparedFolder> folder;
  };

  std::mutex mutex;  // guards what follows
  std::array<Opened, 8> last;
  std::size_t oldest = 0;  // the index in `last`
};

/// A file on disk that is compared with others. Its status is asked for, and the file is opened,
/// when that is first needed.
///
/// Threads: not synchronised.
class ComparedFile {
 public:
  ComparedFile(std::shared_ptr<const ComparedFolder> folderOfFile, const std::string& name)
      : folder(std::move(folderOfFile)), path(folder->GetPathTo(name)) {}

  /// Its status on disk; null when there is none, or when it is no regular file (any more).
  [[nodiscard]] const struct stat* GetStatus();

  /// The bytes from `offset` on, as many as the block takes unless the file ends before; no value
  /// when they cannot be read. Views the block.
  [[nodiscard]] std::optional<std::string_view> Read(std::uint64_t offset, std::span<char> block);

  /// Why its status or its bytes could not be had; no error if they could.
  [[nodiscard]] std::error_code GetError() const noexcept { return error; }

 private:
  void Fail(int systemError) noexcept;
  [[nodiscard]] bool Open();

  std::shared_ptr<const ComparedFolder> folder;
  std::string path;  // from folder->GetStart() on
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
