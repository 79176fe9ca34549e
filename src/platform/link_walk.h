#ifndef SEARCHPATH_SRC_PLATFORM_LINK_WALK_H
#define SEARCHPATH_SRC_PLATFORM_LINK_WALK_H

#include <cstddef>
#include <string>
#include <string_view>
#include <system_error>

namespace foundation::storage::vfs::detail {

/// Walks a native path as the kernel does, name by name, through the links on the way. It does not
/// access the disk: after each `Next`, the caller looks at the present name, and calls `Follow`
/// when the name is a link.
class LinkWalk {
 public:
  /// `path` is absolute.
  explicit LinkWalk(std::string_view path) : LinkWalk("", path) {}
  /// `path` begins in `folder`, which is a path without links; "" is the root.
  LinkWalk(std::string_view folder, std::string_view path)
      : buffer(path), rest(buffer), resolved(folder) {}
  LinkWalk(const LinkWalk&) = delete;
  LinkWalk& operator=(const LinkWalk&) = delete;

  /// Goes on to the next name. The present name is taken for a folder, unless `Follow` was called
  /// for it. Returns false at the end of the path.
  bool Next();

  /// The path up to and including the present name, without links before it; "" is the root.
  [[nodiscard]] const std::string& GetPath() const noexcept { return resolved; }
  /// The folder that holds the present name; "" is the root.
  [[nodiscard]] std::string_view GetFolder() const noexcept {
    return std::string_view(resolved).substr(0, parentLength);
  }
  /// The present name. Precondition: there is one: `Next` has returned true, and `Follow` has not
  /// been called since.
  [[nodiscard]] std::string_view GetName() const noexcept {
    return std::string_view(resolved).substr(parentLength + 1);
  }
  /// What comes after the present name.
  [[nodiscard]] std::string_view GetRest() const noexcept { return rest; }

  /// To be called when the present name is a link to `target`. Returns false, and changes nothing,
  /// once there have been more links than the kernel follows.
  [[nodiscard]] bool Follow(std::string target);

 private:
  std::string buffer;            // holds the text that rest views
  std::string_view rest;         // still to be walked
  std::string resolved;          // without links
  std::size_t parentLength = 0;  // the length of the part of resolved that `GetFolder` returns
  int linksFollowed = 0;
};

/// The target of the link at `path`. A relative `path` begins at `folder`, which is an open
/// descriptor or AT_FDCWD; an empty one means the link that `folder` itself has open. On failure,
/// for example when the link is gone, the target is "" and `error` is set.
[[nodiscard]] std::string ReadLink(int folder, const char* path, std::error_code& error);

}  // namespace foundation::storage::vfs::detail

#endif  // SEARCHPATH_SRC_PLATFORM_LINK_WALK_H
