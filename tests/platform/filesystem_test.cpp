#include "searchpath/platform/filesystem.h"

#include "support/temporary_tree.h"
#include "support/text_table.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <dlfcn.h>
#include <system_error>

namespace {

bool streamsLackMemory = false;

}  // namespace

// In place of the C library's, which lacks memory too seldom; visible to the other libraries.
extern "C" [[gnu::visibility("default")]] std::FILE* fdopen(int descriptor,
                                                            const char* mode) noexcept {
  errno = ENOMEM;
  if (streamsLackMemory) return nullptr;
  return reinterpret_cast<decltype(&fdopen)>(dlsym(RTLD_NEXT, "fdopen"))(descriptor, mode);
}

namespace fl::filesystem {
namespace {

using Corvane::PathManagement::test::TemporaryTree;

TEST(FilesystemTest, AParentIsWhatTheLastComponentStandsIn) {
  Corvane::PathManagement::test::ExpectTable(
      {u"/a/b.x => /a", u"a//b => a", u"a/b/ => a/b", u"/a => /", u"//a => //", u"/", u"a => ", u"",
       u"~/a => ~", u"../a => .."},
      [](const ustring& name) { return detail::extract_parent_path(name); });
}

TEST(FilesystemTest, TemporaryNamesAreNewAndReadableOnceCreated) {
  const TemporaryTree tree;
  const path name = tmpnam(tree.Text(), u"tmp\xDCFF", u".x");
  EXPECT_EQ(name.native().size(), tree.Text("tmp?.x").size() + 16);
  EXPECT_TRUE(name.native().starts_with(tree.Text("tmp\xFF")) && name.native().ends_with(u".x"));
  EXPECT_FALSE(name == tmpnam(tree.Text(), u"tmp\xDCFF", u".x") || remove(name)) << "created";
  EXPECT_EQ(tmpnam(u"/", u"a", u"").native().size() + tmpnam(u"", u"a", u"").native().size(), 35U);
  EXPECT_THROW((void)tmpnam(u"/\xD800", u"a", u""), std::system_error);
  tree.File("a", "two words");
  rename(tree.Text("a"), name);
  EXPECT_THROW(rename(tree.Text("a"), name), std::system_error);
  ifstream file(name);
  std::string one, other;
  EXPECT_TRUE(file >> one >> other && file.is_open() && other == "words");
  EXPECT_TRUE(remove(name) && !remove(u"\xD800") && std::filesystem::is_empty(tree.Path()));
}

TEST(FilesystemTest, OnlyRegularFilesAreOpened) {
  const TemporaryTree tree;
  ASSERT_EQ(mkfifo(tree.Path("fifo").c_str(), 0600), 0);
  for (const auto& [name, error] : std::vector<std::pair<ustring, std::errc>>{
           {tree.Text(), std::errc::is_a_directory},
           {tree.Text("fifo"), std::errc::invalid_argument},
           {tree.Text("absent"), std::errc::no_such_file_or_directory},
           {u"/dev/zero", std::errc::invalid_argument},
           {u"", std::errc::no_such_file_or_directory},
           {u"/\xD800", std::errc::invalid_argument}}) {
    ifstream file(name);
    EXPECT_EQ(file.rdstate(), std::ios::failbit) << testing::PrintToString(name);
    EXPECT_EQ(file.openError(), error) << testing::PrintToString(name);
    EXPECT_FALSE(file.is_open() || file.get() != ifstream::traits_type::eof());
  }
  tree.File("file");
  EXPECT_FALSE(ifstream(tree.Text("file")).openError());
  streamsLackMemory = true;
  EXPECT_EQ(ifstream(tree.Text("file")).openError(), std::errc::not_enough_memory);
  streamsLackMemory = false;
}

}  // namespace
}  // namespace fl::filesystem
