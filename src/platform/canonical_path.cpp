#include "platform/canonical_path.h"

#include "model/path_components.h"
#include "model/quoted_text.h"
#include "platform/link_walk.h"
#include "searchpath/model/byte_text.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstddef>
#include <system_error>
#include <utility>

namespace foundation::storage::vfs::detail {

namespace {

std::error_code LastError() { return {errno, std::generic_category()}; }

/// Looks at the present name of `walk`, and follows it if it is a link. Returns the error that ends
/// the walk, if there is one.
std::error_code LookAndFollow(LinkWalk& walk) {
  struct stat status = {};
  if (lstat(walk.GetPath().c_str(), &status) != 0) return LastError();
  if (!S_ISLNK(status.st_mode)) {
    const bool isLast = walk.GetRest().find_first_not_of('/') == std::string_view::npos;
    if (S_ISDIR(status.st_mode) || isLast) return {};
    return std::make_error_code(std::errc::not_a_directory);
  }
  std::error_code error;
  std::string target = ReadLink(AT_FDCWD, walk.GetPath().c_str(), error);
  if (error || walk.Follow(std::move(target))) return error;
  return std::make_error_code(std::errc::too_many_symbolic_link_levels);
}

}  // namespace

Exception CannotResolve(std::string_view path, const std::error_code& error) {
  using Corvane::PathManagement::TextFromBytes;
  using Corvane::PathManagement::detail::QuotedText;
  return Exception("cannot resolve " + QuotedText(TextFromBytes(path)) + ": " + error.message());
}

CanonicalPath ResolveLinks(std::string_view path) {
  LinkWalk walk(path);
  std::error_code error;
  while (!error && walk.Next()) error = LookAndFollow(walk);
  // All other errors only end the walk: the rest of the path is kept as it is.
  if (error == std::errc::io_error || error == std::errc::too_many_symbolic_link_levels) {
    throw CannotResolve(path, error);
  }
  std::string resolved = walk.GetPath();
  std::string_view rest = walk.GetRest();
  for (auto name = TakeComponent(rest); !name.empty(); name = TakeComponent(rest)) {
    if (name != ".") resolved.append("/").append(name);
  }
  return {resolved.empty() ? "/" : std::move(resolved), error};
}

CanonicalPath LinkResolver::Resolve(const std::string& path) {
  const std::string name = path.substr(path.rfind('/') + 1);
  if (name.empty() || name == "." || name == "..") return ResolveLinks(path);
  auto folder = FolderAt(path.substr(0, path.size() - name.size() - 1));
  if (!folder) return ResolveLinks(path);
  folder->append("/").append(name);
  struct stat status = {};
  // A link, or a name that cannot be looked at, needs the whole walk.
  if (lstat(folder->c_str(), &status) != 0 || S_ISLNK(status.st_mode)) return ResolveLinks(path);
  return {*std::move(folder), {}};
}

LinkResolver::Folder LinkResolver::FolderAt(const std::string& path) {
  if (path.empty()) return path;
  {
    const std::lock_guard lock(mutex);
    const auto known = folders.find(path);
    if (known != folders.end()) return known->second;
  }
  CanonicalPath resolved = ResolveLinks(path);  // without the lock, since the disk may be slow
  Folder folder;
  if (!resolved.error) folder = resolved.bytes == "/" ? "" : std::move(resolved.bytes);
  const std::lock_guard lock(mutex);
  return folders.emplace(path, std::move(folder)).first->second;
}

}  // namespace foundation::storage::vfs::detail
