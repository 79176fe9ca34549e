#include "searchpath/platform/atomic_file_writer.h"

#include "platform/descriptor.h"
#include "platform/descriptor_buffer.h"
#include "platform/native_path.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <string>

namespace fl::filesystem {

namespace {

using detail::Descriptor;
using detail::NativeBytes;
using detail::PathError;
using detail::WithoutInterruption;

constexpr mode_t kModeOfNewFiles = 0666;
constexpr mode_t kPermissions = 0777;  // without set-ID bits: the owner may be another one now
constexpr int kMostTries = 100;        // of a free name; even the second is hardly ever needed

/// The permissions of the regular file that is to be replaced; nullopt when the target is a link or
/// does not exist. Raises when the target must not be replaced.
std::optional<mode_t> OldPermissions(const std::string& target) {
  if (target.empty() || target.ends_with('/')) {
    throw PathError(target.empty() ? ENOENT : EISDIR, "cannot write", target);
  }
  struct stat status = {};
  if (lstat(target.c_str(), &status) != 0) {
    if (errno != ENOENT) throw PathError(errno, "cannot examine", target);
    return std::nullopt;
  }
  if (S_ISLNK(status.st_mode)) return std::nullopt;
  if (S_ISDIR(status.st_mode)) throw PathError(EISDIR, "cannot replace", target);
  if (!S_ISREG(status.st_mode)) {
    // A rename would take a FIFO or a socket away from those who use it.
    throw PathError(ENOTSUP, "cannot replace", target, ", which is no regular file");
  }
  return status.st_mode & kPermissions;
}

/// Brings the new name to the disk. Failures are ignored: the file is already in place, and some
/// file systems cannot sync a folder.
void SyncFolder(const path& folder) {
  const std::string name = folder.native().empty() ? "." : NativeBytes(folder.native());
  const Descriptor readable(
      WithoutInterruption([&] { return open(name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
  if (readable.IsOpen()) WithoutInterruption([&] { return fsync(readable.Get()); });
}

/// A file beside the target. Its destructor removes it unless `PutInPlace` has succeeded.
class Temporary {
 public:
  Temporary(const path& targetFile, const ustring& prefix, const ustring& suffix)
      : target(targetFile), targetBytes(NativeBytes(target.native())), descriptor(-1) {
    const std::optional<mode_t> old = OldPermissions(targetBytes);
    for (int tries = 0; !descriptor.IsOpen(); ++tries) {
      if (tries == kMostTries) throw Error(EEXIST, "cannot create a file beside");
      name = filesystem::tmpnam(folder, prefix, suffix);
      Create(old.value_or(kModeOfNewFiles));
    }
    // The umask may have taken permissions away. A failure to restore them is safe: fewer remain.
    if (old) static_cast<void>(fchmod(descriptor.Get(), *old));
  }
  Temporary(const Temporary&) = delete;
  Temporary& operator=(const Temporary&) = delete;
  ~Temporary() {
    if (isToRemove) filesystem::remove(name);  // raises nothing
  }

  [[nodiscard]] int Get() const noexcept { return descriptor.Get(); }

  [[nodiscard]] std::system_error Error(int error, std::string_view complaint) const {
    return PathError(error, complaint, targetBytes);
  }

  /// Brings the content to the disk first, then renames the file, then brings the name to the disk:
  /// so the target is never an empty file after a power cut.
  void PutInPlace() {
    if (WithoutInterruption([&] { return fsync(descriptor.Get()); }) != 0) {
      throw Error(errno, "cannot bring to the disk");
    }
    if (const int error = descriptor.Close(); error != 0) throw Error(error, "cannot close");
    try {
      filesystem::rename(name, target);
    } catch (const std::system_error& failure) {
      throw Error(failure.code().value(), "cannot put in place");
    }
    isToRemove = false;
    SyncFolder(folder);
  }

 private:
  /// Creates the file `name`. Leaves the descriptor closed when a file of that name exists.
  void Create(mode_t mode) {
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    const std::string bytes = NativeBytes(name.native());
    descriptor = Descriptor(WithoutInterruption([&] { return open(bytes.c_str(), flags, mode); }));
    isToRemove = descriptor.IsOpen();
    if (!isToRemove && errno != EEXIST) throw Error(errno, "cannot create a file beside");
  }

  path target;
  std::string targetBytes;
  path folder = detail::extract_parent_path(target);
  path name;
  Descriptor descriptor;
  bool isToRemove = false;
};

}  // namespace

struct AtomicFileWriter::Parts {
  Parts(const path& targetFile, const ustring& prefix, const ustring& suffix)
      : temporary(targetFile, prefix, suffix), buffer(temporary.Get()), stream(&buffer) {
    stream.exceptions(std::ios_base::failbit | std::ios_base::badbit);
  }

  Temporary temporary;
  detail::DescriptorBuffer buffer;
  std::ostream stream;
};

AtomicFileWriter::AtomicFileWriter(const path& targetFile, const ustring& prefix,
                                   const ustring& suffix)
    : parts(std::make_unique<Parts>(targetFile, prefix, suffix)) {}

AtomicFileWriter::~AtomicFileWriter() = default;

std::ostream& AtomicFileWriter::Stream() noexcept { return parts->stream; }

void AtomicFileWriter::Commit() {
  Temporary& temporary = parts->temporary;
  if (!parts->buffer.Flush()) throw temporary.Error(parts->buffer.FirstError(), "cannot write");
  // The stream failed though the buffer did not, and the caller has overlooked it, with the
  // stream's exceptions caught or switched off.
  if (parts->stream.fail()) throw temporary.Error(EIO, "cannot write all of");
  temporary.PutInPlace();
}

}  // namespace fl::filesystem
