#include "searchpath/platform/atomic_file_writer.h"

#include "support/refused_calls.h"
#include "support/temporary_tree.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>

// Stands in front of the one that the library would call. Every other call is interrupted, and one for
// more than a page takes half.
extern "C" [[gnu::visibility("default")]] ssize_t write(int file, const void* bytes,
                                                        std::size_t size) {
  thread_local bool isInterrupted = false;
  isInterrupted = !isInterrupted;
  if (isInterrupted) return errno = EINTR, -1;
  return syscall(SYS_write, file, bytes, size > 0x1000 ? size / 2 : size);
}

namespace fl::filesystem {
namespace {

using Corvane::PathManagement::TextFromBytes;
using Corvane::PathManagement::test::TemporaryTree;

std::map<std::string, std::string> Contents(const TemporaryTree& tree) {
  std::map<std::string, std::string> contents;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(tree.Path())) {
    const std::string name = std::filesystem::relative(entry.path(), tree.Path());
    contents[name] = entry.is_regular_file() ? tree.Content(name) : "no file";
  }
  return contents;
}

const std::string kContent = [] {
  std::string content(300'000, '\0');
  for (std::size_t at = 0; at < content.size(); ++at)
    content[at] = static_cast<char>('a' + at % 23);
  return content;
}();

/// The ways to write all of the content. None of them looks whether it worked.
const std::map<std::string, std::function<void(std::ostream&)>> kWays = {
    {"bytes", [](auto& out) { std::ranges::copy(kContent, std::ostreambuf_iterator<char>(out)); }},
    {"one big write", [](auto& out) { out << kContent; }},
    {"buffer", [](auto& out) { out.rdbuf()->sputn(kContent.data(), std::ssize(kContent)); }},
    {"unchecked", [](auto& out) { out.exceptions(std::ios::goodbit), out << kContent; }},
    {"going back", [](auto& out) {
       (out << "old" << kContent.substr(3, kContent.size() - 4)).seekp(0) << kContent.substr(0, 3);
       out.seekp(0, std::ios::end) << kContent.back();
     }}};

/// Returns what went wrong, "" for nothing.
std::string Write(const std::string& target, const std::string& way) try {
  AtomicFileWriter writer(TextFromBytes(target), u"tmp_", u".x");
  try {
    kWays.at(way)(writer.Stream());
  } catch (const std::ios::failure&) {
    // what a careless writer makes of it
  }
  return writer.Commit(), "";
} catch (const std::system_error& error) {
  return error.what();
}

using Corvane::PathManagement::test::Refusing;

#ifdef SYS_rename
constexpr unsigned kRename = SYS_rename;
#else
constexpr unsigned kRename = SYS_renameat;
#endif

void LimitSizes() {
  constexpr rlimit limit = {299'999, 299'999};
  signal(SIGXFSZ, SIG_IGN);
  setrlimit(RLIMIT_FSIZE, &limit);
}

void BecomeNobody() {
  if (setresuid(65534, 65534, 65534) != 0 && geteuid() == 0) std::abort();
}

struct Failure {
  std::string complaint, target, reason;  // the target is a name in the tree
  std::function<void()> spoil = [] {};
};

TEST(AtomicFileWriterTest, AFailureNamesTheFileAndChangesNothing) {
  const TemporaryTree tree;
  tree.Files({"file", "folder/file", "closed/file"});
  tree.File("file", "old");
  ASSERT_EQ(mkfifo(tree.Path("fifo").c_str(), 0600), 0);
  ASSERT_EQ(chmod(tree.Path("closed").c_str(), 0555) + chmod(tree.Path().c_str(), 0755), 0);
  const auto before = Contents(tree);
  const std::vector<Failure> rows = {
      {"create a file beside", "absent/file", ": No such file or directory"},
      {"examine", "file/file", ": Not a directory"},
      {"replace", "folder", ": Is a directory"},
      {"write", "folder/", ": Is a directory"},
      {"replace", "fifo", ", which is no regular file: Operation not supported"},
      {"create a file beside", "closed/file", ": Permission denied", BecomeNobody},
      {"write", "file", ": File too large", LimitSizes},
      // A disk that is full (to big writes: sanitizers make small ones), one without room for another file, one that fails.
      {"write", "file", ": No space left on device", Refusing(SYS_write, 2, ~0xFFFU, ENOSPC)},
      {"create a file beside", "file", ": No space left on device",
       Refusing(SYS_openat, 2, O_CREAT, ENOSPC)},
      {"bring to the disk", "file", ": Input/output error", Refusing(SYS_fsync, 0, ~0U, EIO)},
      {"put in place", "file", ": Operation not permitted", Refusing(kRename, 0, ~0U, EPERM)},
      {"create a file beside", "file", ": File exists", Refusing(SYS_openat, 2, O_CREAT, EEXIST)}};
  for (const auto& [complaint, target, reason, spoil] : rows) {
    const std::string path = tree.Path() + "/" + target;
    const std::string expected = "cannot " + complaint + " \"" + path + "\"" + reason;
    for (const auto& [way, ignored] : kWays) {
      EXPECT_EXIT((spoil(), std::cerr << Write(path, way), _exit(0)), testing::ExitedWithCode(0),
                  testing::Eq(expected))
          << way;
      EXPECT_EQ(Contents(tree), before) << expected << ", " << way;
    }
  }
  EXPECT_EQ(Write("", "bytes"), "cannot write \"\": No such file or directory");
}

TEST(AtomicFileWriterTest, AllIsWrittenAndPermissionsAreHandedDown) {
  for (const auto& [way, ignored] : kWays) {
    const TemporaryTree tree;
    tree.Files({"old", "target"});
    tree.Link("target", "link");
    ASSERT_EQ(chmod(tree.Path("old").c_str(), 0460), 0);
    const mode_t maskBefore = umask(0027);
    for (const auto& [file, mode] : {std::pair("old", 0460U), {"new", 0640U}, {"link", 0640U}}) {
      struct stat status = {};
      EXPECT_EQ(Write(tree.Path(file), way), "") << file;
      EXPECT_EQ(tree.Content(file), kContent) << file << ", " << way;
      EXPECT_EQ(lstat(tree.Path(file).c_str(), &status), 0);
      EXPECT_EQ(status.st_mode, S_IFREG | mode) << file << ", " << way;
    }
    umask(maskBefore);
    EXPECT_EXIT((std::cerr << Write(chdir(tree.Path().c_str()) == 0 ? "new" : "", way), _exit(0)),
                testing::ExitedWithCode(0), "^$")
        << "relative";
    EXPECT_EQ(tree.Content("target"), "") << "written through a link";
    EXPECT_EQ(Contents(tree).size(), 4U) << way << " left something behind";
  }
}

TEST(AtomicFileWriterTest, TheLastOfTwoWritersWinsAndAKillHindersNobody) {
  const TemporaryTree tree;
  const path file = tree.Text("file");
  AtomicFileWriter first(file, u"tmp_", u".x");
  AtomicFileWriter last(file, u"tmp_", u".x");
  EXPECT_EXIT((AtomicFileWriter(file, u"tmp_", u".x").Stream().flush(), raise(SIGKILL)),
              testing::KilledBySignal(SIGKILL), "");
  EXPECT_EQ(last.Stream().exceptions(), std::ios::failbit | std::ios::badbit);
  last.Stream() << "last";
  first.Stream() << "first";
  first.Commit();
  EXPECT_EQ(tree.Content("file"), "first");
  last.Commit();
  EXPECT_EQ(tree.Content("file"), "last");
  EXPECT_EQ(Contents(tree).size(), 2U) << "the file, and what the kill left";
}

}  // namespace
}  // namespace fl::filesystem
