#include "platform/canonical_path.h"

#include "model/path_components.h"
#include "model/quoted_text.h"
#include "searchpath/model/byte_text.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <system_error>

namespace foundation::storage::vfs::detail {

namespace {

constexpr int kMostLinks = 40;  // as many as the kernel follows

std::error_code LastError() { return {errno, std::generic_category()}; }

/// The target of the link `path`; with an `error` when there is no link any more.
std::string TargetOf(const std::string& path, std::error_code& error) {
  std::string target(256, '\0');
  for (;;) {
    const ssize_t length = readlink(path.c_str(), target.data(), target.size());
    if (length < 0) error = LastError();
    if (length < static_cast<ssize_t>(target.size())) {
      target.resize(static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
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
    while (!error && !(component = TakeComponent(rest)).empty()) {
      if (component == "..") {
        resolved.resize(std::min(resolved.rfind('/'), resolved.size()));
      } else if (component != ".") {
        Enter();
      }
    }
    if (error == std::errc::io_error) throw CannotResolve(original, error);
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
      error = LastError();
    } else if (S_ISLNK(status.st_mode)) {
      Follow(parentLength);
    } else if (!S_ISDIR(status.st_mode) && rest.find_first_not_of('/') != rest.npos) {
      error = std::make_error_code(std::errc::not_a_directory);
    }
  }

  /// Goes on with the target of the link that has just been entered from a folder of
  /// `parentLength`.
  void Follow(std::size_t parentLength) {
    if (++linksFollowed > kMostLinks) {
      throw CannotResolve(original, std::make_error_code(std::errc::too_many_symbolic_link_levels));
    }
    std::string target = TargetOf(resolved, error);
    if (error) return;
    resolved.resize(target.starts_with('/') ? 0 : parentLength);
    buffer = target.append(rest);
    rest = buffer;
  }

  std::string_view original;
  std::string buffer;          // what rest is a view of
  std::string_view rest;       // what is still to be walked
  std::string_view component;  // taken from the rest
  std::string resolved;        // without links; "" is the root
  int linksFollowed = 0;
  std::error_code error;
};

}  // namespace

Exception CannotResolve(std::string_view path, const std::error_code& error) {
  using Corvane::PathManagement::TextFromBytes;
  using Corvane::PathManagement::detail::QuotedText;
  return Exception("cannot resolve " + QuotedText(TextFromBytes(path)) + ": " + error.message());
}

CanonicalPath ResolveLinks(std::string_view path) { return LinkWalk(path).Run(); }

}  // namespace foundation::storage::vfs::detail
