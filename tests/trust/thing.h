#ifndef SEARCHPATH_TESTS_TRUST_THING_H
#define SEARCHPATH_TESTS_TRUST_THING_H

#include "trust/access_list_bytes.h"
#include "trust/other_users.h"

#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <string>

namespace Corvane::PathManagement::test {

inline std::string Bytes(const ustring& text) { return BytesFromText(text).value(); }

/// A file, a folder, a link or a character device, with what decides who may do what with it.
struct Thing {
  enum class Type { Folder, File, Link, Device };

  Type type;
  std::string path;         // without links
  std::string target = {};  // of a link
  uid_t owner = 0;
  gid_t group = 0;
  mode_t mode = 0755;
  std::string list = {};  // an access-control list; "" for none
};

/// Puts it on the disk.
inline void Make(const Thing& thing) {
  const char* const path = thing.path.c_str();
  if (thing.type == Thing::Type::Link) {
    MustBeZero(symlink(thing.target.c_str(), path));
  } else if (thing.type == Thing::Type::Folder) {
    MustBeZero(mkdir(path, 0700));
  } else if (thing.type == Thing::Type::Device) {
    MustBeZero(mknod(path, S_IFCHR | 0600, 0));  // the one device that takes no rights to make
  } else {
    std::ofstream(path) << "as it was";
  }
  MustBeZero(lchown(path, thing.owner, thing.group));
  if (thing.type == Thing::Type::Link) return;
  MustBeZero(chmod(path, thing.mode));
  if (!thing.list.empty()) SetList(thing.path, thing.list);
}

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_TRUST_THING_H
