#include "platform/descriptor_buffer.h"

#include "platform/descriptor.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>

namespace fl::filesystem::detail {

namespace {

constexpr std::size_t kBufferSize = std::size_t{1} << 16;

}  // namespace

DescriptorBuffer::DescriptorBuffer(int openDescriptor)
    : descriptor(openDescriptor), collected(kBufferSize) {
  setp(collected.data(), collected.data() + collected.size());
}

bool DescriptorBuffer::Flush() {
  if (firstError != 0 || !Write(pbase(), pptr() - pbase())) return false;
  setp(collected.data(), collected.data() + collected.size());
  return true;
}

DescriptorBuffer::int_type DescriptorBuffer::overflow(int_type byte) {
  if (!Flush()) return traits_type::eof();
  if (!traits_type::eq_int_type(byte, traits_type::eof())) {
    *pptr() = traits_type::to_char_type(byte);
    pbump(1);
  }
  return traits_type::not_eof(byte);
}

std::streamsize DescriptorBuffer::xsputn(const char* bytes, std::streamsize count) {
  if (count > epptr() - pptr() && !Flush()) return 0;
  if (count > epptr() - pptr()) return Write(bytes, count) ? count : 0;
  std::copy_n(bytes, count, pptr());
  pbump(static_cast<int>(count));
  return count;
}

DescriptorBuffer::pos_type DescriptorBuffer::seekoff(off_type offset, std::ios_base::seekdir from,
                                                     std::ios_base::openmode /*which*/) {
  if (!Flush()) return {off_type(-1)};
  int whence = SEEK_SET;
  if (from == std::ios_base::cur) whence = SEEK_CUR;
  if (from == std::ios_base::end) whence = SEEK_END;
  return {lseek(descriptor, offset, whence)};
}

DescriptorBuffer::pos_type DescriptorBuffer::seekpos(pos_type position,
                                                     std::ios_base::openmode which) {
  return seekoff(position, std::ios_base::beg, which);
}

bool DescriptorBuffer::Write(const char* bytes, std::streamsize count) {
  while (count > 0) {
    const ssize_t written = WithoutInterruption(
        [&] { return write(descriptor, bytes, static_cast<std::size_t>(count)); });
    if (written <= 0) {
      firstError = written < 0 ? errno : EIO;
      setp(nullptr, nullptr);  // no room: every further byte goes to Flush, which refuses it
      return false;
    }
    bytes += written;
    count -= written;
  }
  return true;
}

}  // namespace fl::filesystem::detail
