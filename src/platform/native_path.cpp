#include "platform/native_path.h"

#include "model/quoted_text.h"
#include "searchpath/model/byte_text.h"

#include <cerrno>

namespace fl::filesystem::detail {

using Corvane::PathManagement::BytesFromText;
using Corvane::PathManagement::TextFromBytes;
using Corvane::PathManagement::detail::QuotedText;

namespace {

std::system_error QuotedPathError(int error, std::string_view complaint, std::u16string_view text,
                                  std::string_view remark) {
  std::string message(complaint);
  message.append(" ").append(QuotedText(text)).append(remark);
  return {error, std::generic_category(), message};
}

}  // namespace

std::string NativeBytes(const foundation::ustring& path) {
  std::optional<std::string> bytes = BytesFromText(path);
  if (!bytes || path.find(u'\0') != path.npos) {
    throw QuotedPathError(EINVAL, "no file can be called", path, /*remark=*/"");
  }
  return *std::move(bytes);
}

std::optional<std::string> NativeBytes(const foundation::storage::vfs::AbsoluteIRI& location) {
  if (!location.toStringView().starts_with(u"file:")) return std::nullopt;
  return BytesFromText(location.getPath());
}

std::system_error PathError(int error, std::string_view complaint, std::string_view bytes,
                            std::string_view remark) {
  return QuotedPathError(error, complaint, TextFromBytes(bytes), remark);
}

}  // namespace fl::filesystem::detail
