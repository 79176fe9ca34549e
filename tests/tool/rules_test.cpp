#include "tool_test.h"

namespace searchpath_test {
namespace {

constexpr const char* kMakePrograms =
    "mkdir -p p/sub q/sub r/draw; printf '#!/bin/sh\\n' | tee p/draw q/draw >q/sub/tool; "
    "chmod +x q/draw q/sub/tool; ln -s nowhere p/gone; mkfifo p/pipe; echo 1 >p/sub/kind.h; "
    "echo 2 >q/sub/kind.h; echo 2 >r/only.h; ";

class RulesTest : public ToolTest {
 protected:
  void SetUp() override {
    ToolTest::SetUp();
    ASSERT_EQ(RunShell(kMakePrograms).exit, 0);
  }
};

TEST_F(RulesTest, WhichAnswersAsAShellDoes) {
  Check({
      {"PATH=p:r:q s which draw", 0, "", "$T/q/draw\n"},
      {"PATH=q:no:q s which -a draw", 0, "", "$T/q/draw\n$T/q/draw\n"},
      {"cd q; PATH= s which draw sub/tool ./draw", 0, "", "$T/q/draw\n$T/q/sub/tool\n$T/q/draw\n"},
      {"PATH=p:q s which gone pipe sub", 1, "no file called `gone` on the path", ""},
      {"PATH=p:q/sub s which Draw draw", 1,
       "no file called `Draw` on the path; did you mean `$T/p/draw` (another case)?\n"
       "searchpath: no file called `draw` on the path; `$T/p/draw` may not be executed\n",
       ""},
      {"PATH=p s which", 1, "", ""},
      {"(unset PATH; s which draw)", 2, "PATH is not set; export it\n", ""},
      {"PATH=p s which --strict x", 2, "unknown option", ""},
      {"mkdir @a '~'; cp -p q/draw @a; cp -p q/draw '~'/home; PATH=@a:~ s which draw; "
       "PATH='~' s which home",
       0, "", "$T/@a/draw\n$T/~/home\n"},
      {"PATH=p:r:q:q s which --explain draw", 0, "",
       "`draw` means $T/q/draw\nfolders asked, in order:\n"
       "  not executable               $T/p  $T/p/draw\n"
       "  a folder of that name        $T/r  $T/r/draw\n"
       "  holds it                     $T/q\n"
       "  hidden by an earlier folder  $T/q  holds $T/q/draw\n"
       "why: the first folder on the path that holds it\n"},
      {"PATH=p s which --explain draw gone pipe | grep -v ^fold", 0, "no file called",
       "`draw` means no file\n  not executable  $T/p  $T/p/draw\n"
       "why: none of the files of that name may be executed; bash would try the first one all the "
       "same\n"
       "`gone` means no file\n  a link that leads nowhere  $T/p  $T/p/gone\n"
       "why: no folder holds it\n"
       "`pipe` means no file\n  another type of file  $T/p  $T/p/pipe\n"
       "why: no folder holds it\n"},
  });
}

TEST_F(RulesTest, NamesAreRelativeToTheFoldersOfThePath) {
  Check({
      {"s find sub/kind.h lib/private/own.zt only.h --as plain --path p:.:q --from r", 0, "",
       "$T/p/sub/kind.h\n$T/lib/private/own.zt\n$T/r/only.h\n"},
      {"s find sub/kind.h --as include --path p:q:p --after p --json", 0, "",
       "{`name`:`sub/kind.h`,`path`:`$T/q/sub/kind.h`,`folder`:`$T/q/sub`,`kind`:`ordinary`}\n"},
      {"s find sub/kind.h --as include --path p:q --after q", 1, "no file called", ""},
      {"s find --all sub/kind.h --as include --path p:./q:p", 0, "",
       "$T/p/sub/kind.h\n$T/q/sub/kind.h\n"},
      {"s find draw --as plain --path p:q --ext x --explain | sed -n '2d;p'", 0, "`draw`",
       "`draw` means no file\n  absent  $T/p\n  absent  $T/q\nwhy: no folder holds it\n"},
      {"mkdir -p m/x.a; : >m/x.b; s find x --as program --path m --ext a --ext b --explain "
       "2>/dev/null | "
       "sed -n 3p; rm -r m",
       0, "", "  not executable  $T/m  $T/m/x.b\n"},
      {"s find pipe --as include --path p:q", 1,
       "no file called `pipe` on the path; `$T/p/pipe` cannot be read\n", ""},
      {"s find x --as plain --path no:p", 1, "cannot search `$T/no`: no such folder", ""},
      {"s files --as plain --path lib --ext zt", 0, "",
       "$T/lib/Case.zt\n$T/lib/fn.zt\n$T/lib/+pkg/inner.zt\n$T/lib/@shape/shape.zt\n"
       "$T/lib/private/fn.zt\n$T/lib/private/own.zt\n$T/lib/sub/below.zt\n"
       "$T/lib/sub/deep/deep.zt\n"},
      {"s files --as program --path p:q", 0, "", "$T/q/draw\n"},
      {"s folders sub/deep +pkg --as plain --path p:lib", 0, "", "$T/lib/sub/deep\n$T/lib/+pkg\n"},
      {"s shadows --as include --path p:q --only different", 1, "",
       "`sub/kind.h` means $T/p/sub/kind.h and hides\n  different   $T/q/sub/kind.h\n"},
      {"s shadows --as plain --path p:q --only same-file", 0, "", ""},
      {"printf 'SUB/kind.h\\nx.hpp\\n' >../allow; s shadows --as include --path p:q --ext h "
       "--policy "
       "ignore-case --allow ../allow 2>&1; rm ../allow",
       0, "",
       "searchpath: --allow `SUB/kind.h`: no file of that name is hidden\n"
       "`sub/kind.h` means $T/p/sub/kind.h and hides\n  different   $T/q/sub/kind.h\n"},
      {"mv q/sub 'q/a b'; mv p/sub 'p/a b'; s shadows --as plain --path p:q --only different "
       "--sarif"
       " | grep -E 'uri|ruleId|\"text\": ..\"' | sed 's/^ *//'; mv 'q/a b' q/sub; mv 'p/a b' p/sub",
       0, "",
       "`ruleId`: `different`,\n"
       "`text`: `\\`a b/kind.h\\` means $T/p/a b/kind.h, which hides this file (different).`\n"
       "`uri`: `file://$T/q/a%20b/kind.h`\n`uri`: `file://$T/p/a%20b/kind.h`\n"},
      {"s shadows --path odd:lib:over --ext zt --policy ignore-case --sarif | "
       "grep -E 'ruleId|level' | sed 's/^ *//'",
       0, "",
       "`ruleId`: `other-case`,\n`level`: `warning`,\n"
       "`ruleId`: `identical`,\n`level`: `note`,\n"},
      {"s shadows --path p --sarif --json", 2, "--sarif, --summary and --json cannot be", ""},
      {"s diff --names --as plain p:q q:p", 1, "",
       "changed  $T/p/draw -> $T/q/draw\nchanged  $T/p/sub/kind.h -> $T/q/sub/kind.h\n"},
      {": >../e; s watch --as plain --path p:q --count 1 >../w 2>../e & until grep -q watching "
       "../e; do "
       "sleep 0.05; done; echo 3 >q/sub/new.h; wait; grep ^new ../w; rm q/sub/new.h",
       0, "", "new      $T/q/sub/new.h\n"},
      {"s cache write c --as plain --path p:q; s cache verify c --json | cut -d'\"' -f4", 0, "",
       "$T/p\n$T/q\n$T/p/sub\n$T/q/sub\n"},
  });
}

TEST_F(RulesTest, DoctorKnowsWhatPathsOfProgramsSufferFrom) {
  Check({
      {"s doctor --as program --path \"$PWD/q:$PWD/p:~/x:q:$PWD/p/draw:\" | sed 's/;.*//'", 0, "",
       "$T/p/draw: look like programs and may not be executed\n"
       "$T/p/gone: links that lead nowhere\n"
       "$T/~/x: no such folder: nobody expands `~` here\n"
       "$T/q: depends on the working folder\n$T/q: the same folder as $T/q\n"
       "$T/p/draw: not a folder\n$T: an empty part: the working folder\n"
       "$T/loop: links that lead nowhere\n"},
      {"touch '~file'; s doctor --as program --path '~file' | sed 's/;.*//'", 0, "",
       "$T/~file: not a folder\n"},
  });
}

TEST_F(RulesTest, WhatStandsBelowAFolderThatIsNotSearchedIsNamed) {
  Check({
      {"mkdir -p lib/resources/in lib/private/in lib/private/resources\n"
       "touch lib/resources/in/a.zt lib/private/in/b.zt lib/private/resources/c.zt\n"
       "s find --explain a.zt b.zt resources/in/a.zt private/resources/c.zt --path over:lib | grep "
       "below",
       0, "no file called",
       "  below a folder that is not searched  $T/lib  $T/lib/resources/in/a.zt (a resources "
       "folder "
       "is not searched)\n"
       "  below a folder that is not searched  $T/lib  $T/lib/private/in/b.zt (folders below a "
       "private folder are not searched)\n"
       "  below a folder that is not searched  $T/lib  $T/lib/resources/in/a.zt (a resources "
       "folder "
       "is not searched)\n"
       "  below a folder that is not searched  $T/lib  $T/lib/private/resources/c.zt (folders "
       "below "
       "a private folder are not searched)\n"},
  });
}

TEST_F(RulesTest, OptionsThatMeanNothingByTheRulesAreRefused) {
  Check({
      {"s find x --as shell --path p", 2, "--as is one of environment, plain, program, include",
       ""},
      {"s find x --as plain --path p --recursive", 2, "--recursive and --as plain cannot be", ""},
      {"s find x --as plain --path p --policy ignore-case", 2, "these rules compare names as", ""},
      {"s find x --as program --path p --from q", 2, "it does not matter who asks", ""},
      {"s find x --path p --after q", 2, "--after needs rules under which folders have no", ""},
      {"s find x --as include --path p --after no", 2, "--after `no`: no such folder", ""},
      {"s files --as plain --path p --all", 2, "mean nothing with --as plain", ""},
      {"s shadows --only bad --path p", 2, "--only is one of different, identical", ""},
  });
}

}  // namespace
}  // namespace searchpath_test
