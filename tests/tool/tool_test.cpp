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
mkdir -p over lib/private lib/sub/deep lib/+pkg/@cls lib/@shape lib/resources odd a:b @list mid
touch mid/fo.m over/fn.m lib/fn.m lib/fn.c lib/Case.m lib/plain lib/private/fn.m lib/private/own.m
touch lib/sub/below.m lib/sub/deep/deep.m lib/+pkg/inner.m lib/@shape/shape.m a:b/colon mid/shape.m
touch "odd/it's \"q\" 100%.m" odd/[x,y] odd/{} odd/CASE.m odd/-1 'odd/two
lines' "$(printf 'odd/bad\377')" "$(printf 'odd/esc\033[31m')" "$(printf 'odd/\342\200\256')"
ln -s ../lib/plain over/link; ln -s nothing over/dangling; ln -s loop loop; mkfifo over/fifo
ln -s .. lib/sub/up; printf 'a:b\n\nlib\n' >folders; yes lib | head -n 9999 >long)sh";

// The program as a shell runs it, in a tree of its own. In commands it is called "s"; in what is
// expected, "$T" is the tree, and ` a quote.
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
        "export TERM=xterm; unset NO_COLOR; s() { '" SEARCHPATH_TOOL
        "' \"$@\"; }\n"
        "words() { grep -oE '\"(rule|outcome)\":[^,]*' | cut -d'\"' -f4 | paste -sd ' '; }\ncd ";
    const int status =
        std::system((start + root + "/tree\nexport XDG_CONFIG_HOME=${PWD%/tree}/config\n{ " +
                     command + "\n} >" + out + " 2>../error </dev/null")
                        .c_str());
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
                              root + "/tree");
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
      {"s find fn.m dangling link fifo sub own.m --path=over:lib", 1,
       "`fifo` on the path\nsearchpath: no file called `sub` on", "$T/over/fn.m\n$T/over/link\n"},
      {"s find --all fn.m --path over --path lib", 0, "", "$T/over/fn.m\n$T/lib/fn.m\n"},
      {"s find fn --ext c --ext .m --path over:lib", 0, "", "$T/over/fn.m\n"},
      {"s find shape pkg/inner own --ext m --from lib --path lib", 0, "",
       "$T/lib/@shape/shape.m\n$T/lib/+pkg/inner.m\n$T/lib/private/own.m\n"},
      {"s find deep.m --recursive --path lib", 0, "", "$T/lib/sub/deep/deep.m\n"},
      {"s find case.m --path lib:odd", 1,
       "path; did you mean `$T/lib/Case.m` (another case: --policy ignore-case finds it) or "
       "`$T/odd/CASE.m` (another case)?\n",
       ""},
      {"s find fp.m plain.x --path over:mid:lib", 1,
       "did you mean `$T/over/fn.m` (one letter off) or `$T/mid/fo.m` (one letter off)?\n"
       "searchpath: no file called `plain.x` on the path; did you mean `$T/lib/plain` (another ",
       ""},
      {"s find \"it's \\\"q\\\" 100%.m\" --path odd", 0, "", "$T/odd/it's `q` 100%.m\n"},
      {"s find [x,y] {} --path odd -- -1", 0, "", "$T/odd/[x,y]\n$T/odd/{}\n$T/odd/-1\n"},
      {"s find 'a\nb' --path odd", 1, "searchpath: no file called `a\\x0Ab` on the path\n", ""},
      {"s find --json $(printf 'bad\\377') --path odd | cut -d'\"' -f4,12 | tr '\"' '\n' |"
       " { read -r name && echo $name && base64 -d; }",
       0, "", "bad\uFFFD\n$T/odd/bad\xFF"},
      {"s find colon FN.M --policy ignore-case --path @folders", 0, "",
       "$T/a:b/colon\n$T/lib/fn.m\n"},
      {"echo file://$PWD/%61:b | s find colon --path -", 0, "", "$T/a:b/colon\n"},
      {"printf 'plain\\n\\nfn.c' | s find --stdin --path lib", 2,
       "line 2 of standard input is empty, which means no file\n", "$T/lib/plain\n$T/lib/fn.c\n"},
      {"printf 'two\nlines\\0bad\\377\\0fm.m' | s find --stdin -0 --path odd:lib | tr '\\0' '|'", 0,
       "no file called `fm.m` on the path\n", "$T/odd/two\nlines|$T/odd/bad\xFF|"},
  });
}

TEST_F(ToolTest, FindExplains) {
  Check({
      {"s find --explain fn.m --path lib/sub/deep:lib:loop --from lib", 0, "a loop of links\n",
       "`fn.m` means $T/lib/private/fn.m\nfolders asked, in order:\n"
       "  holds it                     $T/lib/private  from --path lib\n"
       "  absent                       $T/lib/sub/deep\n"
       "  hidden by an earlier folder  $T/lib          holds $T/lib/fn.m\n"
       "  unreadable                   $T/loop         a loop of links\n"
       "why: the private folder of the folder that asks comes first\n"},
      {"s find --explain fn no/x --ext c --ext m --path lib", 1, "`no/x` on the path\n",
       "`fn` means $T/lib/fn.c\nfolders asked, in order:\n  holds it  $T/lib  also holds "
       "$T/lib/fn.m\nwhy: the first folder on the path that holds it\n`no/x` means no file\n"
       "folders asked: none, since no folder of the path fits the name\nwhy: no folder holds it\n"},
      {"s find --explain fn.m --json --path no:over", 0, "cannot search `$T/no`: no such folder\n",
       "{`name`:`fn.m`,`path`:`$T/over/fn.m`,`rule`:`first-folder`,`asked`:[{`folder`:`$T/no`,"
       "`kind`:`ordinary`,`outcome`:`unreadable`,`files`:[],`origin`:`no`,`source`:`command-line`,"
       "`problem`:`no such folder`},{`folder`:`$T/over`,`kind`:`ordinary`,`outcome`:`holds-it`,"
       "`files`:[{`path`:`$T/over/fn.m`}],`origin`:`over`,`source`:`command-line`}]}\n"},
      {"s find --explain --json shape private/own --ext m --path mid:lib | words", 0, "",
       "folder-before-method holds-it absent loses-to-earlier-folder partial-pathname holds-it\n"},
      {"s find --explain --json shape case own --ext m --path lib:mid --from lib | words", 0,
       "`case`",
       "method-entry-first absent absent hidden-by-earlier method-entry nothing-found absent "
       "other-case-only absent private-folder holds-it absent absent\n"},
  });
}

TEST_F(ToolTest, FilesListAndIriAnswer) {
  Check({
      {"s files --path mid:lib/+pkg", 0, "", "$T/mid/fo.m\n$T/mid/shape.m\n$T/lib/+pkg/inner.m\n"},
      {"s files --ext m --ext .M --policy ignore-case --all --from lib --path over:lib", 0, "",
       "$T/lib/Case.m\n$T/lib/fn.m\n$T/lib/private/fn.m\n$T/lib/private/own.m\n"
       "$T/lib/+pkg/inner.m\n$T/lib/@shape/shape.m\n"},
      {"s files --ext .C --path lib", 1, "searchpath: no such file in the folders", ""},
      {"s files --from lib/+pkg --json --path lib", 0, "",
       "{`path`:`$T/lib/+pkg/inner.m`,`folder`:`$T/lib/+pkg`,`kind`:`+`}\n"},
      {"s list --long --path lib/+pkg:over:no", 0, "no such folder\n",
       "      1 file   ordinary   $T/lib/+pkg\n      0 files  @          $T/lib/+pkg/@cls  "
       "(from --path lib/+pkg)\n"
       "      2 files  ordinary   $T/over\n      0 files  ordinary   $T/no  (no such folder)\n"},
      {"s list --path lib", 0, "",
       "$T/lib\n$T/lib/private\n$T/lib/resources\n$T/lib/+pkg\n$T/lib/+pkg/@cls\n$T/lib/@shape\n"},
      {"s list --json --path over:no", 0, "no such folder\n",
       "{`path`:`$T/over`,`kind`:`ordinary`,`items`:2,`problem`:null,`origin`:`over`,`source`:"
       "`command-line`}\n{`path`:`$T/no`,`kind`:`ordinary`,`items`:0,`problem`:`no such folder`,"
       "`origin`:`no`,`source`:`command-line`}\n"},
      {"s list --strict --quiet --path no", 2, "", "$T/no\n"},
      {"s iri 'a %' http://h/%41", 0, "",
       "iri: file://$T/a%20%25\ncanonical: file://$T/a%20%25\n"
       "path: $T/a %\niri: http://h/A\ncanonical: http://h/A\n"},
      {"s iri file://h/x --json lib/sub/up", 2, "invalid IRI `file://h/x`",
       "{`text`:`lib/sub/up`,`iri`:`file://$T/lib/sub/up`,`canonical`:`file://$T/lib`,"
       "`path`:`$T/lib/sub/up`}\n"},
  });
}

TEST_F(ToolTest, FoldersAreHiddenAndShownOnce) {
  Check({
      {"ln -s lib link; s list --path over:link:lib:mid/../over --without lib/+pkg", 0, "",
       "$T/over\n$T/link\n$T/link/private\n$T/link/resources\n$T/link/@shape\n"},
      {"s find --all fn.m --path lib:link --keep-duplicates", 0, "", "$T/lib/fn.m\n$T/link/fn.m\n"},
      {"s files --path lib --from lib --all --without lib/private --without mid --ext m", 0,
       "--without `mid` hides nothing: that folder is not on the path\n",
       "$T/lib/Case.m\n$T/lib/fn.m\n$T/lib/+pkg/inner.m\n$T/lib/@shape/shape.m\n"},
      {"s find --explain fn.m --path over:lib:link --without over", 0, "",
       "`fn.m` means $T/lib/fn.m\nfolders asked, in order:\n"
       "  filtered out         $T/over  by --without over\n  holds it             $T/lib\n"
       "  dropped as a repeat  $T/link  the same as $T/lib\n"
       "why: the first folder on the path that holds it\n"},
      {"s find --explain case.m --path lib | sed -n 3p", 0, "no file called `case.m`",
       "  other case only  $T/lib  holds $T/lib/Case.m\n"},
      {"s find --explain --json fn.c --path lib:link --without lib/private --from lib |"
       " grep -oE 'outcome.:.[df][^}]*' | cut -d'\"' -f3-",
       0, "",
       "filtered-out`,`files`:[],`origin`:`lib`,`source`:`command-line`,`hider`:`lib/private`\n"
       "dropped-as-repeat`,`files`:[],`origin`:`link`,`source`:`command-line`,`repeats`:`$T/"
       "lib`\n"},
      {"s folders pkg lib/resources +PKG $PWD/link --path lib", 1,
       "is called `+PKG`; did you mean `$T/lib/+pkg` (another case: --policy ignore-case finds "
       "it)?",
       "$T/lib/+pkg\n$T/lib/resources\n$T/lib\n"},
      {"s folders --literal cls +pkg/cls --path lib --json", 1,
       "`cls`; did you mean `$T/lib/+pkg/@cls`?",
       "{`name`:`+pkg/cls`,`path`:`$T/lib/+pkg/@cls`,`kind`:`@`}\n"},
      {"s folders --literal pkg --path lib -0", 1, "without --literal it denotes `$T/lib/+pkg`\n",
       ""},
      {"s folders $PWD/no sbu --path lib:lib/sub", 1, "called `sbu`; did you mean `$T/lib/sub`?",
       ""},
  });
}

TEST_F(ToolTest, ShadowsAndDoctorCheck) {
  Check({
      {"echo 1 >mid/fn.m; ln -s ../mid/fn.m a:b; s shadows --path mid:over:lib --path @folders", 1,
       "",
       "`fn.m` means $T/mid/fn.m and hides\n  different   $T/over/fn.m\n"
       "  different   $T/lib/fn.m\n  same file   $T/a:b/fn.m\n"},
      {"s shadows --ext m --json --path lib:over --path mid", 1, "",
       "{`name`:`fn`,`path`:`$T/lib/fn.m`,`hidden`:[{`path`:`$T/over/fn.m`,`kind`:`identical`},"
       "{`path`:`$T/mid/fn.m`,`kind`:`different`}]}\n"
       "{`name`:`shape`,`path`:`$T/lib/@shape/shape.m`,`hidden`:[{`path`:`$T/mid/shape.m`,"
       "`kind`:`identical`}]}\n"},
      {"s shadows --summary --path over:lib:mid", 1, "",
       "1 name hides 2 files: 1 different, 1 identical\n"
       "  $T/over hides 1 file of $T/lib: 1 identical\n"
       "  $T/over hides 1 file of $T/mid: 1 different\n"},
      {"s shadows --summary --json --path over:lib | cut -d, -f-4", 0, "",
       "{`names`:1,`files`:1,`different`:0,`identical`:1\n"
       "{`winner`:`$T/over`,`hidden`:`$T/lib`,`files`:1,`different`:0\n"},
      {"printf 'fn.m\nold.m' >allow; s shadows --allow allow --path over:lib", 0,
       "searchpath: --allow `old.m`: that name hides nothing (any more)\n", ""},
      {"s shadows plain Plain --path lib:over --summary", 0,
       "`Plain` on the path; did you mean `$T/", "0 names hide 0 files\n"},
      {"s shadows --path over:no --strict", 2, "cannot search `$T/no`: no such folder\n", ""},
      {"s shadows --path over --allow no", 2, "cannot read `no`, the names of --allow: No such",
       ""},
      {"s doctor --path mid:over --path lib --without lib/sub", 0, "--without `lib/sub` hides", ""},
      {"s doctor --path over:no:./over:odd:lib/private:lib | sed 's/;.*//'", 0, "",
       "$T/no: no such folder\n$T/over: the same folder as $T/over\n"
       "$T/odd/bad\xFF: names that are not UTF-8\n"
       "$T/lib/private: belongs to $T/lib, which is on the path\n"
       "$T/odd/CASE.m, $T/lib/Case.m: names that are one where case is ignored\n"},
      {"echo http://h/ >web; s doctor --json --path over:no --path @web --without over", 1, "",
       "{`finding`:`unreadable`,`path`:`http://h/`,`origin`:`http://h/`,`problem`:`not a pathname "
       "or an IRI that names a folder here`,`advice`:`mend that, or take the folder off the path`}"
       "\n{`finding`:`missing`,`path`:`$T/no`,`origin`:`no`,`problem`:`no such folder`,"
       "`advice`:`make the folder, or take it off the path`}\n"},
      {"s doctor --slow 0 --path over --json | cut -d'\"' -f4,8,12", 0, "",
       "slow\"$T/over\"over\n"},
      {"s doctor --slow 1x --path over", 2, "--slow is a number of milliseconds, not `1x`", ""},
      {"s docter", 2, "there is no command `docter`; did you mean doctor?", ""},
  });
}

TEST_F(ToolTest, DiffTellsFoldersOrNames) {
  Check({
      {"s diff over:lib over:over/../lib:", 0, "", ""},
      {"s diff over:mid:no lib:over", 1, "cannot search `$T/no`: no such folder\n",
       "removed    2         $T/mid\nremoved    3         $T/no\n"
       "added      1         $T/lib\n"},
      {"printf 'lib\nover\nmid\n' | s diff over:mid:lib -", 1, "", "moved      3 -> 1    $T/lib\n"},
      {"s diff --subfolders over:lib mid:over", 1, "",
       "removed    2         $T/lib\nremoved    2         $T/lib/private\n"
       "removed    2         $T/lib/resources\nremoved    2         $T/lib/+pkg\n"
       "removed    2         $T/lib/+pkg/@cls\nremoved    2         $T/lib/@shape\n"
       "added      1         $T/mid\n"},
      {"s diff --json over mid", 1, "",
       "{`change`:`removed`,`path`:`$T/over`,`kind`:`ordinary`,`old`:1,`new`:null}\n"
       "{`change`:`added`,`path`:`$T/mid`,`kind`:`ordinary`,`old`:null,`new`:1}\n"},
      {"s list --path lib:over --save ../then; touch lib/+pkg/@cls/cls.m; s diff --subfolders "
       "@../then mid:lib:over",
       1, "",
       "added      1         $T/mid\nrefreshed  1 -> 2    $T/lib\nrefreshed  1 -> 2    "
       "$T/lib/+pkg\n"
       "refreshed  1 -> 2    $T/lib/+pkg/@cls\n"},
      {"mv lib/fn.m lib/other.m; s diff --names @../then lib:over; s diff --names lib:over "
       "@../then",
       1, "",
       "changed  $T/lib/fn.m -> $T/over/fn.m\nnew      $T/lib/other.m\n"
       "changed  $T/over/fn.m -> $T/lib/fn.m\ngone     $T/lib/other.m\n"},
      {"mv lib/other.m lib/fn.m; s diff @../then lib:over; s diff @../then @../then", 0, "",
       "refreshed  1         $T/lib\n"},
      {"s diff --names over:lib over:lib/../lib", 0, "", ""},
      {"s diff --names over:mid:lib lib:over", 1, "",
       "changed  $T/over/fn.m -> $T/lib/fn.m\ngone     $T/mid/fo.m\ngone     $T/mid/shape.m\n"},
      {"s diff --names --json mid lib/+pkg:over | sed -n 1,3p", 0, "",
       "{`change`:`new`,`name`:`fn.m`,`old`:null,`new`:`$T/over/fn.m`}\n"
       "{`change`:`gone`,`name`:`fo.m`,`old`:`$T/mid/fo.m`,`new`:null}\n"
       "{`change`:`new`,`name`:`inner.m`,`old`:null,`new`:`$T/lib/+pkg/inner.m`}\n"},
      {"s diff --names over lib --color always | head -n 1", 0, "",
       "\x1b[32mnew\x1b[0m      $T/lib/Case.m\n"},
      {"s diff --strict --quiet lib no", 2, "",
       "removed    1         $T/lib\nadded      1         $T/no\n"},
  });
}

TEST_F(ToolTest, TheStoredPathIsEditedAndUsed) {
  Check({
      {"s list", 2, "and none stored with searchpath add; type: searchpath list --path \"$PATH\"",
       ""},
      {"s add over lib && cat $XDG_CONFIG_HOME/searchpath/path", 0, "", "$T/over\n$T/lib\n"},
      {"s list --long | head -n 1", 0, "",
       "      2 files  ordinary   $T/over  (from the stored path)\n"},
      {"s add mid --dry-run && s list | wc -l", 0, "",
       "added      1         $T/mid\nnew      $T/mid/fo.m\nnew      $T/mid/shape.m\n7\n"},
      {"s add mid no", 2, "no folder `no`; check the spelling", ""},
      {"mkdir 'new\nline' && s add --end over 'new\nline' mid && rmdir 'new\nline'; "
       "cat $XDG_CONFIG_HOME/searchpath/path",
       0, "", "$T/lib\n$T/over\nfile://$T/new%0Aline\n$T/mid\n"},
      {"s remove 'new\nline' never http://h/ over/.", 1,
       "the folder `$T/never` is not on the path; name it as the path lists it\n"
       "searchpath: the folder `http://h/` is not on the path",
       ""},
      {"s remove mid --dry-run; s list --quiet | tail -n 1", 0, "",
       "removed    2         $T/mid\ngone     $T/mid/fo.m\ngone     $T/mid/shape.m\n$T/mid\n"},
      {"for i in $(seq 30); do mkdir d$i; s add --store ../many d$i & done; wait; wc -l <../many",
       0, "", "30\n"},
      {"printf '~/\n/x//y\n' >../real; ln -s real ../store; s add --store ../store mid; cat "
       "../real",
       0, "", "$T/mid\n~/\n/x//y\n"},
      {"echo lib >../store; s add mid --store ../store", 2, "folder 1 of the list", ""},
      {"s add mid --store no/such/file && s add mid --store file && cat no/such/file file", 0, "",
       "$T/mid\n$T/mid\n"},
      {"s add lib --store .", 2, "Is a directory", ""},
  });
}

TEST_F(ToolTest, CachesAndSavedListingsAnswer) {
  Check({
      {"find . -type d -exec touch -d '1 hour ago' {} + && s list --path mid:lib/+pkg --save "
       "../saved"
       " && s cache write ../cache --path over:no",
       0, "cannot search `$T/no`: no such folder\n", ""},
      {"s list --path @../saved", 0, "", "$T/mid\n$T/lib/+pkg\n$T/lib/+pkg/@cls\n"},
      {"s cache verify ../saved", 0, "", "a path of 2 folders; in all 3 folders with 3 files\n"},
      {"touch over/new && s find --all new fn.m --path @../saved --path over --cache ../cache", 0,
       "", "$T/over/new\n$T/over/fn.m\n"},
      {"s files --cache ../cache --quiet", 0, "", "$T/over/fn.m\n$T/over/link\n$T/over/new\n"},
      {"touch mid/x; rm -r lib/+pkg/@cls; s cache verify ../saved", 1, "",
       "stale   $T/mid  (changed since it was listed)\n"
       "stale   $T/lib/+pkg  (changed since it was listed)\n"
       "gone    $T/lib/+pkg/@cls  (no such folder)\n"
       "a path of 2 folders; in all 3 folders with 3 files\n"},
      {"s cache verify --json ../saved | head -1 | cut -d, -f 2-", 0, "",
       "`items`:2,`state`:`stale`,`reason`:`changed since it was listed`}\n"},
      {"head -c 99 ../cache >../cut; s find fn.m --path lib --cache ../cut", 0,
       "cannot use `../cut`: it is cut off; the folders are read\n", "$T/lib/fn.m\n"},
      {"s find fn.m --cache ../cut", 2, "searchpath: cannot use `../cut`: it is cut off\n", ""},
      {"s cache verify over/fifo", 2, "cannot use `over/fifo`: it cannot be opened: it is no reg",
       ""},
      {"s cache write no/x --path lib", 2, "cannot save the listing: cannot open the folder of",
       ""},
      {"s list --path - <../saved", 2, "a saved listing is read from a file: --path @FILE", ""},
      {"SEARCHPATH_LOG=../log s find fn.m fo.m --path lib --cache ../cache; grep -oE "
       "'host::[a-z]+: [a-z ]*' ../log",
       0, "no file called `fo.m`",
       "$T/lib/fn.m\nhost::cache: read the listings of \nhost::folders: read \n"
       "host::index: listed and indexed \n"},
      {"SEARCHPATH_LOG=lib s list --path lib", 2,
       "cannot write the diagnostic log: Failed opening file lib", ""},
      {"s cache wirte x", 2, "after cache comes write or verify, not `wirte`; type:", ""},
  });
}

TEST_F(ToolTest, PackagesAreListedAndSearched) {
  Check({
      {"mkdir -p p/new/lib p/old p/bad; mv lib/fn.m p/new/lib; cd p; f=searchpath.json\n"
       "echo '{\"name\": 7}' >bad/$f; printf "
       "'{\"name\":\"%s\",\"version\":\"1\",\"folders\":[\"lib\","
       "{\"folder\":\"doc\",\"tags\":[3]}]%s}' a '' b ',\"contributesToPath\":false' >both\n"
       "sed 's/}{.*/}/' both >new/$f; sed 's/.*}{/{/' both >old/$f; cd ..\n"
       "s packages --root p --path lib:p/new/lib",
       0, "searchpath: $T/p/bad/searchpath.json:1: name: expected a text\n",
       "a 1: contributes to the path\n  for the path  $T/p/new/lib  (on the path)\n"
       "  other         $T/p/new/doc\nb 1: contributes nothing to the path\n"
       "  other         $T/p/old/lib\n  other         $T/p/old/doc\n"},
      {"s packages --root p --json --quiet | head -n 1", 0, "",
       "{`name`:`a`,`version`:`1`,`path`:`$T/p/new`,`contributesToPath`:true,`checksManualInstall`:"
       "false,`folders`:[{`path`:`$T/p/new/lib`,`tags`:[0],`forPath`:true,`onPath`:null},"
       "{`path`:`$T/p/new/doc`,`tags`:[3],`forPath`:false,`onPath`:null}]}\n"},
      {"s find --explain fn.m --path lib --packages p --quiet", 0, "",
       "`fn.m` means $T/p/new/lib/fn.m\nfolders asked, in order:\n  absent    $T/lib\n"
       "  holds it  $T/p/new/lib  from package a 1\n"
       "why: the first folder on the path that holds it\n"},
      {"s list --json --packages p --strict", 2, ":1: name: expected a text\n",
       "{`path`:`$T/p/new/lib`,`kind`:`ordinary`,`items`:1,`problem`:null,"
       "`origin`:`$T/p/new/lib`,`source`:`package`,`package`:{`name`:`a`,`version`:`1`}}\n"},
      {"s packages --root lib", 1, "no package in `lib`; see searchpath packages --help\n", ""},
      {"s files --packages no", 2, "--packages `no`: no such folder; name the folder that", ""},
      {"s packages --path lib", 2, "needs --root; type: searchpath packages --root DIR", ""},
  });
}

// "begin" comes back when all is watched, "seen N" prints the next N lines, "end" lets nobody read on.
constexpr const char* kWatch = R"sh(cat >../watch <<'END'
begin() {
  rm -f ../told ../seen; mkfifo ../told ../seen
  (exec "$tool" watch "$@") 2>../told >../seen &
  exec 3<../told 4<../seen; read -r told <&3
}
seen() { for line in $(seq $1); do read -r line <&4; echo "$line"; done; }
end() { exec 3<&- 4<&-; wait $!; echo $?; }
END
echo "tool=')sh" SEARCHPATH_TOOL "'\" >>../watch";

TEST_F(ToolTest, WatchTellsWhatChangesWhileItDoes) {
  EXPECT_EQ(RunShell(kWatch).error, "");
  Check({
      {". ../watch; begin --path mid:lib; echo $told; touch mid/Case.m; seen 2; rm mid/Case.m; "
       "seen "
       "2; end",
       0, "",
       "searchpath: watching 2 folders\nrefreshed  1         $T/mid\n"
       "changed  $T/lib/Case.m -> $T/mid/Case.m\nrefreshed  1         $T/mid\n"
       "changed  $T/mid/Case.m -> $T/lib/Case.m\n141\n"},
      {". ../watch; begin --path mid:lib --json; kill -STOP $!; touch mid/x mid/y; rm mid/x "
       "lib/plain;"
       " touch lib/plain; mkdir lib/sub/ordinary; kill -CONT $!; seen 2; end",
       0, "",
       "{`change`:`refreshed`,`path`:`$T/mid`,`kind`:`ordinary`,`old`:1,`new`:1}\n"
       "{`change`:`new`,`name`:`y`,`old`:null,`new`:`$T/mid/y`}\n141\n"},
      {". ../watch; begin --path mid --count 2; mv mid gone; seen 4; read -r told <&3; echo $told;"
       " end; mv gone mid",
       0, "",
       "refreshed  1         $T/mid\ngone     $T/mid/fo.m\ngone     $T/mid/shape.m\n"
       "gone     $T/mid/y\nsearchpath: cannot search \"$T/mid\": no such folder\n0\n"},
      {". ../watch; begin --path lib --subfolders; touch lib/+pkg/@cls/new; seen 3; end", 0, "",
       "refreshed  1         $T/lib\nrefreshed  1         $T/lib/+pkg\n"
       "refreshed  1         $T/lib/+pkg/@cls\n141\n"},
      {". ../watch; begin --path over --recursive; mkdir over/new; seen 1; rmdir over/new; seen 1; "
       "end",
       0, "", "added      2         $T/over/new\nremoved    2         $T/over/new\n141\n"},
      {". ../watch; s add over lib; begin; s remove over; seen 3; s add mid; seen 1; end", 0, "",
       "removed    1         $T/over\nchanged  $T/over/fn.m -> $T/lib/fn.m\n"
       "gone     $T/over/link\nadded      1         $T/mid\n141\n"},
      {". ../watch; echo over >two; echo mid >>two; begin --path @two; echo mid >two; seen 1; end",
       0, "", "removed    1         $T/over\n141\n"},
      {"s watch --path over --count 0", 2, "--count is a number of lines, 1 or more, not `0`", ""},
      {"s watch --path - --recursive", 2, "which standard input cannot be; write the folders", ""},
      {"s watch --path no --strict", 2, "cannot search `$T/no`: no such folder\n", ""},
      {"s watch --path over >&-", 2, "cannot write standard output: Bad file descriptor", ""},
  });
}

TEST_F(ToolTest, WrongUsageIsOneLineThatHelps) {
  Check({
      {"s", 2, "no command; type: searchpath find NAME --path FOLDERS", ""},
      {"s fnid x", 2, "there is no command \"fnid\"; did you mean find?", ""},
      {"s --path lib find x", 2, "type: searchpath find NAME --path FOLDERS", ""},
      {"s find --json", 2, "find needs NAME...; type: searchpath find NAME... --json", ""},
      {"s find x '' --path lib", 2, "an empty NAME means no file", ""},
      {"s find \"it's\" -- -x", 2, "searchpath find --path \"$PATH\" 'it'\\''s' -- -x\n", ""},
      {"s find x --path= --path :", 2, "--path names no folder; write . for", ""},
      {"s find x --path", 2, "--path needs a value after it; see searchpath find -h", ""},
      {"s find x --recurse --path lib", 2, "\"--recurse\"; did you mean --recursive?", ""},
      {"s find x --path @list", 2, "cannot read \"list\", the list of --path @list", ""},
      {"s find x --path - </", 2, "cannot read standard input", ""},
      {"s find x --path lib --from no", 2, "--from \"no\": no such folder", ""},
      {"s find x --path lib --ext ''", 2, "--ext is empty; leave it out", ""},
      {"s find x --path lib --policy any", 2, "--policy is one of case-sensitive, ignore-case", ""},
      {"s find --stdin --path - x", 2, "--stdin takes NAME... from standard input; leave out", ""},
      {"s find --stdin --path -", 2, "both read standard input; write the folders into", ""},
      {"s find --stdin --path lib </", 2, "cannot read standard input, the names of --stdin", ""},
      {"s find --explain x -0 --path lib", 2, "--explain and --print0 exclude each other", ""},
      {"s list --long -0 --path lib", 2, "--long and --print0 exclude each other", ""},
      {"s diff lib", 2, "two paths, OLD and NEW; type: searchpath diff A:B C:D", ""},
      {"s diff - -", 2, "OLD and NEW cannot both be standard input", ""},
      {"s diff lib @list", 2, "cannot read \"list\", the list of NEW @list", ""},
      {"s diff : lib", 2, "OLD names no folder; write . for", ""},
      {"s diff lib lib --names --subfolders", 2, "--names and --subfolders exclude each other", ""},
      {"s add", 2, "add needs FOLDER...; type: searchpath add FOLDER...", ""},
      {"s remove x --store ''", 2, "--store is empty; leave it out", ""},
      {"s files --from over --path lib", 2, "\"over\" is not on the path; searchpath list", ""},
      {"s list --path lib --json -0", 2, "--json and --print0 exclude each other", ""},
      {"s find fn.m --path lib >/dev/full", 2, "cannot write standard output: No space left", ""},
      {"s -h >&-", 2, "cannot write standard output: Bad file descriptor", ""},
  });
}

TEST_F(ToolTest, HelpFitsAScreenAndBeginsWithExamples) {
  for (const std::string command :
       {"s ", "s find ", "s files ", "s list ", "s folders ", "s shadows ", "s doctor ", "s iri ",
        "s cache ", "s cache write ", "s cache verify ", "s diff ", "s add ", "s remove ",
        "s packages ", "s watch "}) {
    const std::string help = RunShell(command + "-h").out;
    EXPECT_TRUE(help.starts_with("Usage: searchpath")) << help;
    EXPECT_LE(std::count(help.begin(), help.end(), '\n'), 24) << command;
    EXPECT_EQ(RunShell(command + "-h | grep -E '.{81}'").out, "");
    EXPECT_TRUE(RunShell(command + "--help").out.starts_with("Examples:\n")) << command;
    EXPECT_TRUE(RunShell(command + "--version").out.starts_with("searchpath ")) << command;
  }
}

TEST_F(ToolTest, AClosedPipeEndsQuietlyAlsoWhereItsSignalIsIgnored) {
  Check({{"trap '' PIPE; { s list --keep-duplicates --path @long; echo $? >../end; } | sed q", 0,
          "", "$T/lib\n"}});
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
