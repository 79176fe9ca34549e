#include "tool/tool_test.h"

namespace searchpath_test {
namespace {

TEST_F(ToolTest, DiffTellsFoldersOrNames) {
  Check({
      {"s diff over:lib over:over/../lib:", 0, "", ""},
      {"s diff over:mid:no lib:over", 1, "cannot search `$T/no`: no such folder\n",
       "removed    2         $T/mid\nremoved    3         $T/no\n"
       "added      1         $T/lib\n"},
      {"printf 'lib\nover\nmid\n' | s diff over:mid:lib -", 1, "", "moved      3 -> 1    $T/lib\n"},
      {"s diff lib:over:mid:odd odd:mid:lib:over", 1, "",
       "moved      4 -> 1    $T/odd\nmoved      3 -> 2    $T/mid\n"},
      {"s diff --subfolders over:lib mid:over", 1, "",
       "removed    2         $T/lib\nremoved    2         $T/lib/private\n"
       "removed    2         $T/lib/resources\nremoved    2         $T/lib/+pkg\n"
       "removed    2         $T/lib/+pkg/@cls\nremoved    2         $T/lib/@shape\n"
       "added      1         $T/mid\n"},
      {"s diff --json over mid", 1, "",
       "{`change`:`removed`,`path`:`$T/over`,`kind`:`ordinary`,`old`:1,`new`:null}\n"
       "{`change`:`added`,`path`:`$T/mid`,`kind`:`ordinary`,`old`:null,`new`:1}\n"},
      {"s list --path lib:over --save ../then; touch lib/+pkg/@cls/cls.zt; s diff --subfolders "
       "@../then mid:lib:over",
       1, "",
       "added      1         $T/mid\nrefreshed  1 -> 2    $T/lib\nrefreshed  1 -> 2    "
       "$T/lib/+pkg\n"
       "refreshed  1 -> 2    $T/lib/+pkg/@cls\n"},
      {"mv lib/fn.zt lib/other.zt; s diff --names @../then lib:over; s diff --names lib:over "
       "@../then",
       1, "",
       "changed  $T/lib/fn.zt -> $T/over/fn.zt\nnew      $T/lib/other.zt\n"
       "changed  $T/over/fn.zt -> $T/lib/fn.zt\ngone     $T/lib/other.zt\n"},
      {"mv lib/other.zt lib/fn.zt; s diff @../then lib:over; s diff @../then @../then", 0, "",
       "refreshed  1         $T/lib\n"},
      {"s diff --names over:lib over:lib/../lib", 0, "", ""},
      {"s diff --names over:mid:lib lib:over", 1, "",
       "changed  $T/over/fn.zt -> $T/lib/fn.zt\ngone     $T/mid/fo.zt\ngone     $T/mid/shape.zt\n"},
      {"s diff --names --json mid lib/+pkg:over | sed -n 1,3p", 0, "",
       "{`change`:`new`,`name`:`fn.zt`,`old`:null,`new`:`$T/over/fn.zt`}\n"
       "{`change`:`gone`,`name`:`fo.zt`,`old`:`$T/mid/fo.zt`,`new`:null}\n"
       "{`change`:`new`,`name`:`inner.zt`,`old`:null,`new`:`$T/lib/+pkg/inner.zt`}\n"},
      {"s list --path lib --as include --save ../then; touch lib/sub/late; s diff --names --as "
       "include @../then lib; s diff --names --as plain lib @../then; rm lib/sub/late; mv lib "
       "gone; "
       "s diff --as include @../then over; s diff --names --as include @../then gone | head -n 1; "
       "mv gone lib",
       0, "",
       "new      $T/lib/sub/late\ngone     $T/lib/sub/late\n"
       "removed    1         $T/lib\nadded      1         $T/over\n"
       "changed  $T/lib/+pkg/@cls/cls.zt -> $T/gone/+pkg/@cls/cls.zt\n"},
      {"s diff --names --as program lib @../then", 2,
       "--names and --as program cannot be given together for a saved path, which does not", ""},
      {"s diff --names over lib --color always | head -n 1", 0, "",
       "\x1b[32mnew\x1b[0m      $T/lib/Case.zt\n"},
      {"s diff --strict lib:no mid:no", 2, "cannot search `$T/no`: no such folder\n",
       "removed    1         $T/lib\nadded      1         $T/mid\n"},
  });
}

TEST_F(ToolTest, TheStoredPathIsEditedAndUsed) {
  Check({
      {"s list", 2, "no path to search; type: searchpath list --path \"$PATH\"", ""},
      {"s add over lib && cat $XDG_CONFIG_HOME/searchpath/path", 0, "", "$T/over\n$T/lib\n"},
      {"s list --long | head -n 1", 0, "",
       "      2 files  ordinary   $T/over  (from the stored path)\n"},
      {"s add mid --dry-run && s list | wc -l", 0, "",
       "added      1         $T/mid\nnew      $T/mid/fo.zt\nnew      $T/mid/shape.zt\n7\n"},
      {"s add mid no", 2, "no folder `no`; check the spelling", ""},
      {"mkdir 'new\nline' && s add --end over 'new\nline' mid && rmdir 'new\nline'; "
       "cat $XDG_CONFIG_HOME/searchpath/path",
       0, "", "$T/lib\n$T/over\nfile://$T/new%0Aline\n$T/mid\n"},
      {"s remove 'new\nline' never http://h/ over/.", 1,
       "the folder `$T/never` is not on the path; name it as the path lists it\n"
       "searchpath: the folder `http://h/` is not on the path",
       ""},
      {"s remove mid --dry-run; s list --quiet | tail -n 1", 0, "",
       "removed    2         $T/mid\ngone     $T/mid/fo.zt\ngone     $T/mid/shape.zt\n$T/mid\n"},
      {"for i in $(seq 30); do mkdir d$i; s add --store ../many d$i & done; wait; wc -l <../many",
       0, "", "30\n"},
      {"printf '~/\n/x//y\n' >../real; ln -s real ../store; s add --store ../store mid; cat "
       "../real",
       0, "", "$T/mid\n~/\n/x//y\n"},
      {"echo lib >../store; s add mid --store ../store", 2, "folder 1 of the stored path", ""},
      {"s add mid --store no/such/file && s add mid --store file && cat no/such/file file", 0, "",
       "$T/mid\n$T/mid\n"},
      {"s add lib --store .", 2, "Is a directory", ""},
      {"mkdir held.lock; s add lib --store held", 2, "held.lock`: Is a directory", ""},
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
      {"touch over/new && s find --all new fn.zt --path @../saved --path over --cache ../cache", 0,
       "", "$T/over/new\n$T/over/fn.zt\n"},
      {"s files --cache ../cache --quiet", 0, "", "$T/over/fn.zt\n$T/over/link\n$T/over/new\n"},
      {"touch mid/x; rm -r lib/+pkg/@cls; s cache verify ../saved", 1, "",
       "stale   $T/mid  (changed since it was listed)\n"
       "stale   $T/lib/+pkg  (changed since it was listed)\n"
       "gone    $T/lib/+pkg/@cls  (no such folder)\n"
       "a path of 2 folders; in all 3 folders with 3 files\n"},
      {"s cache verify --json ../saved | head -1 | cut -d, -f 2-", 0, "",
       "`items`:2,`state`:`stale`,`reason`:`changed since it was listed`}\n"},
      {"touch -d '1 hour' lib/sub; s cache write ../young --path lib/sub; s cache verify ../young",
       1, "",
       "unsure  $T/lib/sub  (its times may not show a later change)\n"
       "a path of 1 folder; in all 1 folder with 1 file\n"},
      {"head -c 99 ../cache >../cut; s find fn.zt --path lib --cache ../cut", 0,
       "cannot use `../cut`: it is cut off; the folders are read\n", "$T/lib/fn.zt\n"},
      {"s find fn.zt --cache ../cut", 2, "searchpath: cannot use `../cut`: it is cut off\n", ""},
      {"s cache verify over/fifo", 2,
       "cannot use `over/fifo`: it cannot be opened: it is not a reg", ""},
      {"s cache write no/x --path lib", 2, "cannot write the cache: cannot create a file beside",
       ""},
      {"s list --save ../part --path lib:no --strict", 2, "cannot search `$T/no`: no such", ""},
      {"s list --path - <../saved", 2, "a cache is read from a file: --path @FILE", ""},
      {"SEARCHPATH_LOG=../log s find --policy ignore-case fn.zt fo.zt --path lib --cache ../cache; "
       "grep -oE 'host::[a-z]+: [a-z ]*' ../log",
       0, "no file called `fo.zt`",
       "$T/lib/fn.zt\nhost::cache: read the listings of \nhost::folders: read \n"
       "host::index: listed and indexed \n"},
      {"SEARCHPATH_LOG=lib s list --path lib", 2,
       "cannot write the diagnostic log: Failed opening file lib", ""},
      {"s cache wirte x", 2, "after cache comes write or verify, not `wirte`; type:", ""},
  });
}

TEST_F(ToolTest, PackagesAreListedAndSearched) {
  Check({
      {"mkdir -p p/new/lib p/old p/bad; mv lib/fn.zt p/new/lib; cd p; f=searchpath.json\n"
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
      {"s find --explain fn.zt --path lib --packages p --quiet", 0, "",
       "`fn.zt` means $T/p/new/lib/fn.zt\nfolders asked, in order:\n  absent    $T/lib\n"
       "  holds it  $T/p/new/lib  from package a 1\n"
       "why: the first folder on the path that holds it\n"},
      {"s list --json --packages p --strict", 2, ":1: name: expected a text\n",
       "{`path`:`$T/p/new/lib`,`kind`:`ordinary`,`items`:1,`problem`:null,"
       "`origin`:`$T/p/new/lib`,`source`:`package`,`package`:{`name`:`a`,`version`:`1`}}\n"},
      {"s packages --root p --strict --path lib >../shown", 2, ":1: name: expected a text\n", ""},
      {"mkdir -p q/c q/d; ln -s lib q/c/lib; "
       "m='{\"name\":\"%s\",\"version\":\"2\",\"folders\":[\"lib\"],"
       "\"properties\":{\"IsQRX\":%s}}'; for p in 'c false' 'd true'; do\n"
       "printf \"$m\" $p >q/${p%% *}/searchpath.json; done; s packages --root q --strict --path "
       "q/d",
       2, "c 2 contributes nothing to the path: cannot resolve `$T/q/c/lib`: Too many",
       "c 2: contributes nothing to the path\n  other         $T/q/c/lib\n"
       "d 2: contributes to the path\n  other         $T/q/d/lib\n"
       "  for the path  $T/q/d  (on the path)\n"},
      {"s packages --root lib", 1, "no package in `lib`; see searchpath packages --help\n", ""},
      {"s files --packages no", 2, "--packages `no`: no such folder; name the folder that", ""},
      {"s packages --path lib", 2, "needs --root; type: searchpath packages --root DIR", ""},
  });
}

// "begin" comes back when all is watched, "seen N" prints the next N lines, "end" lets nobody read on.
// The tool is ended when it does not write what is waited for. `timeout` runs it in a group of its own.
constexpr const char* kWatch = R"sh(cat >../watch <<'END'
begin() {
  rm -f ../told ../seen; mkfifo ../told ../seen
  (exec timeout 20 "$tool" watch "$@") 2>../told >../seen &
  exec 3<../told 4<../seen; read -r told <&3
}
seen() { for line in $(seq $1); do read -r line <&4; echo "$line"; done; }
end() { exec 3<&- 4<&-; wait $!; echo $?; }
END
echo "tool=')sh" SEARCHPATH_TOOL "'\" >>../watch";

TEST_F(ToolTest, WatchTellsWhatChangesWhileItDoes) {
  EXPECT_EQ(RunShell(kWatch).error, "");
  Check({
      {". ../watch; begin --path mid:lib; echo $told; touch mid/Case.zt; seen 2; rm mid/Case.zt; "
       "seen "
       "2; end",
       0, "",
       "searchpath: watching 2 folders\nrefreshed  1         $T/mid\n"
       "changed  $T/lib/Case.zt -> $T/mid/Case.zt\nrefreshed  1         $T/mid\n"
       "changed  $T/mid/Case.zt -> $T/lib/Case.zt\n141\n"},
      {". ../watch; begin --path mid:lib --json; kill -STOP -$!; touch mid/x mid/y; rm mid/x "
       "lib/plain;"
       " touch lib/plain; mkdir lib/sub/ordinary; kill -CONT -$!; seen 2; end",
       0, "",
       "{`change`:`refreshed`,`path`:`$T/mid`,`kind`:`ordinary`,`old`:1,`new`:1}\n"
       "{`change`:`new`,`name`:`y`,`old`:null,`new`:`$T/mid/y`}\n141\n"},
      {". ../watch; begin --path mid --count 2; mv mid gone; seen 4; read -r told <&3; echo $told;"
       " end; mv gone mid",
       0, "",
       "refreshed  1         $T/mid\ngone     $T/mid/fo.zt\ngone     $T/mid/shape.zt\n"
       "gone     $T/mid/y\nsearchpath: cannot search \"$T/mid\": no such folder\n0\n"},
      {". ../watch; begin --path lib --subfolders; touch lib/+pkg/@cls/new; seen 3; end", 0, "",
       "refreshed  1         $T/lib\nrefreshed  1         $T/lib/+pkg\n"
       "refreshed  1         $T/lib/+pkg/@cls\n141\n"},
      {". ../watch; begin --path over --recursive; mkdir over/new; seen 1; rmdir over/new; seen 1; "
       "end",
       0, "", "added      2         $T/over/new\nremoved    2         $T/over/new\n141\n"},
      {". ../watch; s add over lib; begin; s remove over; seen 3; s add mid; seen 1; end", 0, "",
       "removed    1         $T/over\nchanged  $T/over/fn.zt -> $T/lib/fn.zt\n"
       "gone     $T/over/link\nadded      1         $T/mid\n141\n"},
      {". ../watch; echo over >two; echo mid >>two; begin --path @$PWD/two; rm two; read -r told "
       "<&3; "
       "echo ${told##*; }; echo mid >new; mv new two; seen 1; end",
       0, "", "the path stays as it was\nremoved    1         $T/over\n141\n"},
      {". ../watch; mkdir -p two.d/in; echo two.d >list; begin --path @list --as plain; rm list; "
       "read -r told <&3; echo ${told##*; }; touch two.d/in/x; seen 2 | sort; echo two.d/in >new; "
       "mv new list; seen 3 | sort; end",
       0, "",
       "the path stays as it was\nnew      $T/two.d/in/x\nrefreshed  2         $T/two.d/in\n"
       "gone     $T/two.d/in/x\nnew      $T/two.d/in/x\nremoved    1         $T/two.d\n141\n"},
      {"s watch --path over --count 0", 2, "--count is a number of lines, 1 or more, not `0`", ""},
      {"s watch --path - --recursive", 2, "standard input can be read only once; write the", ""},
      {"s watch --path no --strict", 2, "cannot search `$T/no`: no such folder\n", ""},
      {"s watch --path over >&-", 2, "cannot write standard output: Bad file descriptor", ""},
  });
}

// "ask NAME" writes a name, "lines N" prints the next N lines, "end" lets no more names come.
// The tool is ended when it does not answer.
constexpr const char* kPartner = R"sh(cat >../partner <<'END'
begin() {
  rm -f ../names ../answers; mkfifo ../names ../answers
  (exec timeout 20 "$tool" find --stdin "$@") <../names >../answers 2>/dev/null &
  exec 3>../names 4<../answers
}
ask() { echo "$1" >&3; }
lines() { for line in $(seq $1); do read -r line <&4; echo "$line"; done; }
end() { exec 3>&-; cat <&4; exec 4<&-; wait $!; echo $?; }
END
echo "tool=')sh" SEARCHPATH_TOOL "'\" >>../partner";

TEST_F(ToolTest, FindAnswersEachNameAsItComes) {
  EXPECT_EQ(RunShell(kPartner).error, "");
  Check({
      {". ../partner; begin --path mid:lib; ask fn.zt; lines 1; ask none; ask fo.zt; lines 1; end",
       0, "", "$T/lib/fn.zt\n$T/mid/fo.zt\n1\n"},
      {". ../partner; begin --path mid --json --all; ask none; lines 2; printf fo.zt >&3; end", 0,
       "",
       "{`name`:`none`,`path`:null}\n{`name`:`none`,`end`:true}\n"
       "{`name`:`fo.zt`,`path`:`$T/mid/fo.zt`,`folder`:`$T/mid`,`kind`:`ordinary`}\n"
       "{`name`:`fo.zt`,`end`:true}\n1\n"},
      {"printf 'none\\nfo.zt' | s find --stdin --json --explain --path mid | cut -c-24", 0,
       "no file called `none` on the path\n",
       "{`name`:`none`,`path`:nu\n{`name`:`fo.zt`,`path`:`\n"},
      {"s find --follow fo.zt --path mid", 2, "--follow is for the NAMEs of --stdin", ""},
  });
}

TEST_F(ToolTest, FindFollowsTheDisk) {
  EXPECT_EQ(RunShell(kPartner).error, "");
  Check({
      {". ../partner; begin --follow --path mid:lib; ask fn.zt; lines 1; touch mid/fn.zt; ask "
       "fn.zt; "
       "lines 1; rm mid/fn.zt; ask fn.zt; end",
       0, "", "$T/lib/fn.zt\n$T/mid/fn.zt\n$T/lib/fn.zt\n0\n"},
      {". ../partner; begin --follow --json --path mid:no; ask x; lines 1; mkdir no; touch no/x; "
       "lines "
       "1; mv no/x mid; lines 1; rm -r no mid/x; lines 1; end",
       0, "",
       "{`name`:`x`,`path`:null}\n{`change`:`new`,`name`:`x`,`old`:null,`new`:`$T/no/x`}\n"
       "{`change`:`changed`,`name`:`x`,`old`:`$T/no/x`,`new`:`$T/mid/x`}\n"
       "{`change`:`gone`,`name`:`x`,`old`:`$T/mid/x`,`new`:null}\n1\n"},
      {". ../partner; echo lib >two; begin --follow --path @two --from lib; ask fn.zt; lines 1; rm "
       "lib/private/fn.zt; ask fn.zt; lines 1; echo mid >two; ask fo.zt; end",
       0, "", "$T/lib/private/fn.zt\n$T/lib/fn.zt\n$T/mid/fo.zt\n0\n"},
      {". ../partner; begin --follow --as include --path lib --from mid; ask new/x; ask fo.zt; "
       "lines "
       "1; mkdir -p mid/new/er; mv mid/fo.zt mid/new/x; ask new/x; lines 1; mv mid/new/x "
       "mid/new/er; ask new/er/x; end",
       0, "", "$T/mid/fo.zt\n$T/mid/new/x\n$T/mid/new/er/x\n1\n"},
      {". ../partner; begin --follow --as program --json --path mid; ask shape.zt; lines 1; chmod "
       "+x "
       "mid/shape.zt; lines 1; end",
       0, "",
       "{`name`:`shape.zt`,`path`:null}\n"
       "{`change`:`new`,`name`:`shape.zt`,`old`:null,`new`:`$T/mid/shape.zt`}\n1\n"},
      {"mkdir -p p/one/lib; touch p/one/lib/x; "
       "m='{\"name\":\"one\",\"version\":\"1\",\"folders\":[\"'; "
       ". ../partner; begin --follow --path mid --packages p; ask shape.zt; lines 1; echo "
       "\"${m}lib\\\"]}\" >p/one/searchpath.json; ask x; end",
       0, "", "$T/mid/shape.zt\n$T/p/one/lib/x\n0\n"},
  });
}

}  // namespace
}  // namespace searchpath_test
