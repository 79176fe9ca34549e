#ifndef SEARCHPATH_SRC_PLATFORM_LINK_WALK_H
#define SEARCHPATH_SRC_PLATFORM_LINK_WALK_H

#include <cstddef>
#include <string>
#include <string_view>
#include <system_error>

namespace foundation::storage::vfs::detail {

/// Walks a native path as the kernel does, name by name, through the links that it meets. It asks
/// the disk nothing: the caller looks at each name and says what it is.
class LinkWalk {
 public:
  /// `path` is absolute.
  explicit LinkWalk(std::string_view path) : LinkWalk("", path) {}
  /// `path` begins in `folder`, which is a path without links; "" is the root.
  LinkWalk(std::string_view folder, std::string_view path)
      : buffer(path), rest(buffer), resolved(folder) {}
  LinkWalk(const LinkWalk&) = delete;
  LinkWalk& operator=(const LinkWalk&) = delete;

  /// Goes on to the next name. The one before it is a folder, unless `Follow` has said otherwise.
  /// False at the end.
  bool Next();

  /// The path so far, without links, the present name at its end; "" is the root.
  [[nodiscard]] const std::string& GetPath() const noexcept { return resolved; }
  /// The folder in which the present name stands; "" is the root.
  [[nodiscard]] std::string_view GetFolder() const noexcept {
    return std::string_view(resolved).substr(0, parentLength);
  }
  [[nodiscard]] std::string_view GetName() const noexcept {
    return std::string_view(resolved).substr(parentLength + 1);
  }
  /// What comes behind the present name.
  [[nodiscard]] std::string_view GetRest() const noexcept { return rest; }

  /// The present name is a link to `target`. Returns false, and stays, when it is one link more
  /// than the kernel follows.
  [[nodiscard]] bool Follow(std::string target);

 private:
  std::string buffer;            // what rest is a view of
  std::string_view rest;         // still to be walked
  std::string resolved;          // without links
  std::size_t parentLength = 0;  // of the present name's folder
  int linksFollowed = 0;
};

/// The target of the link `path`, from `folder` on, which is open or AT_FDCWD; with an `error` when
/// there is no link any more. An empty `path` is the link that `folder` has open.
[[nodiscard]] std::string ReadLink(int folder, const char* path, std::error_code& error);

}  // namespace foundation::storage::vfs::detail

#endif  // SEARCHPATH_SRC_PLATFORM_LINK_WALK_H
