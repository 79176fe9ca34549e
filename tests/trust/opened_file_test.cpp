#include "searchpath/host/opened_file.h"

#include "searchpath/host/environment.h"
#include "support/refused_calls.h"
#include "trust/thing.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <system_error>
#include <thread>

namespace Corvane::PathManagement::host {
namespace {

std::string ContentOf(const OpenedFile& file) {
  std::array<char, 64> content{};
  const ssize_t size = pread(file.GetDescriptor(), content.data(), content.size(), 0);
  return {content.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0))};
}

struct OpenTest : testing::Test {
  /// What opening `name` comes to: the content, "none", or the error.
  [[nodiscard]] std::string Open(const Environment& environment, const ustring& name) const {
    try {
      const auto file = environment.Open({.name = name});
      return file ? ContentOf(*file) : "none";
    } catch (const std::system_error& error) {
      return error.code().message();
    }
  }

  test::TemporaryTree tree;
};

TEST_F(OpenTest, TheFileThatTheNameMeansIsOpen) {
  tree.File("mine/plot.zt", "mine");
  tree.File("lib/plot.zt", "hidden");
  tree.File("lib/+geometry/area.zt", "area");
  tree.File("far/axes.zt", "axes");
  tree.Link("../far/axes.zt", "lib/axes.zt");
  tree.Link("lib/../lib", "link");
  const Environment environment({tree.Text("mine"), tree.Text("link")});
  EXPECT_EQ(Open(environment, u"plot.zt"), "mine");
  EXPECT_EQ(Open(environment, u"geometry/area.zt"), "area");
  EXPECT_EQ(Open(environment, u"axes.zt"), "axes");
  EXPECT_EQ(Open(environment, u"none.zt"), "none");
  auto file = environment.Open({.name = u"plot.zt"});
  ASSERT_TRUE(file.has_value());
  EXPECT_EQ(fcntl(file->GetDescriptor(), F_GETFD), FD_CLOEXEC);
  EXPECT_EQ(file->GetItem(), environment.Find({.name = u"plot.zt"}).value());
  const int descriptor = file->Release();
  EXPECT_EQ(file->GetDescriptor(), -1);
  EXPECT_EQ(close(descriptor), 0);
}

TEST_F(OpenTest, WhatHasChangedSinceTheAnswerIsAnError) {
  tree.Files({"lib/gone.zt", "lib/pipe.zt", "lib/folder.zt", "lib/loop.zt"});
  const Environment environment({tree.Text("lib")});
  for (const char16_t* name : {u"gone.zt", u"pipe.zt", u"folder.zt", u"loop.zt"}) {
    ASSERT_EQ(Open(environment, name), "");
  }
  tree.Do("cd lib; rm *; mkfifo pipe.zt; mkdir folder.zt; ln -s loop.zt loop.zt");
  EXPECT_EQ(Open(environment, u"gone.zt"), "No such file or directory");
  EXPECT_EQ(Open(environment, u"pipe.zt"), "Permission denied");
  EXPECT_EQ(Open(environment, u"folder.zt"), "Permission denied");
  EXPECT_EQ(Open(environment, u"loop.zt"), "Too many levels of symbolic links");
}

TEST(OpenedFileTest, TheRootIsAFolderLikeAnyOther) {
  if (!test::CanBecomeOthers()) return;
  test::InSmallMachine([] {
    test::Make({test::Thing::Type::File, "/plot.zt", "", test::kEve});
    const auto file = Environment({u"/"}).Open({.name = u"plot.zt"});
    const auto findings = file->ExamineTrust({.user = test::kOwner});
    return findings.size() == 1 && findings[0].folder == u"/" ? "" : "not found in \"/\"";
  });
}

TEST(OpenedFileTest, AMissingDescriptorIsReportedAsThat) {
  if (!test::CanBecomeOthers()) return;
  test::InSmallMachine([] {
    test::Make({test::Thing::Type::File, "/plot.zt"});
    const Environment environment({u"/"});
    constexpr unsigned kLinuxCommands = 1024;  // the bit in F_DUPFD_CLOEXEC that most others lack
    test::Refusing(SYS_fcntl, 1, kLinuxCommands, EMFILE)();
    try {
      static_cast<void>(environment.Open({.name = u"plot.zt"}));
    } catch (const std::system_error& error) {
      return error.code().value() == EMFILE ? std::string() : error.code().message();
    }
    return std::string("no error");
  });
}

TEST(OpenedFileTest, WhatWasCheckedIsWhatIsOpen) {
  if (!test::CanBecomeOthers()) return;
  test::InSmallMachine([] {
    umask(022);
    test::Make({test::Thing::Type::Folder, "/lib"});
    test::Make({test::Thing::Type::Folder, "/eves", "", test::kEve});
    test::Make({test::Thing::Type::Link, "/link", "lib"});
    for (const char* name : {"/lib/plot.zt", "/eves/plot.zt"}) std::ofstream(name) << name;
    const Environment environment({u"/link"});
    const std::jthread exchange([](const std::stop_token& end) {
      while (!end.stop_requested())
        static_cast<void>(renameat2(0, "/lib", 0, "/eves", RENAME_EXCHANGE));
    });
    std::array<int, 2> seen{};
    std::string wrong;
    // Both are met in the end, whatever else the processors have to do.
    for (int count = 0; count < 200 || seen[0] == 0 || seen[1] == 0; ++count) {
      const auto file = environment.Open({.name = u"plot.zt"});
      const bool isEves = ContentOf(*file) == "/eves/plot.zt";
      ++seen.at(isEves ? 1 : 0);
      if (file->ExamineTrust({.user = test::kOwner}).empty() == isEves) wrong = "not what is open";
    }
    return wrong;
  });
}

}  // namespace
}  // namespace Corvane::PathManagement::host
