#ifndef SEARCHPATH_TESTS_TRUST_OTHER_USERS_H
#define SEARCHPATH_TESTS_TRUST_OTHER_USERS_H

#include "support/temporary_tree.h"
#include "trust/access_list_bytes.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <functional>
#include <grp.h>
#include <initializer_list>
#include <iostream>
#include <string>
#include <system_error>
#include <vector>

namespace Corvane::PathManagement::test {

constexpr uid_t kOwner = 1101;  // whom tests trust
constexpr uid_t kEve = 1102;
constexpr uid_t kMallory = 1103;
constexpr uid_t kStranger = 1109;  // without an account
constexpr gid_t kOwnersGroup = 1201;
constexpr gid_t kEvesGroup = 1202;
constexpr gid_t kBothGroup = 1203;  // of eve and mallory
constexpr gid_t kNobodysGroup = 1204;

inline std::vector<gid_t> GroupsOf(uid_t user) {
  if (user == kEve) return {kEvesGroup, kBothGroup};
  if (user == kMallory) return {kBothGroup};
  return {};
}

inline void MustBeZero(int result) {
  if (result != 0) throw std::system_error(errno, std::generic_category());
}

/// While it lives, this process has the rights of another user, and no other rights.
class AsUser {
 public:
  explicit AsUser(uid_t user) {
    const auto groups = GroupsOf(user);
    MustBeZero(setgroups(groups.size(), groups.data()));
    MustBeZero(setegid(user == kEve ? kEvesGroup : static_cast<gid_t>(user)));
    MustBeZero(seteuid(user));
  }
  AsUser(const AsUser&) = delete;
  AsUser& operator=(const AsUser&) = delete;
  ~AsUser() {
    if (seteuid(0) != 0 || setegid(0) != 0 || setgroups(0, nullptr) != 0) std::abort();
  }
};

inline void MakeDatabases(const TemporaryTree& tree) {
  tree.File("etc/passwd",
            "root:x:0:0::/:\nowner:x:1101:1101::/:\neve:x:1102:1202::/:\n"
            "mallory:x:1103:1103::/:\n");
  tree.File("etc/group",
            "root:x:0:\nowners:x:1201:owner\neves:x:1202:\nboth:x:1203:eve,mallory\n"
            "nobodys:x:1204:\n");
  std::filesystem::permissions(tree.Path(), std::filesystem::perms(0755));
}

/// A folder in memory where there is one that has access-control lists, since thousands of small
/// changes take long on a disk.
inline std::filesystem::path FastFolder() {
  try {
    const TemporaryTree inMemory("/dev/shm");
    SetList(inMemory.Path(), ListBytes({{ACL_USER_OBJ, 7}, {ACL_GROUP_OBJ, 0}, {ACL_OTHER, 0}}));
    return "/dev/shm";
  } catch (const std::runtime_error&) {
    return std::filesystem::temp_directory_path();
  }
}

/// Runs `work` as root of a machine in small: a process whose root is a fresh folder, with users and
/// groups of its own. `work` returns what is wrong.
inline void InSmallMachine(const std::function<std::string()>& work) {
  const TemporaryTree tree(FastFolder());
  MakeDatabases(tree);
  const pid_t child = fork();
  if (child == 0) {
    std::string wrong = "cannot make a small machine";
    try {
      if (chdir(tree.Path().c_str()) == 0 && chroot(".") == 0) wrong = work();
    } catch (const std::exception& failure) {
      wrong = failure.what();
    }
    std::cout << wrong << std::flush;
    _exit(wrong.empty() ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
}

/// Runs the present test where this process can become other users: as it is for root, else once more
/// in a user namespace. Returns whether it is to go on here.
inline bool CanBecomeOthers() {
  if (geteuid() == 0) return true;
  const std::string unshare = "unshare --user --map-root-user --map-auto ";
  if (std::system((unshare + "true 2>&1").c_str()) != 0) {
    std::cout << "no other users: needs root, or newuidmap and a range in /etc/subuid\n";
    return false;
  }
  const auto* const test = testing::UnitTest::GetInstance()->current_test_info();
  const std::string program = std::filesystem::read_symlink("/proc/self/exe");
  EXPECT_EQ(std::system((unshare + program + " --gtest_filter=" + test->test_suite_name() + '.' +
                         test->name())
                            .c_str()),
            0);
  return false;
}

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_TRUST_OTHER_USERS_H
