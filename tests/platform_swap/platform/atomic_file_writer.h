#ifndef SEARCHPATH_PLATFORM_ATOMIC_FILE_WRITER_H
#define SEARCHPATH_PLATFORM_ATOMIC_FILE_WRITER_H

#include "searchpath/platform/filesystem.h"

#include <sstream>

namespace fl::filesystem {

class AtomicFileWriter {
 public:
  AtomicFileWriter(const path& targetFile, const ustring& prefix, const ustring& suffix);
  AtomicFileWriter(const AtomicFileWriter&) = delete;
  AtomicFileWriter& operator=(const AtomicFileWriter&) = delete;
  ~AtomicFileWriter();

  std::ostream& Stream() { return stream; }
  void Commit();

 private:
  path target, temporary;
  std::ostringstream stream;
};

}  // namespace fl::filesystem

#endif  // SEARCHPATH_PLATFORM_ATOMIC_FILE_WRITER_H
