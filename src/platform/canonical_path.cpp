#include "platform/canonical_path.h"

#include "model/path_components.h"
#include "model/quoted_text.h"
#include "searchpath/model/byte_text.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <optional>
#include <system_error>

namespace foundation::storage::vfs::detail {

namespace {

constexpr int kMostLinks = 40;  // as many as the kernel follows

/// The target of the link `path`; empty when it is gone by now.
std::optional<std::string> TargetOf(const std::string& path) {
  std::string target(256, '\0');
  for (;;) {
    const ssize_t length = readlink(path.c_str(), target.data(), target.size());
    if (length < 0 && errno == EIO) throw CannotResolve(path, EIO);
    if (length < 0) return std::nullopt;
    if (static_cast<std::size_t>(length) < target.size()) {
      target.resize(static_cast<std::size_t>(length));
      return target;
    }
    target.resize(2 * target.size());
  }
}

/// Walks one path component by component.
class LinkWalk {
 public:
  explicit LinkWalk(std::string_view path) : original(path), buffer(path), rest(buffer) {}
  LinkWalk(const LinkWalk&) = delete;
  LinkWalk& operator=(const LinkWalk&) = delete;

  CanonicalPath Run() {
    while (error == 0 && !(component = TakeComponent(rest)).empty()) {
      if (component == "..") {
        resolved.resize(std::min(resolved.rfind('/'), resolved.size()));
      } else if (component != ".") {
        Enter();
      }
    }
    while (!(component = TakeComponent(rest)).empty()) {
      if (component != ".") resolved.append("/").append(component);
    }
    return {resolved.empty() ? "/" : std::move(resolved), error};
  }

 private:
  void Enter() {
    const std::size_t parentLength = resolved.size();
    resolved.append("/").append(component);
    struct stat status = {};
    if (lstat(resolved.c_str(), &status) != 0) {
      error = errno;
      if (error == EIO) throw CannotResolve(original, error);
    } else if (S_ISLNK(status.st_mode)) {
      Follow(parentLength);
    } else if (!S_ISDIR(status.st_mode) && rest.find_first_not_of('/') != rest.npos) {
      error = ENOTDIR;
    }
  }

  /// Goes on with the target of the link that has just been entered from a folder of
  /// `parentLength`.
  void Follow(std::size_t parentLength) {
    if (++linksFollowed > kMostLinks) throw CannotResolve(original, ELOOP);
    std::optional<std::string> target = TargetOf(resolved);
    if (!target) {
      error = errno;
      return;
    }
    resolved.resize(target->starts_with('/') ? 0 : parentLength);
    buffer = target->append(rest);
    rest = buffer;
  }

  std::string_view original;
  std::string buffer;          // what rest is a view of
  std::string_view rest;       // what is still to be walked
  std::string_view component;  // taken from the rest
  std::string resolved;        // without links; "" is the root
  int linksFollowed = 0;
  int error = 0;
};

}  // namespace

Exception CannotResolve(std::string_view path, int error) {
  using Corvane::PathManagement::TextFromBytes;
  using Corvane::PathManagement::detail::QuotedText;
  return Exception("cannot resolve " + QuotedText(TextFromBytes(path)) + ": " +
                   std::generic_category().message(error));
}

CanonicalPath ResolveLinks(std::string_view path) { return LinkWalk(path).Run(); }

}  // namespace foundation::storage::vfs::detail
