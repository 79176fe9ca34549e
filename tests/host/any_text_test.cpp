#include "searchpath/host.h"
#include "support/temporary_tree.h"

#include <gtest/gtest.h>

#include <list>

namespace Corvane::PathManagement {
namespace {

TEST(AnyTextTest, EveryFormOfATextIsTheSameText) {
  const std::string bytes = "\xC3\xA9t\xFF";
  const ustring text = u"\u00E9t\xDCFF";
  for (const AnyText& form : std::vector<AnyText>{bytes, bytes.c_str(), std::string_view(bytes),
                                                  std::filesystem::path(bytes), text, text.c_str(),
                                                  std::u16string_view(text)}) {
    EXPECT_EQ(form, text);
    EXPECT_EQ(BytesFromText(form), bytes);
  }
  EXPECT_EQ(fl::filesystem::path(std::filesystem::path(bytes)).native(), text);
  EXPECT_EQ(fl::filesystem::path(bytes).native(), text);
  const std::vector<ustring> two = {u"a", u"b"};
  EXPECT_EQ(AnyTexts({"a", u"b"}), two);
  EXPECT_EQ(AnyTexts(std::vector<std::string>{"a", "b"}), two);
  EXPECT_EQ(AnyTexts(std::list<std::filesystem::path>{"a", "b"}), two);
  EXPECT_EQ(AnyTexts(two), two);
  // One text is never taken for several.
  static_assert(!std::is_convertible_v<std::filesystem::path, AnyTexts>);
  static_assert(!std::is_convertible_v<std::string, AnyTexts>);
}

TEST(AnyTextTest, AnEnvironmentIsAskedInTheTextsOfItsCaller) {
  const test::TemporaryTree tree;
  tree.Files({"lib/\xFFplot.zt", "lib/private/\xFFplot.zt", "two/\xFFplot.zt", "two/bare"});
  const std::filesystem::path lib = tree.Path("lib");
  const host::Environment environment(std::vector<std::filesystem::path>{lib, tree.Path("two")});
  for (const AnyTexts& extensions : {AnyTexts{"zt"}, AnyTexts{".zt"}, AnyTexts{u"y", u"zt"}}) {
    const host::Lookup lookup{.name = "\xFFplot", .extensions = extensions};
    const auto found = environment.Find(lookup);
    ASSERT_TRUE(found);
    EXPECT_EQ(host::GetFilesystemPath(*found), lib / "\xFFplot.zt");
    EXPECT_EQ(host::GetFilesystemPath(*found->GetPathEntry()), lib);
    const auto shadows = environment.FindShadows({.extensions = extensions}).shadows;
    ASSERT_EQ(shadows.size(), 1U);
    EXPECT_EQ(shadows.front().name, u"\xDCFFplot");
    EXPECT_EQ(environment.Explain(lookup).files.size(), 2U);
  }
  // "" is no extension, and nothing is put in front of it.
  EXPECT_TRUE(environment.Find({.name = "bare", .extensions = {""}}));
  const auto fromLib = environment.Find({.name = "\xFFplot.zt", .fromFolder = lib});
  EXPECT_EQ(host::GetFilesystemPath(fromLib.value()), lib / "private" / "\xFFplot.zt");
}

}  // namespace
}  // namespace Corvane::PathManagement
