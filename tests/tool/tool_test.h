#ifndef SEARCHPATH_TESTS_TOOL_TOOL_TEST_H
#define SEARCHPATH_TESTS_TOOL_TOOL_TEST_H

#include "support/temporary_tree.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <pty.h>
#include <regex>

namespace searchpath_test {

struct Result {
  int exit;
  std::string error;
  std::string out;
};

struct Row {
  const char* command;
  int exit;
  const char* error;  // a part of it; "" for no word at all
  const char* out;
};

inline constexpr const char* kMakeTree = R"sh(
mkdir -p over lib/private lib/sub/deep lib/+pkg/@cls lib/@shape lib/resources odd a:b @list mid
touch mid/fo.zt over/fn.zt lib/fn.zt lib/fn.c lib/Case.zt lib/plain lib/private/fn.zt lib/private/own.zt
touch lib/sub/below.zt lib/sub/deep/deep.zt lib/+pkg/inner.zt lib/@shape/shape.zt a:b/colon mid/shape.zt
touch "odd/it's \"q\" 100%.zt" odd/[x,y] odd/{} odd/CASE.zt odd/-1 'odd/two
lines' "$(printf 'odd/bad\377')" "$(printf 'odd/esc\033[31m')" "$(printf 'odd/\342\200\256')"
ln -s ../lib/plain over/link; ln -s nothing over/dangling; ln -s loop loop; mkfifo over/fifo
ln -s .. lib/sub/up; printf 'a:b\n\nlib\n' >folders; yes lib | head -n 9999 >long)sh";

// What answers in place of the tool; null as a rule. It need not find the same words for people.
inline const char* const kStandIn = std::getenv("SEARCHPATH_STAND_IN");

// The program as a shell runs it, in a tree of its own. In commands it is called "s"; in what is
// expected, "$T" is the tree, and ` a quote.
class ToolTest : public testing::Test {
 protected:
  void SetUp() override {
    tree.Folder("tree");
    const Result made = RunShell(kMakeTree);
    ASSERT_EQ(made.exit, 0) << made.error;
  }

  [[nodiscard]] Result RunShell(const std::string& command,
                                const std::string& out = "../out") const {
    const std::string start =
        "export TERM=xterm; unset NO_COLOR; s() { '" +
        std::string(kStandIn == nullptr ? SEARCHPATH_TOOL : kStandIn) +
        "' \"$@\"; }\n"
        "dead() { export LD_PRELOAD='" SEARCHPATH_SLOW_DISK
        "' SLOW_DISK=\"60000:$1\" ASAN_OPTIONS=verify_asan_link_order=0; }\n"
        "words() { grep -oE '\"(rule|outcome)\":[^,]*' | cut -d'\"' -f4 | paste -sd ' '; }\ncd ";
    const int status = std::system((start + tree.Path("tree") +
                                    "\nexport XDG_CONFIG_HOME=${PWD%/tree}/config\n{ " + command +
                                    "\n} >" + out + " 2>../error </dev/null")
                                       .c_str());
    return {WEXITSTATUS(status), tree.Content("error"), tree.Content("out")};
  }

  // What `command` writes to a terminal.
  [[nodiscard]] std::string RunOnTerminal(const std::string& command) const {
    int master = -1;
    int slave = -1;
    std::array<char, 4096> text{};
    EXPECT_EQ(openpty(&master, &slave, text.data(), nullptr, nullptr), 0);
    EXPECT_EQ(RunShell(command, text.data()).exit, 0) << command;
    close(slave);  // then reading ends with an error, once all has been read
    std::string shown;
    for (ssize_t got = 0; (got = read(master, text.data(), text.size())) > 0;) {
      shown.append(text.data(), static_cast<std::size_t>(got));
    }
    close(master);
    std::erase(shown, '\r');
    return shown;
  }

  [[nodiscard]] std::string Expand(const char* text) const {
    return std::regex_replace(std::regex_replace(text, std::regex("`"), "\""), std::regex("\\$T"),
                              tree.Path("tree"));
  }

  void Check(const std::vector<Row>& rows) const {
    for (const Row& row : rows) {
      const Result result = RunShell(row.command);
      const std::regex lines(row.exit == 2 ? "(searchpath: .*\n)?" : "(searchpath: .*\n)*");
      EXPECT_EQ(result.exit, row.exit) << row.command;
      EXPECT_EQ(result.out, Expand(row.out)) << row.command;
      EXPECT_TRUE(kStandIn != nullptr ||
                  (result.error.find(Expand(row.error)) != std::string::npos &&
                   result.error.empty() == (*row.error == '\0') &&
                   std::regex_match(result.error, lines)))
          << row.command << '\n'
          << result.error;
    }
  }

  const Corvane::PathManagement::test::TemporaryTree tree;
};

}  // namespace searchpath_test

#endif  // SEARCHPATH_TESTS_TOOL_TOOL_TEST_H
