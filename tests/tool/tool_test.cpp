#include "tool/tool_test.h"

#include <sstream>

namespace searchpath_test {
namespace {

TEST_F(ToolTest, FindAnswers) {
  Check({
      {"s find fn.zt dangling link fifo sub own.zt --path=over:lib", 1,
       "`fifo` on the path\nsearchpath: no file called `sub` on", "$T/over/fn.zt\n$T/over/link\n"},
      {"s find --all fn.zt --path over --path lib", 0, "", "$T/over/fn.zt\n$T/lib/fn.zt\n"},
      {"s find fn.zt --strict --path no:over", 2, "search `$T/no`: no such", "$T/over/fn.zt\n"},
      {"s find fn --ext c --ext .zt --path over:lib", 0, "", "$T/over/fn.zt\n"},
      {"s find shape pkg/inner own --ext zt --from lib --path lib", 0, "",
       "$T/lib/@shape/shape.zt\n$T/lib/+pkg/inner.zt\n$T/lib/private/own.zt\n"},
      {"s find deep.zt --recursive --path lib", 0, "", "$T/lib/sub/deep/deep.zt\n"},
      {"s find case.zt --path lib:odd", 1,
       "path; did you mean `$T/lib/Case.zt` (another case: --policy ignore-case finds it) or "
       "`$T/odd/CASE.zt` (another case)?\n",
       ""},
      {"s find fp.zt plain.zt --path over:mid:lib", 1,
       "did you mean `$T/over/fn.zt` (one letter off) or `$T/mid/fo.zt` (one letter off)?\n"
       "searchpath: no file called `plain.zt` on the path; did you mean `$T/lib/plain` (another ",
       ""},
      {"s find \"it's \\\"q\\\" 100%.zt\" --path odd", 0, "", "$T/odd/it's `q` 100%.zt\n"},
      {"s find [x,y] {} --path odd -- -1", 0, "", "$T/odd/[x,y]\n$T/odd/{}\n$T/odd/-1\n"},
      {"touch odd/--x=; s find --path odd -- --x=", 0, "", "$T/odd/--x=\n"},
      {"s find 'a\nb' --path odd", 1, "searchpath: no file called `a\\x0Ab` on the path\n", ""},
      {"s find --json $(printf 'bad\\377') --path odd | cut -d'\"' -f4,16 | tr '\"' '\n' |"
       " { read -r name && echo $name && base64 -d; }",
       0, "", "bad\uFFFD\n$T/odd/bad\xFF"},
      {"d=$(printf 'd\\377'); mkdir $d; touch $d/x; s find --json x --path $d |"
       " sed 's/.*folderBytes\":\"//; s/\".*//' | base64 -d; rm -r $d",
       0, "", "$T/d\xFF"},
      {"s find colon FN.ZT --policy ignore-case --path @folders", 0, "",
       "$T/a:b/colon\n$T/lib/fn.zt\n"},
      {"echo file://$PWD/%61:b | s find colon --path -", 0, "", "$T/a:b/colon\n"},
      {"printf 'plain\\n\\nfn.c' | s find --stdin --path lib", 2,
       "line 2 of standard input is empty, which means no file\n", "$T/lib/plain\n$T/lib/fn.c\n"},
      {"printf '\\n\\n' | s find --stdin --path lib 2>&1 | cut -d' ' -f2,3", 0, "",
       "line 1\nline 2\n"},
      {"printf 'two\nlines\\0bad\\377\\0fm.zt' | s find --stdin -0 --path odd:lib | tr '\\0' '|'",
       0, "no file called `fm.zt` on the path\n", "$T/odd/two\nlines|$T/odd/bad\xFF|"},
  });
}

TEST_F(ToolTest, FindExplains) {
  Check({
      {"s find --explain fn.zt --path lib/sub/deep:lib:loop --from lib", 0, "a loop of links\n",
       "`fn.zt` means $T/lib/private/fn.zt\nfolders asked, in order:\n"
       "  holds it                     $T/lib/private  from --path lib\n"
       "  absent                       $T/lib/sub/deep\n"
       "  hidden by an earlier folder  $T/lib          holds $T/lib/fn.zt\n"
       "  unreadable                   $T/loop         a loop of links\n"
       "why: the private folder of the asking folder comes first\n"},
      {"s find --explain fn no/x --ext c --ext zt --path lib", 1, "`no/x` on the path\n",
       "`fn` means $T/lib/fn.c\nfolders asked, in order:\n  holds it  $T/lib  also holds "
       "$T/lib/fn.zt\nwhy: the first folder on the path that holds it\n`no/x` means no file\n"
       "folders asked: none, because no folder of the path matches the name\nwhy: no folder holds "
       "it\n"},
      {"s find --explain fn.zt --json --path no:over", 0, "cannot search `$T/no`: no such folder\n",
       "{`name`:`fn.zt`,`path`:`$T/over/fn.zt`,`rule`:`first-folder`,`asked`:[{`folder`:`$T/no`,"
       "`kind`:`ordinary`,`outcome`:`unreadable`,`files`:[],`origin`:`no`,`source`:`command-line`,"
       "`problem`:`no such folder`},{`folder`:`$T/over`,`kind`:`ordinary`,`outcome`:`holds-it`,"
       "`files`:[{`path`:`$T/over/fn.zt`}],`origin`:`over`,`source`:`command-line`}]}\n"},
      {"for path in mid:lib lib:mid; do s find --explain shape private/own --ext zt --path $path; "
       "done"
       " | sed -n 's:  */.*::p; s/^why/&/p'",
       0, "",
       "`shape` means\n  holds it\n  absent\n  method entry that loses to an earlier folder\n"
       "why: the first folder that holds it comes before the method entry\n"
       "`private/own` means\n  holds it\n"
       "why: the first folder on the path whose location ends as the name says\n"
       "`shape` means\n  absent\n  hidden by an earlier folder\n  method entry that holds it\n"
       "why: a method entry of that name comes before every folder that holds it\n"
       "`private/own` means\n  holds it\n"
       "why: the first folder on the path whose location ends as the name says\n"},
      {"s find --explain --json shape private/own --ext zt --path mid:lib | words", 0, "",
       "folder-before-method holds-it absent loses-to-earlier-folder partial-pathname holds-it\n"},
      {"s find --explain --json shape case own --ext zt --path lib:mid --from lib | words", 0,
       "`case`",
       "method-entry-first absent absent hidden-by-earlier method-entry nothing-found absent "
       "other-case-only absent private-folder holds-it absent absent\n"},
  });
}

TEST_F(ToolTest, FilesListAndIriAnswer) {
  Check({
      {"s files --path mid:lib/+pkg", 0, "",
       "$T/mid/fo.zt\n$T/mid/shape.zt\n$T/lib/+pkg/inner.zt\n"},
      {"s files --ext zt --ext .ZT --policy ignore-case --all --from lib --path over:lib", 0, "",
       "$T/lib/Case.zt\n$T/lib/fn.zt\n$T/lib/private/fn.zt\n$T/lib/private/own.zt\n"
       "$T/lib/+pkg/inner.zt\n$T/lib/@shape/shape.zt\n"},
      {"s files --ext .C --path lib", 1, "searchpath: no such file on the path", ""},
      {"s files --from lib/+pkg --json --path lib", 0, "",
       "{`path`:`$T/lib/+pkg/inner.zt`,`folder`:`$T/lib/+pkg`,`kind`:`+`}\n"},
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
      {"dead /tree/mid; s find fn.zt --path over:mid", 0, "", "$T/over/fn.zt\n"},
      {"dead /tree/mid; s find fn.c --path over:mid:lib --timeout 99", 0,
       "cannot search `$T/mid`: no answer in time\n", "$T/lib/fn.c\n"},
      {"dead /tree/mid; s files --path over:mid:lib --strict --timeout 300", 2,
       "cannot search `$T/mid`: no answer in time\n",
       "$T/over/fn.zt\n$T/over/link\n$T/lib/Case.zt\n$T/lib/fn.c\n$T/lib/fn.zt\n$T/lib/plain\n"},
      {"dead /tree/mid; { s doctor --path over:mid --timeout 300; echo $?; } | grep -v took", 0, "",
       "$T/mid: no answer in time; correct this, or take the folder off the path\n1\n"},
      {"s files --strict --quiet --path mid:no", 2, "", "$T/mid/fo.zt\n$T/mid/shape.zt\n"},
      {"s iri 'a %' http://h/%41", 0, "",
       "iri: file://$T/a%20%25\ncanonical: file://$T/a%20%25\n"
       "path: $T/a %\niri: http://h/A\ncanonical: http://h/A\n"},
      {"s iri --json \"$(printf 'a\\377')\" | cut -d, -f 1,2", 0, "",
       "{`text`:`a\uFFFD`,`textBytes`:`Yf8=`\n"},
      {"s iri file://h/x --json lib/sub/up", 2, "invalid IRI `file://h/x`",
       "{`text`:`lib/sub/up`,`iri`:`file://$T/lib/sub/up`,`canonical`:`file://$T/lib`,"
       "`path`:`$T/lib/sub/up`}\n"},
  });
}

TEST_F(ToolTest, FoldersAreHiddenAndShownOnce) {
  Check({
      {"ln -s lib link; s list --path over:link:lib:mid/../over --without lib/+pkg", 0, "",
       "$T/over\n$T/link\n$T/link/private\n$T/link/resources\n$T/link/@shape\n"},
      {"s find --all fn.zt --path lib:link --keep-duplicates", 0, "",
       "$T/lib/fn.zt\n$T/link/fn.zt\n"},
      {"s files --path lib --from lib --all --without lib/private --without mid --ext zt", 0,
       "--without `mid` hides nothing: that folder is not on the path\n",
       "$T/lib/Case.zt\n$T/lib/fn.zt\n$T/lib/+pkg/inner.zt\n$T/lib/@shape/shape.zt\n"},
      {"s find --explain fn.zt --path over:lib:link --without over", 0, "",
       "`fn.zt` means $T/lib/fn.zt\nfolders asked, in order:\n"
       "  filtered out         $T/over  by --without over\n  holds it             $T/lib\n"
       "  dropped as a repeat  $T/link  the same as $T/lib\n"
       "why: the first folder on the path that holds it\n"},
      {"s find --explain case.zt --path lib | sed -n 3p", 0, "no file called `case.zt`",
       "  other case only  $T/lib  holds $T/lib/Case.zt\n"},
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
      {"mkdir -p five/a/+pk five/b/+pk five/c/+pk five/d/+pk five/e/+pk; s folders --literal pk "
       "--path five --recursive",
       1, "denotes `$T/five/a/+pk`, `$T/five/b/+pk`, `$T/five/c/+pk` and 2 more\n", ""},
      {"s folders $PWD/no sbu --path lib:lib/sub", 1, "called `sbu`; did you mean `$T/lib/sub`?",
       ""},
      {"s folders lib --path lib:no --strict", 2, "cannot search `$T/no`: no such", "$T/lib\n"},
  });
}

TEST_F(ToolTest, ShadowsAndDoctorCheck) {
  Check({
      {"echo 1 >mid/fn.zt; ln -s ../mid/fn.zt a:b; s shadows --path mid:over:lib --path @folders",
       1, "",
       "`fn.zt` means $T/mid/fn.zt and hides\n  different   $T/over/fn.zt\n"
       "  different   $T/lib/fn.zt\n  same file   $T/a:b/fn.zt\n"},
      {"s shadows --ext zt --json --path lib:over --path mid", 1, "",
       "{`name`:`fn`,`path`:`$T/lib/fn.zt`,`hidden`:[{`path`:`$T/over/fn.zt`,`kind`:`identical`},"
       "{`path`:`$T/mid/fn.zt`,`kind`:`different`}]}\n"
       "{`name`:`shape`,`path`:`$T/lib/@shape/shape.zt`,`hidden`:[{`path`:`$T/mid/shape.zt`,"
       "`kind`:`identical`}]}\n"},
      {"s shadows --summary --path over:lib:mid", 1, "",
       "1 name hides 2 files: 1 different, 1 identical\n"
       "  $T/over hides 1 file of $T/lib: 1 identical\n"
       "  $T/over hides 1 file of $T/mid: 1 different\n"},
      {"s shadows --summary --json --path over:lib | cut -d, -f-4", 0, "",
       "{`names`:1,`files`:1,`different`:0,`identical`:1\n"
       "{`winner`:`$T/over`,`hidden`:`$T/lib`,`files`:1,`different`:0\n"},
      {"printf 'fn.zt\nold.zt' >allow; s shadows --allow allow --path over:lib", 0,
       "searchpath: --allow `old.zt`: no file of that name is hidden\n", ""},
      {"s shadows plain Plain --path lib:over --summary", 0,
       "`Plain` on the path; did you mean `$T/", "0 names hide 0 files\n"},
      {"mkdir bad; ln -s /proc/self/mem bad/fn.zt; s shadows fn.zt --path bad:over:lib", 1,
       "searchpath: cannot read `$T/bad/fn.zt`: Input/output error\n",
       "`fn.zt` means $T/bad/fn.zt and hides\n"
       "  unreadable  $T/over/fn.zt\n  unreadable  $T/lib/fn.zt\n"},
      {"s shadows --path bad:over:lib 2>&1 | grep -c cannot", 0, "", "1\n"},
      {"s shadows fn.zt --path bad:over --quiet | tail -n 1", 0, "",
       "  unreadable  $T/over/fn.zt\n"},
      {"mkdir many; (cd many && touch $(seq 2001)); cp -r many more; s shadows --path many:more |"
       " grep -c means",
       0, "", "2001\n"},
      {"s shadows --path over:no --strict", 2, "cannot search `$T/no`: no such folder\n", ""},
      {"s shadows --path over --allow no", 2, "cannot read `no`, the names of --allow: No such",
       ""},
      {"s doctor --path mid:over --path lib --without lib/sub", 0, "--without `lib/sub` hides", ""},
      {"mkdir void; touch odd/$(printf '\\377')1 odd/$(printf '\\377')2 odd/$(printf '\\377')3\n"
       "s doctor --path over:no:./over:odd:lib/private:lib:loop:void | sed 's/;.*//'",
       0, "",
       "$T/no: no such folder\n$T/over: the same folder as $T/over\n"
       "$T/odd/bad\xFF, $T/odd/\xFF\x31, $T/odd/\xFF\x32 and 1 more: names that are not UTF-8\n"
       "$T/lib/private: belongs to $T/lib, which is on the path\n"
       "$T/loop: a loop of links\n$T/void: contains no file\n"
       "$T/odd/CASE.zt, $T/lib/Case.zt: names that are equal where case is ignored\n"},
      {"echo http://h/ >web; s doctor --json --path over:no --path @web --without over", 1, "",
       "{`finding`:`unreadable`,`path`:`http://h/`,`origin`:`http://h/`,`problem`:`neither a "
       "pathname nor the IRI of a folder on disk`,`advice`:`correct this, or take the folder off "
       "the "
       "path`}"
       "\n{`finding`:`missing`,`path`:`$T/no`,`origin`:`no`,`problem`:`no such folder`,"
       "`advice`:`create the folder, or take it off the path`}\n"},
      {"for how in '' --json; do s doctor --slow 0 --path over $how; done |"
       " sed -E 's/[0-9]+( ms|,\"adv)/N\\1/'",
       0, "",
       "$T/over: took N ms to list; put it last on the path, or keep a copy on a faster disk\n"
       "{`finding`:`slow`,`path`:`$T/over`,`origin`:`over`,`milliseconds`:N,`advice`:`put it last "
       "on "
       "the path, or keep a copy on a faster disk`}\n"},
      {"s doctor --slow 1x --path over", 2, "--slow is a number of milliseconds, not `1x`", ""},
      {"s trust --path lib --user 4000000 --json | cut -d, -f1-5; s trust --path /usr/bin", 0, "",
       "{`kind`:`relative`,`folder`:`$T/lib`,`object`:`lib`,`who`:`whoever chooses the working "
       "folder`,"
       "`users`:[]\n"},
      {"s trust --as program --path : | head -n 1; s trust --path lib", 1, "",
       "$T: .: whoever chooses the working folder chooses what the empty part means; take the "
       "empty "
       "part out\n$T/lib: lib: whoever chooses the working folder chooses what it is; write the "
       "folder in full\n"},
      {"s trust --path over --user no", 2, "--user `no`: there is no such user", ""},
      {"s doc", 2, "there is no command `doc`; did you mean doctor?", ""},
  });
}

TEST_F(ToolTest, PatternsAreTakenWhereThatIsAskedFor) {
  Check({
      {"s find --glob 'f*.[a-z]*' '?lain' '*.no' --path over:lib", 1,
       "searchpath: no file on the path has a name that matches `*.no`\n",
       "$T/over/fn.zt\n$T/lib/fn.c\n$T/lib/plain\n"},
      {"s find --glob -a 'f*' --ext zt --path over:lib --from lib", 0, "",
       "$T/lib/private/fn.zt\n$T/over/fn.zt\n$T/lib/fn.zt\n"},
      {"s find --glob 'pkg/*' --json --path lib", 0, "",
       "{`pattern`:`pkg/*`,`name`:`pkg/inner.zt`,`path`:`$T/lib/+pkg/inner.zt`,`folder`:"
       "`$T/lib/+pkg`,`kind`:`+`}\n"},
      {"s find --glob '+pkg/*' 'sub/b*' --as plain --path lib", 0, "",
       "$T/lib/+pkg/inner.zt\n$T/lib/sub/below.zt\n"},
      {"printf 'p*\nz*' | s find --stdin --glob --json --path lib | cut -d, -f1,2", 0,
       "matches `z*`",
       "{`pattern`:`p*`,`name`:`plain`\n{`name`:`p*`,`end`:true}\n"
       "{`name`:`z*`,`path`:null}\n{`name`:`z*`,`end`:true}\n"},
      {"s find 'f*' --path lib", 1,
       "no file called `f*` on the path; --glob takes it as a pattern\n", ""},
      {"s find --glob '*/x' --path lib", 2, "only the last part of a name may be a pattern, not",
       ""},
      {"s find --glob 'x*' --explain --path lib", 2, "--glob cannot be given together", ""},
  });
}

TEST_F(ToolTest, TheExitCodeAloneAnswers) {
  Check({
      {"s find --exit-code fn.zt --all --json --path over:no", 0, "", ""},
      {"s find --exit-code fn.zt nothing --path over:no", 1, "", ""},
      {"s find --exit-code fn.zt --path over:no --strict", 2, "", ""},
      {"s find --exit-code fn.zt --path @list", 2, "cannot read `list`, the list of --path", ""},
      {"echo over | s find --exit-code fn.zt --path - --path -", 0, "", ""},
      {"s find --exit-code fn.zt --path over >&-", 0, "", ""},
      {"s shadows --exit-code --path over:lib; test $? = 1 && s doctor --exit-code --path no", 1,
       "", ""},
      {"s diff --exit-code lib lib && s trust --exit-code --path-of PATH --user 0; s verify no", 2,
       "cannot use `no`", ""},
  });
}

TEST_F(ToolTest, LinesEndWithNulWhereThatIsAskedFor) {
  const std::string rows = " | tr '\\n\\0' ' |'";
  for (const auto& [command, out] : std::vector<std::pair<std::string, const char*>>{
           {"find --explain 'two\nlines' -0 --path odd",
            "`two lines` means $T/odd/two lines|folders asked, in order:|  holds it  $T/odd|"
            "why: the first folder on the path that holds it|"},
           {"list --long -0 --path mid", "      2 files  ordinary   $T/mid|"},
           {"diff -0 mid over", "removed    1         $T/mid|added      1         $T/over|"},
           {"diff --names -0 mid:over over", "gone     $T/mid/fo.zt|gone     $T/mid/shape.zt|"},
           {"shadows -0 --path over:lib",
            "`fn.zt` means $T/over/fn.zt and hides|  identical   $T/lib/fn.zt|"},
           {"doctor -0 --path no",
            "$T/no: no such folder; create the folder, or take it off the "
            "path|"},
           {"find fn.zt -0 --color always --path lib", "$T/lib/fn.zt|"},
           {"iri -0 mid", "iri: file://$T/mid|canonical: file://$T/mid|path: $T/mid|"}}) {
    EXPECT_EQ(RunShell("s " + command + rows).out, Expand(out)) << command;
  }
}

TEST_F(ToolTest, WrongUsageIsOneLineThatHelps) {
  Check({
      {"s", 2, "no command; type: searchpath find NAME --path \"$PATH\", or", ""},
      {"s fnid x", 2, "there is no command \"fnid\"; did you mean find?", ""},
      {"s ab", 2, "there is no command \"ab\"; see searchpath -h", ""},
      {"s ''", 2, "there is no command \"\"; see searchpath -h", ""},
      {"s where ls", 2, "there is no command \"where\"; did you mean which --all?", ""},
      {"s help dupes", 2, "there is no command \"dupes\"; did you mean shadows?", ""},
      {"s find -i x --path lib", 2, "\"-i\"; did you mean --policy ignore-case?", ""},
      {"s iri -i x", 2, "unknown option \"-i\"; see searchpath iri -h, and write -- before", ""},
      {"s --path lib find x", 2, "type: searchpath find NAME --path \"$PATH\"", ""},
      {"s find --= --path lib", 2, "unknown option \"--=\"; see searchpath find -h, and", ""},
      {"s files --json= --path lib", 2, "--json takes no value; leave out \"=\"", ""},
      {"s files --path --json=x --json=x", 2, "--json takes no value; leave out \"=x\"", ""},
      {"s list --path-of cc --flag -Ia= -Ib", 2,
       "unknown option \"-Ib\"; a flag for the compiler is typed as --flag -Ib", ""},
      {"s list --path lib --flag --sysroot=", 2, "and their profiles; leave out --flag", ""},
      {"s find --json", 2, "find needs NAME...; type: searchpath find NAME... --json", ""},
      {"s find x '' --path lib", 2, "an empty NAME means no file", ""},
      {"s find \"it's\" -- -x", 2, "searchpath find --path \"$PATH\" 'it'\\''s' -- -x (or", ""},
      {"s find x --path= --path :", 2, "--path names no folder; write . for", ""},
      {"s find x --path", 2, "--path needs a value after it; see searchpath find -h", ""},
      {"s find x --recurse --path lib", 2, "\"--recurse\"; did you mean --recursive?", ""},
      {"s find x --path @list", 2, "cannot read \"list\", the list of --path @list", ""},
      {"s find x --path - </", 2, "cannot read standard input", ""},
      {"s find x --path lib --from no", 2, "--from \"no\": no such folder", ""},
      {"s find x --path lib --timeout 1s", 2, "--timeout is a number of milliseconds, not", ""},
      {"s find x --path lib --ext ''", 2, "--ext is empty; leave it out", ""},
      {"s find x --path lib --policy any", 2, "--policy is one of case-sensitive, ignore-case", ""},
      {"s find --stdin --path - x", 2, "--stdin takes NAME... from standard input; leave out", ""},
      {"s find --stdin --path -", 2, "both read standard input; write the folders into", ""},
      {"s find --stdin --path lib </", 2, "cannot read standard input, the names of --stdin", ""},
      {"s diff lib", 2, "two paths, OLD and NEW; type: searchpath diff A:B C:D", ""},
      {"s diff - -", 2, "OLD and NEW cannot both be standard input", ""},
      {"s diff lib @list", 2, "cannot read \"list\", the list of NEW @list", ""},
      {"s diff : lib", 2, "OLD names no folder; write . for", ""},
      {"s diff lib lib --names --subfolders", 2,
       "--names and --subfolders cannot be given together", ""},
      {"s add", 2, "add needs FOLDER...; type: searchpath add FOLDER...", ""},
      {"s remove x --store ''", 2, "--store is empty; leave it out", ""},
      {"s files --from over --path lib", 2, "\"over\" is not on the path; searchpath list", ""},
      {"s list --path lib --json -0", 2, "--json and --print0 cannot be given together", ""},
      {"s find fn.zt --path lib >/dev/full", 2, "cannot write standard output: No space left", ""},
      {"s -h >&-", 2, "cannot write standard output: Bad file descriptor", ""},
  });
}

TEST_F(ToolTest, HelpFitsAScreenAndBeginsWithExamples) {
  std::istringstream commands(
      "\ncache write\ncache verify\n" +
      RunShell("s -h | sed -n '/^Commands:/,/^$/s/^  \\([a-z]*\\) .*/\\1/p'").out);
  int count = 0;
  for (std::string command; std::getline(commands, command); ++count) {
    const auto help = [&](const std::string& option) {
      return RunShell("s " + command + ' ' + option).out;
    };
    const std::string brief = help("-h");
    EXPECT_TRUE(brief.starts_with("Usage: searchpath")) << brief;
    // Of these, nine lines are on the path alone: whose it is, and by which rules it is searched; and
    // those of find have three on what it writes beside its answers.
    EXPECT_LE(std::count(brief.begin(), brief.end(), '\n'), 34) << command;
    const std::string full = help("--help");
    EXPECT_TRUE(full.starts_with("Examples:\n")) << command;
    EXPECT_TRUE(full.find(brief) != std::string::npos) << command;
    EXPECT_FALSE(std::regex_search(full, std::regex("[^\n]{81}"))) << full;
    EXPECT_TRUE(help("-V").starts_with("searchpath ")) << command;
    EXPECT_EQ(RunShell("s help " + command).out, full);
    EXPECT_EQ(brief.find("--json") == brief.npos, brief.find("-0, --print0") == brief.npos);
    EXPECT_NE(full.find("  NO_COLOR "), std::string::npos) << full;
  }
  EXPECT_EQ(count, 21);
}

TEST_F(ToolTest, AClosedPipeEndsQuietlyAlsoWhereItsSignalIsIgnored) {
  Check({{"trap '' PIPE; { s list --keep-duplicates --path @long; echo $? >../end; } | sed q", 0,
          "", "$T/lib\n"}});
  EXPECT_EQ(tree.Content("end"), "141\n");
}

TEST_F(ToolTest, OnATerminalNamesAreHarmlessAndEmphasised) {
  const std::string find =
      "s find \"$(printf 'esc\\033[31m')\" 'two\nlines' $(printf 'bad\\377') --path odd";
  const std::string plain = Expand("$T/odd/esc\\x1B[31m\n$T/odd/two\\x0Alines\n$T/odd/bad\\xFF\n");
  EXPECT_EQ(RunOnTerminal(find + " --color never"), plain);
  EXPECT_EQ(RunOnTerminal("export NO_COLOR=1; " + find), plain);
  EXPECT_EQ(RunOnTerminal("export TERM=dumb; " + find), plain);
  for (const auto& [bytes, escape] : std::vector<std::pair<std::string, std::string>>{
           {"\\177", "\\x7F"},
           {"\\302\\205", "\\u0085"},
           {"\\330\\234", "\\u061C"},
           {"\\342\\200\\256", "\\u202E"},
           {"\\342\\201\\246", "\\u2066"},
           {"\\342\\201\\251", "\\u2069"},
           {"\\342\\201\\252", "\xE2\x81\xAA"}}) {  // U+206A has no direction
    EXPECT_EQ(RunOnTerminal("n=$(printf 'n" + bytes +
                            "'); touch odd/$n; s find $n --path odd --color never"),
              Expand("$T/odd/n") + escape + '\n');
  }
  const std::string json = "s find $(printf '\\342\\200\\256') --path odd --json";
  EXPECT_NE(RunOnTerminal(json).find("\"name\":\"\\u202e\""), std::string::npos);
  for (const char* command : {"find fn.zt", "find --all fn.zt", "find --glob 'fn.z*'",
                              "files --ext zt", "find --explain fn.zt", "folders over"}) {
    const std::string shown = RunOnTerminal("dead /tree/mid; s " + std::string(command) +
                                            " --path mid:over --timeout 400 2>&1");
    EXPECT_NE(shown.find("searchpath: reading folders"), std::string::npos) << command;
    EXPECT_NE(shown.find("no answer in time"), std::string::npos) << command;
  }
  const std::string bold = Expand("$T/lib/\x1b[1mfn.zt\x1b[0m\n");
  EXPECT_EQ(RunOnTerminal("s find fn.zt --path lib"), bold);
  EXPECT_EQ(RunShell("s find fn.zt --path lib --color always").out, bold);
}

}  // namespace
}  // namespace searchpath_test
