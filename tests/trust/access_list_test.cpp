#include "host/trust/access_facts.h"
#include "trust/access_list_bytes.h"

#include <gtest/gtest.h>

#include <unistd.h>

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

}  // namespace
}  // namespace Corvane::PathManagement::host
