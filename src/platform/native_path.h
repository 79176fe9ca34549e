#ifndef SEARCHPATH_SRC_PLATFORM_NATIVE_PATH_H
#define SEARCHPATH_SRC_PLATFORM_NATIVE_PATH_H

#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/ustring.h"

#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace fl::filesystem::detail {

/// The bytes by which the kernel knows a path.
/// Errors: `std::system_error` when `path` holds a NUL or a lone surrogate other than
/// U+DC80..U+DCFF. Those stand for bytes that are not UTF-8, see `TextFromBytes`.
[[nodiscard]] std::string NativeBytes(const foundation::ustring& path);

/// The bytes by which the kernel knows what a "file" IRI names; nullopt for any other scheme.
[[nodiscard]] std::optional<std::string> NativeBytes(
    const foundation::storage::vfs::AbsoluteIRI& location);

/// The exception for the errno `error` at the path `bytes`. For the `complaint` "cannot open" it
/// says `cannot open "/a": Permission denied`. `remark` is put directly after the path, so it
/// begins with its own comma: `, which is a folder`.
[[nodiscard]] std::system_error PathError(int error, std::string_view complaint,
                                          std::string_view bytes, std::string_view remark = "");

}  // namespace fl::filesystem::detail

#endif  // SEARCHPATH_SRC_PLATFORM_NATIVE_PATH_H
