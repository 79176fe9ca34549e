#include "platform/atomic_file_writer.h"

#include "platform/descriptor.h"
#include "platform/descriptor_buffer.h"
#include "platform/native_path.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <random>

namespace fl::filesystem::detail {

namespace {

constexpr mode_t kModeOfNewFiles = 0666;
constexpr mode_t kPermissions = 0777;
constexpr int kMostNames = 100;  // a second one is needed once in a world's life

/// The file that is to be written.
struct Target {
  [[nodiscard]] std::system_error Error(int error, std::string_view complaint) const {
    return PathError(error, complaint, path);
  }

  std::string path;  // as it was given
  std::string name = path.substr(path.rfind('/') + 1);
};

/// The folder is held open from the start, so that all steps happen in one and the same, wherever
/// its path leads by then. Only searching it takes no permission to read it.
int OpenFolder(const Target& target) {
  if (target.path.find('\0') != std::string::npos) throw target.Error(EINVAL, "cannot write");
  std::string folder = target.path.substr(0, target.path.size() - target.name.size());
  if (folder.empty()) folder = ".";
  const int opened =
      WithoutInterruption([&] { return open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC); });
  if (opened < 0) throw target.Error(errno, "cannot open the folder of");
  return opened;
}

/// The permissions of the file that is going to be replaced; empty when there is none.
std::optional<mode_t> OldPermissions(const Target& target, const Descriptor& folder) {
  if (target.name.empty()) {
    throw target.Error(target.path.empty() ? ENOENT : EISDIR, "cannot write");
  }
  struct stat status = {};
  if (fstatat(folder.Get(), target.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
    if (errno != ENOENT) throw target.Error(errno, "cannot examine");
    return std::nullopt;
  }
  if (S_ISLNK(status.st_mode)) return std::nullopt;
  if (S_ISDIR(status.st_mode)) throw target.Error(EISDIR, "cannot replace");
  if (!S_ISREG(status.st_mode)) {
    // A rename would take a FIFO or a socket away from those who use it.
    throw PathError(ENOTSUP, "cannot replace", target.path, ", which is no regular file");
  }
  return status.st_mode & kPermissions;
}

/// A file beside the target, removed again unless it has taken the target's place.
class Temporary {
 public:
  Temporary(const Target& target, const Descriptor& containingFolder, std::string_view prefix,
            std::string_view suffix)
      : folder(containingFolder), descriptor(-1) {
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    const std::optional<mode_t> old = OldPermissions(target, folder);
    for (int names = 0; !descriptor.IsOpen(); ++names) {
      if (names == kMostNames) throw target.Error(EEXIST, "cannot create a file beside");
      name = RandomFilename(prefix, suffix);
      descriptor = Descriptor(WithoutInterruption([&] {
        return openat(folder.Get(), name.c_str(), flags, old.value_or(kModeOfNewFiles));
      }));
      if (!descriptor.IsOpen() && errno != EEXIST) {
        throw target.Error(errno, "cannot create a file beside");
      }
    }
    // The umask may have narrowed them. Where they cannot be set they stay narrow, which is safe.
    if (old) static_cast<void>(fchmod(descriptor.Get(), *old));
  }
  Temporary(const Temporary&) = delete;
  Temporary& operator=(const Temporary&) = delete;
  ~Temporary() {
    if (!isInPlace) unlinkat(folder.Get(), name.c_str(), 0);
  }

  [[nodiscard]] int Get() const noexcept { return descriptor.Get(); }

  /// Brings the content to the disk before the name leads to it: no power cut finds an empty file.
  void PutInPlace(const Target& target) {
    if (WithoutInterruption([&] { return fsync(descriptor.Get()); }) != 0) {
      throw target.Error(errno, "cannot bring to the disk");
    }
    if (const int error = descriptor.Close(); error != 0) throw target.Error(error, "cannot close");
    if (renameat(folder.Get(), name.c_str(), folder.Get(), target.name.c_str()) != 0) {
      throw target.Error(errno, "cannot put in place");
    }
    isInPlace = true;
  }

 private:
  const Descriptor& folder;
  std::string name;
  Descriptor descriptor;
  bool isInPlace = false;
};

/// The file is in place, so a failure here is none: some file systems cannot do it.
void SyncFolder(const Descriptor& folder) {
  const Descriptor readable(WithoutInterruption(
      [&] { return openat(folder.Get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
  if (readable.IsOpen()) WithoutInterruption([&] { return fsync(readable.Get()); });
}

}  // namespace

struct AtomicFileWriter::Parts {
  Parts(std::string_view targetPath, std::string_view prefix, std::string_view suffix)
      : target{std::string(targetPath)},
        folder(OpenFolder(target)),
        temporary(target, folder, prefix, suffix),
        buffer(temporary.Get()),
        stream(&buffer) {
    stream.exceptions(std::ios_base::failbit | std::ios_base::badbit);
  }

  Target target;
  Descriptor folder;
  Temporary temporary;
  DescriptorBuffer buffer;
  std::ostream stream;
};

AtomicFileWriter::AtomicFileWriter(std::string_view target, std::string_view prefix,
                                   std::string_view suffix)
    : parts(std::make_unique<Parts>(target, prefix, suffix)) {}

AtomicFileWriter::~AtomicFileWriter() = default;

std::ostream& AtomicFileWriter::Stream() noexcept { return parts->stream; }

void AtomicFileWriter::Commit() {
  if (!parts->buffer.Flush()) throw parts->target.Error(parts->buffer.FirstError(), "cannot write");
  // Somebody switched the stream's exceptions off, and has not looked at it since.
  if (parts->stream.fail()) throw parts->target.Error(EIO, "cannot write all of");
  parts->temporary.PutInPlace(parts->target);
  SyncFolder(parts->folder);
}

std::string RandomFilename(std::string_view prefix, std::string_view suffix) {
  constexpr std::string_view digits = "0123456789abcdef";
  static_assert(std::random_device::max() == 0xFFFFFFFF);
  std::random_device source;
  std::string name(prefix);
  for (int half = 0; half < 2; ++half) {
    const std::uint32_t bits = source();
    for (int shift = 28; shift >= 0; shift -= 4) name.push_back(digits[(bits >> shift) & 0xF]);
  }
  return name.append(suffix);
}

}  // namespace fl::filesystem::detail
