#ifndef SEARCHPATH_SRC_PLATFORM_DESCRIPTOR_BUFFER_H
#define SEARCHPATH_SRC_PLATFORM_DESCRIPTOR_BUFFER_H

#include <ios>
#include <streambuf>
#include <vector>

namespace fl::filesystem::detail {

/// Collects bytes and writes them to a file. What is not flushed is lost when the buffer is
/// destroyed. After a failed write the buffer remembers the error and writes nothing more.
/// `std::filebuf` forgets the failure when it is used without its stream, or when the last write is
/// a big one.
class DescriptorBuffer final : public std::streambuf {
 public:
  /// The caller still owns the descriptor, and keeps it open.
  explicit DescriptorBuffer(int openDescriptor);

  /// The errno of the first failure; 0 while there is none.
  [[nodiscard]] int FirstError() const noexcept { return firstError; }

  /// Hands all bytes to the kernel. Returns false when this or an earlier write fails.
  bool Flush();

 protected:
  int_type overflow(int_type byte) override;
  std::streamsize xsputn(const char* bytes, std::streamsize count) override;
  int sync() override { return Flush() ? 0 : -1; }
  pos_type seekoff(off_type offset, std::ios_base::seekdir from,
                   std::ios_base::openmode which) override;
  pos_type seekpos(pos_type position, std::ios_base::openmode which) override;

 private:
  bool Write(const char* bytes, std::streamsize count);

  int descriptor;
  int firstError = 0;
  std::vector<char> collected;
};

}  // namespace fl::filesystem::detail

#endif  // SEARCHPATH_SRC_PLATFORM_DESCRIPTOR_BUFFER_H
