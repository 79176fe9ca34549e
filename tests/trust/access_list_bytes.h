#ifndef SEARCHPATH_TESTS_TRUST_ACCESS_LIST_BYTES_H
#define SEARCHPATH_TESTS_TRUST_ACCESS_LIST_BYTES_H

#include <sys/xattr.h>

#include <cstdint>
#include <linux/posix_acl.h>
#include <stdexcept>
#include <string>
#include <vector>

namespace Corvane::PathManagement::test {

struct ListEntry {
  unsigned tag;
  unsigned rights;
  std::uint32_t id = 0xFFFFFFFF;
};

/// An access-control list as the kernel takes and gives it.
inline std::string ListBytes(const std::vector<ListEntry>& entries) {
  std::string bytes;
  const auto add = [&](std::uint32_t number, int size) {
    for (int at = 0; at < size; ++at) bytes.push_back(static_cast<char>(number >> (8 * at)));
  };
  add(2, 4);
  for (const ListEntry& entry : entries) {
    add(entry.tag, 2);
    add(entry.rights, 2);
    add(entry.id, 4);
  }
  return bytes;
}

inline void SetList(const std::string& path, const std::string& bytes) {
  if (setxattr(path.c_str(), "system.posix_acl_access", bytes.data(), bytes.size(), 0) != 0) {
    throw std::runtime_error("no access-control lists on this file system: " + path);
  }
}

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_TRUST_ACCESS_LIST_BYTES_H
