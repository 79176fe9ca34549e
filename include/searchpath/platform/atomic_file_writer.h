#ifndef SEARCHPATH_PLATFORM_ATOMIC_FILE_WRITER_H
#define SEARCHPATH_PLATFORM_ATOMIC_FILE_WRITER_H

#include "searchpath/export.h"
#include "searchpath/model/ustring.h"
#include "searchpath/platform/filesystem.h"

#include <memory>
#include <ostream>

namespace fl::filesystem {

/// Replaces a file in one step. At every moment, also after a kill or a power cut, a reader finds
/// either the old content or all of the new; once `Commit` has returned, the new content is on the
/// disk. Every file that the libraries write is written by this class.
///
/// The bytes go to a temporary file in the target's own folder, which `Commit` renames. The
/// temporary file disappears with the writer; only a process that is killed leaves it behind.
///
/// A regular file at the target is replaced, also a read-only one. The new file takes over its
/// permissions, but neither its owner nor its other hard links. A link is replaced itself, and the
/// file that it leads to stays as it is. Anything else, a folder, a FIFO, a device, is refused. A
/// new file gets the permissions 0666 without those in the umask.
///
/// Precondition: where the target is a relative path, the working folder stays the same until
/// `Commit` has returned.
/// Threads: one at a time; writers of the same target need not know of each other, the last
/// `Commit` wins. No operation is a cancellation point.
/// Errors: `std::system_error`, which names the target and says what could not be done; the target
/// is then as it was.
class SEARCHPATH_EXPORT AtomicFileWriter {
 public:
  /// Creates the temporary file; `tmpnam` makes its name from this prefix and suffix.
  AtomicFileWriter(const path& targetFile, const ustring& prefix, const ustring& suffix);
  AtomicFileWriter(const AtomicFileWriter&) = delete;
  AtomicFileWriter& operator=(const AtomicFileWriter&) = delete;
  ~AtomicFileWriter();

  /// Where the content is written, and may be sought. It raises `std::ios_base::failure` once a
  /// write fails. A failure is remembered as well, so that `Commit` raises it even when nobody
  /// looked at the stream. Precondition: not yet committed.
  [[nodiscard]] std::ostream& Stream() noexcept;

  /// Puts the file in place. Precondition: not yet committed.
  /// Cost: waits for the disk.
  void Commit();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts;  // never null
};

}  // namespace fl::filesystem

#endif  // SEARCHPATH_PLATFORM_ATOMIC_FILE_WRITER_H
