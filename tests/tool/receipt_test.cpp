// Receipts and depfiles, and builds that use them.

#include "tool_test.h"

namespace searchpath_test {
namespace {

TEST_F(ToolTest, ReceiptsSayWhichAnswersHaveChanged) {
  Check({
      {"s find fn.zt own.zt Case.zt --path mid:lib --receipt r", 1, "no file called \"own.zt\"",
       "$T/lib/fn.zt\n$T/lib/Case.zt\n"},
      {"s verify r", 0, "", ""},
      {"touch mid/fn.zt; cp r old; s verify r", 1, "", "changed  $T/lib/fn.zt -> $T/mid/fn.zt\n"},
      {"cmp r old && cd / && s verify --json \"$OLDPWD/r\"", 1, "",
       "{`change`:`changed`,`name`:`fn.zt`,`old`:`$T/lib/fn.zt`,`new`:`$T/mid/fn.zt`}\n"},
      {"s verify --update r && s verify r && ! cmp -s r old", 0, "",
       "changed  $T/lib/fn.zt -> $T/mid/fn.zt\n"},
      {"touch mid/unrelated; ls -i --full-time r >then; s verify --update r && ls -i --full-time r "
       "| cmp - then",
       0, "", ""},
      {"touch mid/own.zt; rm lib/Case.zt; s verify r", 1, "",
       "new      $T/mid/own.zt\ngone     $T/lib/Case.zt\n"},
      {"printf 'fn.zt\\nno\\n' | s find --stdin --all --path lib:mid --receipt r; s verify r; echo "
       "$?",
       0, "no file called", "$T/lib/fn.zt\n$T/mid/fn.zt\n0\n"},
      {"s find fn.zt --explain --path lib --from lib --receipt r | head -1; rm lib/private/fn.zt; "
       "s verify r",
       1, "",
       "\"fn.zt\" means $T/lib/private/fn.zt\nchanged  $T/lib/private/fn.zt -> $T/lib/fn.zt\n"},
      {"cd lib; s find ./fn.zt --as program --path . --receipt ../r; chmod +x fn.zt; cd ..; s "
       "verify r",
       1, "no file called", "new      $T/lib/fn.zt\n"},
      {"chmod +x over/fn.zt; touch -d '1 hour ago' over; s find fn.zt --as program --path over "
       "--receipt r\n"
       "s verify r && chmod -x over/fn.zt; s verify r",
       1, "", "$T/over/fn.zt\ngone     $T/over/fn.zt\n"},
      {"printf '/a\\0b/c\\n' | s find --stdin --path lib --receipt nul; s verify nul", 0,
       "no file called", ""},
      {"mkdir off && cd off && rmdir ../off && s find ./x --as program --path . --receipt ../off",
       1, "no file called \"./x\"", ""},
      {"head -c 100 r >cut; s verify cut", 2, "cannot use \"cut\": it is cut off", ""},
      {"s verify lib", 2, "cannot use \"lib\": it cannot be opened: it is not a regular file", ""},
      {"s list --path lib --save saved; s verify saved", 2, "\"searchpath receipt\" and a version",
       ""},
      {"s verify", 2, "verify needs FILE; type: searchpath verify FILE", ""},
      {"s verify r r", 2, "a receipt is one FILE; leave out \"r\"", ""},
      {"s find plain --path lib --receipt no/r", 2, "cannot create a file beside \"no/r\"",
       "$T/lib/plain\n"},
      {"s verify --update r >/dev/full", 2, "cannot write standard output", ""},
  });
}

TEST_F(ToolTest, DepfilesNameWhatMatters) {
  Check({
      {"s find fn --ext zt --ext c --path mid:no/way:over --depfile d --target out && cat d", 0,
       "no such folder",
       "$T/over/fn.zt\nout: \\\n  $T/over/fn.zt \\\n  $T \\\n  $T/mid \\\n  "
       "$T/over\n\n$T/over/fn.zt:\n\n$T:\n\n$T/mid:\n\n$T/over:\n"},
      {"s find \"it's \\\"q\\\" 100%.zt\" --path odd --depfile d --target out && cat d", 0,
       "make and ninja do not agree on how to write it",
       "$T/odd/it's \"q\" 100%.zt\nout: \\\n  $T/odd\n\n$T/odd:\n"},
      {"s find plain --path lib --depfile d", 2, "--depfile needs the name of what depends", ""},
      {"s find plain --path lib --target d", 2, "--target is for --depfile FILE", ""},
      {"s find plain --path lib --depfile d --target 'a;b'", 2, "--target \"a;b\": make and ninja",
       "$T/lib/plain\n"},
  });
}

// What a compiler's cache and a build with the files found as dependencies miss.
TEST_F(ToolTest, ABuildNoticesAFileThatAppearsInAnEarlierFolder) {
  Check({
      {"mkdir b b/mine b/lib; cp " SEARCHPATH_BUILDS
       "/* b; printf '#!/bin/sh\\nexec " SEARCHPATH_TOOL
       " \"$@\"\\n' >b/searchpath; chmod +x b/searchpath; echo old | tee b/lib/plot.zt "
       ">b/lib/area.zt",
       0, "", ""},
      // A change is seen when its time differs from that of what was built before: the clock of the disk ticks
      // every few milliseconds.
      {"cd b; PATH=$PWD:$PATH; ninja --quiet >/dev/null; cat figure.txt; touch mine/unrelated\n"
       "ninja -v | grep -c xargs; sleep 0.05; echo new >mine/plot.zt; ninja --quiet; cat "
       "figure.txt\n"
       "sleep 0.05; rm mine/plot.zt; ninja --quiet; cat figure.txt",
       0, "",
       "old\n0\nchanged  $T/b/lib/plot.zt -> $T/b/mine/plot.zt\nnew\n"
       "changed  $T/b/mine/plot.zt -> $T/b/lib/plot.zt\nold\n"},
      {"cd b; PATH=$PWD:$PATH; rm figure.txt; make -s; make -sq; echo $?; sleep 0.05; echo new "
       ">mine/plot.zt; make -s\n"
       "cat figure.txt; sleep 0.05; rm -r mine; make -s; cat figure.txt; sleep 0.05; make -sq; "
       "echo $?",
       0, "no such folder", "0\nnew\nold\n0\n"},
  });
}

}  // namespace
}  // namespace searchpath_test
