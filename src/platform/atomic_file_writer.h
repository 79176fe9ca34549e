#ifndef SEARCHPATH_SRC_PLATFORM_ATOMIC_FILE_WRITER_H
#define SEARCHPATH_SRC_PLATFORM_ATOMIC_FILE_WRITER_H

#include <memory>
#include <ostream>
#include <string>
#include <string_view>

namespace fl::filesystem::detail {

/// Writes a file as a whole. Whoever reads the target, at whatever moment, also after a kill or a
/// power cut, finds what was there before or all that was written; once `Commit` has returned, the
/// latter. Every file that the libraries write goes through here.
///
/// The bytes go to a temporary in the target's own folder, which `Commit` renames. It is gone when
/// the writer is; only a process that is killed leaves it behind.
///
/// A regular file at the target is replaced and hands down its permissions, but neither its owner
/// nor its further names; that it is read-only is no hindrance. A link is replaced itself, and the
/// file that it leads to stays as it is. All else, a folder, a FIFO, a device, is refused. A new
/// file gets what the umask leaves of 0666.
///
/// Threads: one at a time; writers of the same target need not know of each other, the last
/// `Commit` wins. No operation is a point of cancellation.
/// Errors: `std::system_error`, which names the target and says what could not be done; the target
/// is then as it was.
class AtomicFileWriter {
 public:
  /// Makes the temporary, called `prefix`, 16 hexadecimal digits, `suffix`. `target` is the native
  /// path in bytes; a relative one is looked up once, here.
  AtomicFileWriter(std::string_view target, std::string_view prefix, std::string_view suffix);
  AtomicFileWriter(const AtomicFileWriter&) = delete;
  AtomicFileWriter& operator=(const AtomicFileWriter&) = delete;
  ~AtomicFileWriter();

  /// Where the content is written, and may be sought. It raises `std::ios_base::failure` once a
  /// write fails. A failure is remembered as well, so that it ends in `Commit` even when nobody
  /// looked at the stream. Precondition: not yet committed.
  [[nodiscard]] std::ostream& Stream() noexcept;

  /// Puts the file in place. Precondition: not yet committed.
  /// Cost: waits for the disk.
  void Commit();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts;
};

/// `prefix`, 64 random bits in hexadecimal, `suffix`.
[[nodiscard]] std::string RandomFilename(std::string_view prefix, std::string_view suffix);

}  // namespace fl::filesystem::detail

#endif  // SEARCHPATH_SRC_PLATFORM_ATOMIC_FILE_WRITER_H
