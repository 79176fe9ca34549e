#include "searchpath/host/stored_path.h"

#include "support/refused_calls.h"
#include "support/temporary_tree.h"

#include <gtest/gtest.h>

#include <pwd.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <iostream>

namespace Corvane::PathManagement::host {
namespace {

namespace files = std::filesystem;

struct StoredPathTest : testing::Test {
  /// Puts the folder `name` of the tree behind the others.
  void Add(const std::string& name) const {
    stored.Change([&](auto folders) {
      folders.push_back(tree.IRI(name));
      return folders;
    });
  }

  const test::TemporaryTree tree;
  const StoredPath stored{tree.Text("list")};
};

TEST_F(StoredPathTest, LinesOfFoldersThatStayAreKept) {
  EXPECT_FALSE(stored.Read());
  const std::string lines = "~/\n\n/x//y/\nfile:///a%20b\n";
  tree.File("list", lines);
  EXPECT_EQ(stored.Read().value().at(1).getPath(), u"/x/y");
  stored.Change([](const auto& folders) { return folders; });
  EXPECT_EQ(tree.Content("list"), lines);
  Add("new\nline");
  EXPECT_EQ(tree.Content("list"), "~/\n/x//y/\nfile:///a%20b\n" +
                                      BytesFromText(tree.IRI("new\nline").toString()).value() +
                                      '\n');
  stored.Change([](auto folders) { return folders.erase(folders.begin()), folders; });
  EXPECT_TRUE(tree.Content("list").starts_with("/x//y/\n"));
}

TEST_F(StoredPathTest, AListThatCannotBeReadOrChangedStaysAsItIs) {
  for (const std::string line : {"lib", "./lib", "http://host/lib", "file://host/lib"}) {
    tree.File("list", "/x\n\n" + line + '\n');
    try {
      Add("a");
      ADD_FAILURE() << line;
    } catch (const InvalidStoredPathException& error) {
      EXPECT_TRUE(std::string(error.what()).starts_with("folder 2 of the stored path \""))
          << error.what();
    }
    EXPECT_EQ(tree.Content("list"), "/x\n\n" + line + '\n');
  }
  tree.File("list", "/x\n");
  EXPECT_THROW(stored.Change([](const auto&) -> StoredPath::Folders { throw 7; }), int);
  const StoredPath::Folders elsewhere = {AbsoluteIRI(u"http://host/lib")};
  EXPECT_THROW(stored.Change([&](const auto&) { return elsewhere; }), std::invalid_argument);
  EXPECT_EQ(tree.Content("list"), "/x\n");
  tree.Folder("folder");
  EXPECT_THROW(static_cast<void>(StoredPath(tree.Text("folder")).Read()), std::system_error);
  const auto failure = [this] {
    try {
      return Add("a"), std::string();
    } catch (const std::system_error& error) {
      return std::string(error.what());
    }
  };
  EXPECT_EXIT((test::Refusing(SYS_flock, 1, LOCK_EX, ENOLCK)(), std::cerr << failure(), _exit(0)),
              testing::ExitedWithCode(0), "cannot lock .*list.lock\": No locks available");
  EXPECT_EQ(tree.Content("list"), "/x\n");
}

TEST_F(StoredPathTest, AReaderThatHasTheListOpenKeepsTheOldOne) {
  tree.File("real/list", "/x\n");
  tree.Link("real/list", "list");
  std::ifstream reader(tree.Path("list"));
  Add("a");
  std::string line;
  EXPECT_TRUE(std::getline(reader, line) && line == "/x");
  EXPECT_FALSE(std::getline(reader, line)) << line;
  EXPECT_TRUE(files::is_symlink(tree.Path("list")));
  EXPECT_EQ(tree.Content("real/list"), "/x\n" + tree.Path("a") + '\n');
  // Beside the file itself, where its lock is the same whatever link leads to it.
  EXPECT_TRUE(files::exists(tree.Path("real/list.lock")));
  EXPECT_FALSE(files::exists(tree.Path("list.lock")));
}

TEST_F(StoredPathTest, TheFileThatLinksLeadToIsMade) {
  tree.Link("link", "list");
  tree.Link("new/folder/list", "link");
  Add("a");
  EXPECT_TRUE(files::is_symlink(tree.Path("list")) && files::is_symlink(tree.Path("link")));
  EXPECT_EQ(tree.Content("new/folder/list"), tree.Path("a") + '\n');
}

TEST_F(StoredPathTest, ItStandsBelowTheHomeThatIsKnownBest) {
  const passwd& user = *getpwuid(geteuid());
  const struct {
    const char* config;
    const char* home;
    std::string folder;
  } rows[] = {{"/c", "/h", "/c"},
              {"", "/h", "/h/.config"},
              {"relative", "relative", std::string(user.pw_dir) + "/.config"}};
  const char* const homeBefore = std::getenv("HOME");
  const std::string home = homeBefore == nullptr ? "" : homeBefore;
  for (const auto& row : rows) {
    setenv("XDG_CONFIG_HOME", row.config, 1);
    setenv("HOME", row.home, 1);
    EXPECT_EQ(StoredPath::GetDefaultFile().native(),
              TextFromBytes(row.folder + "/searchpath/path"));
  }
  unsetenv("XDG_CONFIG_HOME");
  setenv("HOME", home.c_str(), 1);
}

}  // namespace
}  // namespace Corvane::PathManagement::host
