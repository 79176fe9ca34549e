#include "host/trust/access_facts.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/xattr.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <linux/limits.h>
#include <linux/posix_acl.h>
#include <linux/posix_acl_xattr.h>
#include <optional>

namespace Corvane::PathManagement::host {

namespace {

using fl::filesystem::detail::Descriptor;

constexpr const char* kAttribute = "system.posix_acl_access";

/// The integer in the `size` bytes from `begin` on, the lowest byte first.
std::uint32_t NumberAt(std::string_view bytes, std::size_t begin, std::size_t size) {
  std::uint32_t number = 0;
  for (std::size_t at = begin + size; at > begin; --at) {
    number = number << 8U | static_cast<unsigned char>(bytes[at - 1]);
  }
  return number;
}

std::optional<AccessEntry::Kind> KindOfTag(std::uint32_t tag) {
  switch (tag) {
    case ACL_USER:
      return AccessEntry::Kind::User;
    case ACL_GROUP_OBJ:
      return AccessEntry::Kind::OwningGroup;
    case ACL_GROUP:
      return AccessEntry::Kind::Group;
    case ACL_MASK:
      return AccessEntry::Kind::Mask;
    default:
      return std::nullopt;  // the owner and the others: their rights are those of the mode
  }
}

/// Reads an attribute with get(buffer, size). When that fails, returns nothing, and errno says why.
template <class Get>
std::optional<std::string> ReadAttribute(const Get& get) {
  std::string bytes(1024, '\0');
  ssize_t size = get(bytes.data(), bytes.size());
  if (size < 0 && errno == ERANGE) {
    bytes.resize(XATTR_SIZE_MAX);  // no attribute is longer
    size = get(bytes.data(), bytes.size());
  }
  if (size < 0) return std::nullopt;
  bytes.resize(static_cast<std::size_t>(size));
  return bytes;
}

/// Opens the object with these facts once more, and reads its attribute: a folder through itself,
/// anything else by its name in `folder`. When that fails, errno says why: EAGAIN if something else
/// has the name by now.
std::optional<std::string> ReadOnceMore(const Descriptor& object, const Descriptor& folder,
                                        const std::string& name, const AccessFacts& facts) {
  constexpr int kFlags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
  const Descriptor again(S_ISDIR(facts.mode) ? openat(object.Get(), ".", kFlags)
                                             : openat(folder.Get(), name.c_str(), kFlags));
  struct stat status = {};
  if (again.IsOpen() && fstat(again.Get(), &status) == 0) {
    if (status.st_dev == facts.device && status.st_ino == facts.inode) {
      return ReadAttribute(
          [&](void* to, std::size_t size) { return fgetxattr(again.Get(), kAttribute, to, size); });
    }
    errno = EAGAIN;
  }
  if (errno == ENOENT || errno == ELOOP) errno = EAGAIN;  // it has gone, or is a link now
  return std::nullopt;
}

/// A descriptor that was opened with O_PATH gives no attributes, so they are read by its name in
/// /proc. Where /proc is not mounted, the object is opened once more.
AccessList ReadAccessList(const Descriptor& object, const Descriptor& folder,
                          const std::string& name, const AccessFacts& facts,
                          std::error_code& error) {
  const std::string kernelName = "/proc/self/fd/" + std::to_string(object.Get());
  auto bytes = ReadAttribute([&](void* to, std::size_t size) {
    return getxattr(kernelName.c_str(), kAttribute, to, size);
  });
  if (!bytes && errno == ENOENT) bytes = ReadOnceMore(object, folder, name, facts);
  if (bytes) return ParseAccessList(*bytes);
  // ENODATA: there is no list. EOPNOTSUPP: the file system has no lists.
  if (errno != ENODATA && errno != EOPNOTSUPP) error = {errno, std::generic_category()};
  return {};
}

}  // namespace

AccessList ParseAccessList(std::string_view attribute) {
  constexpr std::size_t kHeader = sizeof(posix_acl_xattr_header);
  constexpr std::size_t kEntry = sizeof(posix_acl_xattr_entry);
  if (attribute.size() < kHeader || (attribute.size() - kHeader) % kEntry != 0 ||
      NumberAt(attribute, 0, 4) != POSIX_ACL_XATTR_VERSION) {
    return {};
  }
  AccessList list;
  // An entry has a tag and rights of two bytes each, and an id of four.
  for (std::size_t at = kHeader; at < attribute.size(); at += kEntry) {
    const auto kind = KindOfTag(NumberAt(attribute, at, 2));
    if (!kind) continue;
    list.push_back({*kind, NumberAt(attribute, at + 4, 4), NumberAt(attribute, at + 2, 2)});
  }
  return list;
}

AccessFacts ReadAccessFacts(const Descriptor& object, const Descriptor& folder,
                            const std::string& name, std::error_code& error) {
  struct stat status = {};
  if (fstat(object.Get(), &status) != 0) {
    error = {errno, std::generic_category()};
    return {};
  }
  AccessFacts facts = {.owner = status.st_uid,
                       .group = status.st_gid,
                       .mode = status.st_mode,
                       .device = status.st_dev,
                       .inode = status.st_ino,
                       .isNullDevice = S_ISCHR(status.st_mode) && status.st_rdev == makedev(1, 3)};
  // Where there is a list, the group's rights in the mode are the most that an entry for a user or
  // a group grants. When the mode gives the group none, the kernel does not ask the list.
  const bool mayHaveList = S_ISDIR(facts.mode) || S_ISREG(facts.mode);
  if (mayHaveList && (facts.mode & S_IRWXG) != 0) {
    facts.list = ReadAccessList(object, folder, name, facts, error);
  }
  return facts;
}

}  // namespace Corvane::PathManagement::host
