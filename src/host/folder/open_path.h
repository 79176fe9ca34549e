#ifndef SEARCHPATH_SRC_HOST_FOLDER_OPEN_PATH_H
#define SEARCHPATH_SRC_HOST_FOLDER_OPEN_PATH_H

#include "platform/descriptor.h"
#include "searchpath/model/absolute_iri.h"

#include <optional>
#include <string>

namespace Corvane::PathManagement::host {

using fl::filesystem::detail::Descriptor;

/// Opens a path that may be longer than the kernel takes at once, piece by piece, the last piece
/// with `flags`. Holds two descriptors at most. Not open on failure; errno then says why.
[[nodiscard]] Descriptor OpenPath(const std::string& path, int flags);

/// The same for a folder that is to be read.
[[nodiscard]] Descriptor OpenFolder(const std::string& path);

/// The native path of a "file" IRI; empty for any other.
[[nodiscard]] std::optional<std::string> NativeBytes(const AbsoluteIRI& location);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_OPEN_PATH_H
