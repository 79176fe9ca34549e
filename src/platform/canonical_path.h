#ifndef SEARCHPATH_SRC_PLATFORM_CANONICAL_PATH_H
#define SEARCHPATH_SRC_PLATFORM_CANONICAL_PATH_H

#include "searchpath/model/absolute_iri.h"

#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <unordered_map>

namespace foundation::storage::vfs::detail {

/// A native path with its links resolved, as bytes.
struct CanonicalPath {
  std::string bytes;
  std::error_code error;  // why resolution stopped; none when the whole path exists
};

/// The exception that names `path` and the error that stopped its resolution.
[[nodiscard]] Exception CannotResolve(std::string_view path, const std::error_code& error);

/// Resolves links, "." and ".." of the absolute `path` as far as the path exists and its folders
/// may be searched. The rest is kept as it is, without ".".
///
/// Errors: `Exception` for a loop of links and for I/O errors.
[[nodiscard]] CanonicalPath ResolveLinks(std::string_view path);

/// As `ResolveLinks`, for many paths: it remembers the canonical path of each one's parent folder
/// as it was first resolved. So most paths cost one system call, for the last name. Use a new
/// resolver to see later changes.
///
/// Threads: all operations, from any thread.
class LinkResolver {
 public:
  /// As `ResolveLinks`.
  [[nodiscard]] CanonicalPath Resolve(const std::string& path);

 private:
  /// The canonical path of a folder, "" for the root; `nullopt` when it does not fully resolve.
  using Folder = std::optional<std::string>;

  [[nodiscard]] Folder FolderAt(const std::string& path);

  std::mutex mutex;  // guards folders
  std::unordered_map<std::string, Folder> folders;
};

}  // namespace foundation::storage::vfs::detail

#endif  // SEARCHPATH_SRC_PLATFORM_CANONICAL_PATH_H
