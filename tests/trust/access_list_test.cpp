#include "host/trust/access_facts.h"
#include "trust/thing.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace Corvane::PathManagement::host {
namespace {

// What no kernel hands out.
TEST(AccessListTest, WhatIsNotWholeIsNoList) {
  const std::string whole = test::ListBytes({{ACL_USER_OBJ, 7},
                                             {ACL_USER, 6, 1102},
                                             {ACL_GROUP_OBJ, 5},
                                             {ACL_GROUP, 3, 70000},
                                             {ACL_MASK, 7},
                                             {ACL_OTHER, 0}});
  using Kind = AccessEntry::Kind;
  const AccessList list = {{Kind::User, 1102, 6},
                           {Kind::OwningGroup, 0xFFFFFFFF, 5},
                           {Kind::Group, 70000, 3},
                           {Kind::Mask, 0xFFFFFFFF, 7}};
  EXPECT_EQ(ParseAccessList(whole), list);
  EXPECT_TRUE(ParseAccessList("").empty());
  for (std::size_t size = 1; size < whole.size(); ++size) {
    const bool isWholeEntry = size >= 4 && (size - 4) % 8 == 0;
    EXPECT_EQ(ParseAccessList(whole.substr(0, size)).empty(), !isWholeEntry || size < 20) << size;
  }
  EXPECT_TRUE(ParseAccessList('\3' + whole.substr(1)).empty());
}

TEST(AccessListTest, WithoutProcItIsReadByNameFromTheSameObjectAlone) {
  if (!test::CanBecomeOthers()) return;
  test::InSmallMachine([] {
    for (const char* path : {"/one", "/other"}) {
      test::Make({test::Thing::Type::File, path, "", 0, 0, 0664});
    }
    test::Make({test::Thing::Type::Link, "/link", "one"});
    const auto open = [](const char* path) {
      return fl::filesystem::detail::Descriptor(::open(path, O_PATH | O_CLOEXEC));
    };
    const auto root = open("/"), one = open("/one");
    std::string wrong;
    for (const auto& [name, expected] : {std::pair("one", 0), std::pair("other", EAGAIN),
                                         std::pair("none", EAGAIN), std::pair("link", EAGAIN)}) {
      std::error_code error;
      static_cast<void>(ReadAccessFacts(one, root, name, error));
      if (error.value() != expected) wrong += name + (": " + error.message()) + '\n';
    }
    return wrong;
  });
}

}  // namespace
}  // namespace Corvane::PathManagement::host
