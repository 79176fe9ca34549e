#include "searchpath/model/found_item.h"

#include "support/recording.h"

#include <gtest/gtest.h>

namespace Corvane::PathManagement {
namespace {

TEST(FoundItemTest, IsEqualWhenBothPointersAre) {
  const AbsoluteIRI folder(u"file:///a");
  const PathItem file(folder, u"fn", u".x");
  const auto item = std::make_shared<const PathItem>(file);
  const auto itemAlike = std::make_shared<const PathItem>(file);
  const auto entry = std::make_shared<test::FakeEntry>("a", folder.toString());
  const auto entryAlike = std::make_shared<test::FakeEntry>("a", folder.toString());
  const FoundItem found(item, entry);
  EXPECT_TRUE(found == FoundItem(found.GetPathItem(), found.GetPathEntry()));
  EXPECT_FALSE(found == FoundItem(itemAlike, entry));
  EXPECT_FALSE(found == FoundItem(item, entryAlike));
}

}  // namespace
}  // namespace Corvane::PathManagement
