#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <pty.h>
#include <regex>
#include <string>
#include <vector>

namespace {

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

constexpr const char* kMakeTree = R"sh(
mkdir -p over lib/private lib/sub/deep lib/+pkg/@cls lib/@shape lib/resources odd a:b @list
touch over/fn.m lib/fn.m lib/fn.c lib/Case.m lib/plain lib/private/fn.m lib/private/own.m
touch lib/sub/below.m lib/sub/deep/deep.m lib/+pkg/inner.m lib/@shape/shape.m a:b/colon
touch "odd/it's \"q\" 100%.m" odd/[x,y] odd/{} odd/++ odd/find odd/-1 'odd/two
lines' "$(printf 'odd/bad\377')" "$(printf 'odd/esc\033[31m')" "$(printf 'odd/\342\200\256')"
ln -s ../lib/plain over/link; ln -s nothing over/dangling; ln -s loop loop; mkfifo over/fifo
ln -s .. lib/sub/up; printf 'a:b\n\nlib\n' >folders; yes lib | head -n 9999 >long)sh";

// The program as a shell runs it, in a tree of its own. In commands it is called "s"; in what is
// expected, "$T" is the tree.
class ToolTest : public testing::Test {
 protected:
  void SetUp() override {
    std::string scratch = testing::TempDir() + "searchpathXXXXXX";
    ASSERT_NE(mkdtemp(scratch.data()), nullptr);
    root = std::filesystem::canonical(scratch);
    std::filesystem::create_directory(root + "/tree");
    const Result made = RunShell(kMakeTree);
    ASSERT_EQ(made.exit, 0) << made.error;
  }
  void TearDown() override { std::filesystem::remove_all(root); }

  [[nodiscard]] Result RunShell(const std::string& command,
                                const std::string& out = "../out") const {
    const std::string start =
        "TERM=xterm; unset NO_COLOR; s() { '" SEARCHPATH_TOOL "' \"$@\"; }; cd ";
    const int status = std::system(
        (start + root + "/tree\n{ " + command + "\n} >" + out + " 2>../error </dev/null").c_str());
    return {WEXITSTATUS(status), Read("error"), Read("out")};
  }

  [[nodiscard]] std::string Read(const std::string& name) const {
    std::ifstream file(root + '/' + name);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  // What `command` writes to a terminal.
  [[nodiscard]] std::string RunOnTerminal(const std::string& command) const {
    int master = -1;
    int slave = -1;
    std::array<char, 4096> text{};
    EXPECT_EQ(openpty(&master, &slave, text.data(), nullptr, nullptr), 0);
    EXPECT_EQ(RunShell(command, text.data()).exit, 0) << command;
    std::string shown(text.data(),
                      static_cast<std::size_t>(read(master, text.data(), text.size())));
    close(slave);
    close(master);
    std::erase(shown, '\r');
    return shown;
  }

  [[nodiscard]] std::string Expand(const char* text) const {
    return std::regex_replace(text, std::regex("\\$T"), root + "/tree");
  }

  void Check(const std::vector<Row>& rows) const {
    for (const Row& row : rows) {
      const Result result = RunShell(row.command);
      const std::regex lines(row.exit == 2 ? "(searchpath: .*\n)?" : "(searchpath: .*\n)*");
      EXPECT_EQ(result.exit, row.exit) << row.command;
      EXPECT_EQ(result.out, Expand(row.out)) << row.command;
      EXPECT_TRUE(result.error.find(Expand(row.error)) != std::string::npos &&
                  result.error.empty() == (*row.error == '\0') &&
                  std::regex_match(result.error, lines))
          << row.command << '\n'
          << result.error;
    }
  }

  std::string root;
};

TEST_F(ToolTest, FindAnswers) {
  Check({
      {"s find fn.m plain --path over:lib", 0, "", "$T/over/fn.m\n$T/lib/plain\n"},
      {"s find --all fn.m --path over --path lib", 0, "", "$T/over/fn.m\n$T/lib/fn.m\n"},
      {"s find no fn.m --path=lib", 1, "no file called \"no\" on the path\n", "$T/lib/fn.m\n"},
      {"s find link dangling fifo sub own.m --path over:lib", 1,
       "\"fifo\" on the path\nsearchpath: no file called \"sub\" on", "$T/over/link\n"},
      {"s find fn --ext c --ext .m --path over:lib", 0, "", "$T/over/fn.m\n"},
      {"s find --all fn --ext c --ext .m --path lib", 0, "", "$T/lib/fn.c\n$T/lib/fn.m\n"},
      {"s find own.m --from lib --path over:lib", 0, "", "$T/lib/private/own.m\n"},
      {"s find pkg/inner.m --path lib", 0, "", "$T/lib/+pkg/inner.m\n"},
      {"s find shape --ext m --path lib", 0, "", "$T/lib/@shape/shape.m\n"},
      {"s find deep.m --recursive --path lib", 0, "", "$T/lib/sub/deep/deep.m\n"},
      {"s find case.m --path lib", 1, "; --policy ignore-case finds \"$T/lib/Case.m\"\n", ""},
      {"s find case.m --path lib --policy ignore-case", 0, "", "$T/lib/Case.m\n"},
      {"s find \"it's \\\"q\\\" 100%.m\" --path odd", 0, "", "$T/odd/it's \"q\" 100%.m\n"},
      {"s find [x,y] {} ++ --path odd", 0, "", "$T/odd/[x,y]\n$T/odd/{}\n$T/odd/++\n"},
      {"s find find --path odd -- -1", 0, "", "$T/odd/find\n$T/odd/-1\n"},
      {"s find $(printf 'bad\\377') --path odd", 0, "", "$T/odd/bad\xFF\n"},
      {"s find 'two\nlines' -0 --path odd | tr '\\0' '|'", 0, "", "$T/odd/two\nlines|"},
      {"s find $(printf 'no\\377') 'a\nb' --path odd", 1,
       "no file called \"no\\xFF\" on the path\nsearchpath: no file called \"a\\x0Ab\"", ""},
      {"cd odd; s find --json $(printf 'bad\\377') --path /proc/self/cwd", 0, "",
       "{\"name\":\"bad\uFFFD\",\"path\":\"/proc/self/cwd/bad\uFFFD\",\"pathBytes\":"
       "\"L3Byb2Mvc2VsZi9jd2QvYmFk/w==\",\"folder\":\"/proc/self/cwd\",\"kind\":\"ordinary\"}\n"},
      {"s find colon fn.m --path @folders", 0, "", "$T/a:b/colon\n$T/lib/fn.m\n"},
      {"echo file://$PWD/%61:b | s find colon --path -", 0, "", "$T/a:b/colon\n"},
      {"s find fn.m --path no:loop:lib", 0, "\"$T/loop\": a loop of links\n", "$T/lib/fn.m\n"},
      {"s find fn.m --path over/dangling", 1, "\"$T/over/dangling\": a link to nothing\n", ""},
      {"s find fn.m --path lib/plain", 1, "cannot search \"$T/lib/plain\": not a folder\n", ""},
      {"s find fn.m --quiet --path no:lib", 0, "", "$T/lib/fn.m\n"},
      {"s find fn.m --strict --path no:lib", 2, "\"$T/no\": no such folder\n", "$T/lib/fn.m\n"},
  });
}

TEST_F(ToolTest, ListAndIriAnswer) {
  Check({
      {"s list --path lib", 0, "",
       "$T/lib\n$T/lib/private\n$T/lib/resources\n$T/lib/+pkg\n"
       "$T/lib/+pkg/@cls\n$T/lib/@shape\n"},
      {"s list --recursive --path over:lib/sub/deep", 0, "", "$T/over\n$T/lib/sub/deep\n"},
      {"s list --json --path lib/+pkg:no", 0, "no such folder\n",
       "{\"path\":\"$T/lib/+pkg\",\"kind\":\"ordinary\"}\n{\"path\":\"$T/lib/+pkg/"
       "@cls\",\"kind\":\"@\"}\n"
       "{\"path\":\"$T/no\",\"kind\":\"ordinary\",\"problem\":\"no such folder\"}\n"},
      {"s list -0 --path over:lib/sub | tr '\\0' '|'", 0, "", "$T/over|$T/lib/sub|"},
      {"s list --strict --quiet --path no", 2, "", "$T/no\n"},
      {"s iri 'a %' http://h/%41", 0, "",
       "iri: file://$T/a%20%25\ncanonical: file://$T/a%20%25\n"
       "path: $T/a %\niri: http://h/A\ncanonical: http://h/A\n"},
      {"cd lib/sub/up/sub/up; s iri . ../over | grep canonical", 0, "",
       "canonical: file://$T/lib\ncanonical: file://$T/over\n"},
      {"s iri file://h/x --json /", 2, "invalid IRI \"file://h/x\"",
       "{\"text\":\"/\",\"iri\":\"file:///\",\"canonical\":\"file:///\",\"path\":\"/\"}\n"},
  });
}

TEST_F(ToolTest, WrongUsageIsOneLineThatHelps) {
  Check({
      {"s", 2, "no command; type: searchpath find NAME --path FOLDERS", ""},
      {"s fnid x", 2, "there is no command \"fnid\"; did you mean find?", ""},
      {"s frobnicate", 2, "there is no command \"frobnicate\"; see searchpath -h", ""},
      {"s --path lib find x", 2, "type: searchpath find NAME --path FOLDERS", ""},
      {"s find --json", 2, "find needs NAME...; type: searchpath find NAME... --json", ""},
      {"s find x '' --path lib", 2, "an empty NAME means no file", ""},
      {"s find \"it's\" -- -x", 2, "searchpath find --path \"$PATH\" 'it'\\''s' -- -x\n", ""},
      {"s find x --path= --path :", 2, "--path names no folder; write . for", ""},
      {"s find x --path", 2, "--path needs a value after it; see searchpath find -h", ""},
      {"s find x --recurse --path lib", 2, "\"--recurse\"; did you mean --recursive?", ""},
      {"s find -1 --path lib", 2, "unknown option \"-1\"; see searchpath find -h", ""},
      {"s list lib", 2, "list takes options only, not \"lib\"", ""},
      {"s find x --path @list", 2, "cannot read \"list\", the list of --path @list", ""},
      {"s find x --path - </", 2, "cannot read standard input", ""},
      {"s find x --path lib --from no", 2, "--from \"no\": no such folder", ""},
      {"s find x --path lib --ext ''", 2, "--ext is empty; leave it out", ""},
      {"s find x --path lib --policy any", 2, "--policy is one of case-sensitive, ignore-case", ""},
      {"s iri . --color pink", 2, "--color is one of auto, always, never, not \"pink\"", ""},
      {"s list --path lib --json -0", 2, "--json and --print0 exclude each other", ""},
      {"s find fn.m --path lib >/dev/full", 2, "cannot write standard output: No space left", ""},
      {"s -h >&-", 2, "cannot write standard output: Bad file descriptor", ""},
  });
}

TEST_F(ToolTest, HelpFitsAScreenAndBeginsWithExamples) {
  for (const std::string command : {"s ", "s find ", "s list ", "s iri "}) {
    const std::string help = RunShell(command + "-h").out;
    EXPECT_TRUE(help.starts_with("Usage: searchpath")) << help;
    EXPECT_LE(std::count(help.begin(), help.end(), '\n'), 24) << command;
    EXPECT_EQ(RunShell(command + "-h | grep -E '.{81}'").out, "");
    EXPECT_TRUE(RunShell(command + "--help").out.starts_with("Examples:\n")) << command;
    EXPECT_TRUE(RunShell(command + "--version").out.starts_with("searchpath ")) << command;
  }
}

TEST_F(ToolTest, AClosedPipeEndsQuietlyAlsoWhereItsSignalIsIgnored) {
  Check(
      {{"trap '' PIPE; { s list --path @long; echo $? >../end; } | head -n 1", 0, "", "$T/lib\n"}});
  EXPECT_EQ(Read("end"), "141\n");
}

TEST_F(ToolTest, OnATerminalNamesAreHarmlessAndEmphasised) {
  const std::string find =
      "s find \"$(printf 'esc\\033[31m')\" 'two\nlines' $(printf 'bad\\377') --path odd";
  const std::string plain = Expand("$T/odd/esc\\x1B[31m\n$T/odd/two\\x0Alines\n$T/odd/bad\\xFF\n");
  EXPECT_EQ(RunOnTerminal(find + " --color never"), plain);
  EXPECT_EQ(RunOnTerminal("export NO_COLOR=1; " + find), plain);
  EXPECT_EQ(RunOnTerminal("export TERM=dumb; " + find), plain);
  const std::string direction = "s find $(printf '\\342\\200\\256') --path odd";
  EXPECT_EQ(RunOnTerminal(direction + " --color never"), Expand("$T/odd/\\u202E\n"));
  EXPECT_NE(RunOnTerminal(direction + " --json").find("\"name\":\"\\u202e\""), std::string::npos);
  const std::string bold = Expand("$T/lib/\x1b[1mfn.m\x1b[0m\n");
  EXPECT_EQ(RunOnTerminal("s find fn.m --path lib"), bold);
  EXPECT_EQ(RunShell("s find fn.m --path lib --color always").out, bold);
}

}  // namespace
