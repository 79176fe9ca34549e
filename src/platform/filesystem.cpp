#include "searchpath/platform/filesystem.h"

#include "model/generic_iri_syntax.h"
#include "model/hexadecimal.h"
#include "model/text_encoding.h"
#include "platform/descriptor.h"
#include "platform/native_path.h"
#include "platform/regular_file.h"
#include "searchpath/model/constants.h"

#include <climits>

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ext/stdio_filebuf.h>
#include <random>
#include <string>

namespace fl::filesystem {

namespace {

using Corvane::PathManagement::detail::AppendHexadecimal;
using Corvane::PathManagement::detail::kLowerCaseDigits;
using FileBuffer = __gnu_cxx::stdio_filebuf<char>;

constexpr std::size_t kBufferSize = std::size_t{1} << 16;

/// 64 random bits in hexadecimal.
ustring RandomDigits() {
  static_assert(std::random_device::max() == 0xFFFFFFFF);
  std::random_device source;
  const std::uint64_t bits = (std::uint64_t{source()} << 32U) | source();
  ustring digits;
  AppendHexadecimal(digits, bits, 16, kLowerCaseDigits);
  return digits;
}

/// A buffer that reads the regular file `pathname`. If the file cannot be opened, the buffer is not
/// open, and `error` says why.
std::unique_ptr<FileBuffer> OpenBuffer(const path& pathname, std::error_code& error) try {
  const std::string bytes = detail::NativeBytes(pathname.native());
  detail::Descriptor file = detail::OpenRegularFile(
      [&](int flags) {
        return detail::Descriptor(
            detail::WithoutInterruption([&] { return open(bytes.c_str(), flags); }));
      },
      error);
  if (error) return std::make_unique<FileBuffer>();
  auto opened = std::make_unique<FileBuffer>(file.Get(), std::ios_base::in | std::ios_base::binary,
                                             kBufferSize);
  if (opened->is_open()) {
    static_cast<void>(file.Release());  // now the buffer owns it
  } else {
    error = {errno, std::generic_category()};
  }
  return opened;
} catch (const std::system_error& invalidName) {
  error = invalidName.code();
  return std::make_unique<FileBuffer>();
}

}  // namespace

path tmpnam(const path& folder, const ustring& prefix, const ustring& suffix) {
  ustring beginning = folder.native();
  if (!beginning.empty() && !beginning.ends_with(u'/')) beginning += u'/';
  for (;;) {
    ustring name = beginning;
    name.append(prefix).append(RandomDigits()).append(suffix);
    struct stat status = {};
    // Any failure will do: when the name cannot be looked at, no file can be created there either.
    if (lstat(detail::NativeBytes(name).c_str(), &status) != 0) return name;
  }
}

void rename(const path& from, const path& to) {
  const std::string oldName = detail::NativeBytes(from.native());
  if (std::rename(oldName.c_str(), detail::NativeBytes(to.native()).c_str()) != 0) {
    throw detail::PathError(errno, "cannot rename", oldName);
  }
}

bool remove(const path& pathname) noexcept {
  // On the stack, so that a file can be removed even when memory has run out.
  std::array<char, PATH_MAX> name = {};
  std::size_t size = 0;
  const bool isName = Corvane::PathManagement::detail::EncodeText(
      pathname.native(), [&](const char* bytes, std::size_t count) {
        if (size + count < name.size()) std::copy_n(bytes, count, name.data() + size);
        size += count;
      });
  // The length also differs when a NUL would cut the name.
  return isName && size < name.size() && std::strlen(name.data()) == size &&
         std::remove(name.data()) == 0;
}

ifstream::ifstream(const path& pathname)
    : std::istream(nullptr), buffer(OpenBuffer(pathname, error)) {
  rdbuf(buffer.get());
  if (!is_open()) setstate(failbit);
}

ifstream::~ifstream() = default;

namespace detail {

using Corvane::PathManagement::Constants;

ustring make_native_form(const ustring& text, bool /*expand*/) { return text; }

bool is_absolute_path_when_expanded(const ustring& text, bool expand) {
  return text.starts_with(u'/') || (expand && text.starts_with(u'~')) ||
         foundation::storage::vfs::detail::HasIRIPrefix(text);
}

ustring extract_root_path(const path& pathname) {
  const ustring& text = pathname.native();
  const auto rootEnd = text.find_first_not_of(Constants::PathnameSeparatorStr);
  return text.substr(0, rootEnd);
}

ustring extract_parent_path(const path& pathname) {
  const ustring& text = pathname.native();
  const auto lastSeparator = text.find_last_of(Constants::PathnameSeparatorStr);
  if (lastSeparator == ustring::npos) return {};
  const auto parentEnd = text.find_last_not_of(Constants::PathnameSeparatorStr, lastSeparator);
  return parentEnd == ustring::npos ? extract_root_path(pathname) : text.substr(0, parentEnd + 1);
}

ustring extract_extension(const path& pathname) {
  const ustring& text = pathname.native();
  const auto lastSeparator = text.find_last_of(Constants::PathnameSeparatorStr);
  const std::size_t nameBegin = lastSeparator == ustring::npos ? 0 : lastSeparator + 1;
  const auto dot = text.rfind(u'.');
  // A dot that begins the name hides the file, and does not begin an extension.
  return dot == ustring::npos || dot <= nameBegin ? ustring() : text.substr(dot);
}

}  // namespace detail

}  // namespace fl::filesystem
