#ifndef SEARCHPATH_PLATFORM_ATOMIC_FILE_WRITER_H
#define SEARCHPATH_PLATFORM_ATOMIC_FILE_WRITER_H

#include "searchpath/export.h"
#include "searchpath/model/ustring.h"
#include "searchpath/platform/filesystem.h"

#include <memory>
#include <ostream>

namespace fl::filesystem {

/// Replaces a file, the target, in one step. At every moment, even after a kill or a power cut, a
/// reader finds either the old content or all of the new. Once `Commit` has returned, the new
/// content is on the disk. So is its name, if this process may read the target's folder and the
/// file system can sync folders. The libraries write all their files with this class.
///
/// The bytes go to a temporary file in the target's own folder, which `Commit` renames. The writer
/// removes the temporary file when it is destroyed, unless `Commit` has succeeded; only a kill
/// or a power cut leaves it behind.
///
/// A regular file at the target is replaced, even a read-only one. The new file takes over its
/// permissions, but neither its owner nor its other hard links. When the target is a symbolic link,
/// the link is replaced, and the file that it leads to stays as it is. Anything else, such as a
/// folder, a FIFO or a device, is refused. Where no regular file is replaced, the new file gets the
/// permissions 0666 without those in the umask.
///
/// Precondition: where the target is a relative path, the working folder stays the same until
/// `Commit` has returned.
/// Threads: one thread at a time uses a writer. Writers of one target need no lock: the last
/// `Commit` wins. No operation is a cancellation point: its system calls postpone `pthread_cancel`.
/// Errors: `std::system_error`, which names the target and says what could not be done; the target
/// is then as it was. The failures that the stream raises do not name the target. The destructor
/// raises nothing.
class SEARCHPATH_EXPORT AtomicFileWriter {
 public:
  /// Creates the temporary file beside `targetFile`, with a name that no other file has: `prefix`,
  /// random digits and `suffix`.
  AtomicFileWriter(const path& targetFile, const ustring& prefix, const ustring& suffix);
  AtomicFileWriter(const AtomicFileWriter&) = delete;
  AtomicFileWriter& operator=(const AtomicFileWriter&) = delete;
  ~AtomicFileWriter();

  /// The stream to write the content to; seeking is allowed. It raises `std::ios_base::failure`
  /// when a write fails. `Commit` fails then, too, even when the caller has overlooked that.
  /// Precondition: not yet committed.
  [[nodiscard]] std::ostream& Stream() noexcept;

  /// Puts the new file in the place of the target. Precondition: not yet committed.
  /// Cost: waits for the disk.
  void Commit();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts;  // never null
};

}  // namespace fl::filesystem

#endif  // SEARCHPATH_PLATFORM_ATOMIC_FILE_WRITER_H
