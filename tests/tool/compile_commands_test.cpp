#include "tool/tool_test.h"

namespace searchpath_test {
namespace {

// A compiler that has no folders but those of its flags, and writes down how it was asked. "db" makes
// a compilation database: a line for each file, which is the file, a colon and the command.
constexpr const char* kCompilers = R"sh(
mkdir ../bin mid/geometry 'two words'; cat >../bin/cc <<'END'
#!/bin/sh
printf '%s|' "$@" >>../asked; echo >>../asked
echo '#include "..." search starts here:' >../lists; echo '#include <...> search starts here:' >../more
while [ $# -gt 0 ]; do
  case $1 in
    -iquote) echo " $2" >>../lists; shift ;;
    -I) echo " $2" >>../more; shift ;;
    -I*) echo " ${1#-I}" >>../more ;;
  esac
  shift
done
cat ../lists ../more - >&2 <<END2
End of search list.
END2
END
chmod +x ../bin/cc; cp ../bin/cc ../bin/my-c++-12
cat >../db <<'END'
PATH=${PWD%/tree}/bin:$PATH; rm -f ../asked
db() {
  sed 's/[\\"]/\\&/g; s/\([^:]*\):\(.*\)/{"directory": "PLACE", "file": "\1",\n "command": "\2"}/
  $!s/$/,/; s:PLACE:'"$PWD"':; 1s/^/[/; $s/$/]/' >db.json
}
asked() { s shadows --compile-commands db.json --quiet >../told; sed 's/|*-E|-v|-x|/ /; s:|/dev/null|::' ../asked; }
END
touch mid/fn.zt mid/geometry/area.zt)sh";

class CompileCommandsTest : public ToolTest {
 protected:
  void SetUp() override {
    ToolTest::SetUp();
    ASSERT_EQ(RunShell(kCompilers).error, "");
  }

  // What the compiler is asked for one command.
  void CheckAsked(const std::string& command, const std::string& asked) const {
    const Result result = RunShell(". ../db; db <<'END'\n" + command + "\nEND\nasked");
    EXPECT_EQ(result.out, asked) << command << '\n' << result.error;
  }
};

TEST_F(CompileCommandsTest, TheCompilerIsAskedWithTheFlagsThatMatter) {
  CheckAsked("f.c:cc -O2 -I mid -Iover -iquote lib -isystem mid -idirafter mid -c f.c -o -Ino",
             "-I|mid|-Iover|-iquote|lib|-isystem|mid|-idirafter|mid c\n");
  CheckAsked("f.c:cc -Xclang -Ia -mllvm -Ib -D -Ic -DX=1 -I- -Wall -m32 -Imid f.c -I",
             "-m32|-Imid c\n");
  CheckAsked("f.c:cc --config a --include-directory-after b -mthread-model single -Ic f.c",
             "--config|a|--include-directory-after|b|-Ic c\n");
  CheckAsked("f.c:cc --driver-mode=g++ f.c", "--driver-mode=g++ c++\n");
  CheckAsked(
      "f.c:cc --sysroot=/s --sysroot /t -isysroot/u -nostdinc -stdlib=a -target b -B c -- -Id",
      "--sysroot=/s|--sysroot|/t|-isysroot/u|-nostdinc|-stdlib=a|-target|b|-B|c c\n");
  CheckAsked("f.c:cc -I 'two words' -I\"a\\\"b\\c\" -Id\\ e ''",
             "-I|two words|-Ia\"b\\c|-Id e c\n");
  CheckAsked("f.c:cc -I'a\\\\b' -I\"c\\\\d\"", "-Ia\\\\b|-Ic\\d c\n");
  CheckAsked("f.c:/usr/bin/ccache cc -c f.c", " c\n");
  for (const auto& [file, language] :
       std::vector<std::pair<std::string, std::string>>{{"f.cc", "c++"},
                                                        {"f.C", "c++"},
                                                        {"f.hpp", "c++"},
                                                        {"f.h", "c"},
                                                        {"f.m", "objective-c"},
                                                        {"f.S", "assembler-with-cpp"}}) {
    CheckAsked(file + ":cc -c " + file, ' ' + language + '\n');
  }
  CheckAsked("f.h:cc -x c++-header f.h", " c++-header\n");
  CheckAsked("f.h:cc -xc++ ./f.h -x none", " c++\n");
  CheckAsked("f.h:cc -x c++ g.h -x none -Ia f.h -xc++", "-Ia c\n");
  CheckAsked("f.h:cc -x c++ -- f.h", " c++\n");
  CheckAsked("f.c:my-c++-12 f.c", " c++\n");
  for (const std::string file : {"f.s", "c"}) CheckAsked(file + ":cc -Imid " + file, "");
  tree.File("tree/one", "-I a @two\n'-I b'");
  tree.File("tree/two", "-I'c d' @none @lib @two");
  CheckAsked("f.c:cc @one -Ie", "-I|a|-Ic d|-I b|-Ie c\n");
  tree.File("tree/three", "-Ia \\\n -I\\\nb \\\n");
  CheckAsked("f.c:cc @three -Ic", "-Ia|-Ib|-Ic c\n");
}

TEST_F(CompileCommandsTest, EachListIsExaminedOnceAndNamesItsFiles) {
  Check({
      {". ../db; db <<'END'\n"
       "1.c:cc -Iover -Imid -O1\n2.c:cc -Iover -Imid -O2\n3.c:cc -I over -Imid\n"
       "4.c:cc -c -Iover -Imid\n/5.c:cc -iquotelib -iquote lib -Iover\n6.f90:cc\n7.c:cc "
       "-Iover\nEND\n"
       "cd lib; s shadows --compile-commands ../db.json; wc -l <../../asked",
       0, "left out 1 file not in C, C++ or Objective-C: `$T/6.f90`\n",
       "in 4 files: $T/1.c, $T/2.c, $T/3.c, ...\n"
       "`fn.zt` means $T/over/fn.zt and hides\n  identical   $T/mid/fn.zt\n"
       "in 1 file: /5.c\n"
       "`fn.zt` means $T/lib/fn.zt and hides\n  identical   $T/over/fn.zt\n4\n"},
      {". ../db; s shadows --compile-commands db.json --json --quiet", 1, "",
       "{`list`:1,`quoted`:[],`folders`:[`$T/over`,`$T/mid`],`files`:[`$T/1.c`,`$T/2.c`,`$T/3.c`,"
       "`$T/4.c`]}\n"
       "{`list`:1,`name`:`fn.zt`,`path`:`$T/over/fn.zt`,`hidden`:[{`path`:`$T/mid/fn.zt`,`kind`:"
       "`identical`}]}\n"
       "{`list`:2,`quoted`:[`$T/lib`],`folders`:[`$T/over`],`files`:[`/5.c`]}\n"
       "{`list`:2,`name`:`fn.zt`,`path`:`$T/lib/fn.zt`,`hidden`:[{`path`:`$T/over/fn.zt`,`kind`:"
       "`identical`}]}\n"
       "{`list`:3,`quoted`:[],`folders`:[`$T/over`],`files`:[`$T/7.c`]}\n"},
      {". ../db; s shadows --compile-commands db.json --summary --json --quiet | cut -d, -f-3 | "
       "sed -n '2,3p;5p'",
       0, "",
       "{`list`:1,`names`:1,`files`:1\n{`list`:1,`winner`:`$T/over`,`hidden`:`$T/mid`\n"
       "{`list`:2,`names`:1,`files`:1\n"},
      // What is left over in one list alone is not left over.
      {". ../db; printf 'fn.zt\\nplain\\nfo.zt\\n' >allow; s shadows fn.zt no plain --quiet "
       "--allow "
       "allow --compile-commands db.json",
       0,
       "searchpath: no file called `no` on the path\n"
       "searchpath: --allow `plain`: no file of that name is hidden\n",
       ""},
      {". ../db; db <<'END'\n1.c:cc -Iover -Imid\n2.c:nothing -Ia\n2.cc:nothing -Ia\n3.c:cc "
       "-Ilib\nEND\n"
       "s shadows --compile-commands db.json",
       2,
       "searchpath: cannot ask `nothing -Ia` for its folders: there is no such program; install "
       "it, "
       "or take its files out of `db.json`\n",
       "in 1 file: $T/1.c\n`fn.zt` means $T/over/fn.zt and hides\n  identical   $T/mid/fn.zt\n"},
      {"mkdir -p over/geometry; echo other >over/geometry/area.zt; . ../db; db <<'END'\n1.c:cc -I "
       "mid "
       "-I over\nEND\ns shadows --only different --compile-commands db.json; s shadows --only "
       "same-file "
       "--compile-commands db.json",
       0, "",
       "in 1 file: $T/1.c\n`geometry/area.zt` means $T/mid/geometry/area.zt and hides\n"
       "  different   $T/over/geometry/area.zt\n"},
      {". ../db; seq 4000 | sed 's/$/.c:cc -Ilib -Imid/' | db; s shadows --compile-commands "
       "db.json | "
       "head -n 1",
       0, "", "in 4000 files: $T/1.c, $T/2.c, $T/3.c, ...\n"},
      {". ../db; db <<'END'\n1.c:cc -c 1.c\nEND\ns shadows --compile-commands db.json", 0, "", ""},
      {"s shadows --compile-commands db.json --path lib", 2,
       "--compile-commands names the folders;", ""},
      {"s shadows --compile-commands db.json --as plain", 2,
       "--as plain cannot be given together; it", ""},
      {"s shadows --compile-commands none", 2, "there is no compilation database `none`\n", ""},
      {"s shadows --compile-commands lib", 2, "cannot read `lib`: Is a directory\n", ""},
      {"printf '[{\"directory\": \"/\",\\n\"file\": \"f.c\"}]' >bad; s shadows --compile-commands "
       "bad",
       2, "searchpath: bad:1: [0].command: missing\n", ""},
      {"printf '[{\"directory\": \"/\",\\n\"file\": \"f.c\",\\n\"arguments\": [1]}]' >bad; s "
       "shadows "
       "--compile-commands bad",
       2, "searchpath: bad:3: [0].arguments[0]: expected a text\n", ""},
      {"printf '[{\"directory\": \"/\", \"file\": \"f.c\", \"command\": \" \"}]' >bad; s shadows "
       "--compile-commands bad",
       2, "searchpath: bad:1: [0].command: expected at least the compiler\n", ""},
      {": >none; printf '[{\"directory\": \".\", \"file\": \"f.c\",\\n\"arguments\": "
       "[\"@none\"]}]' >bad; "
       "s shadows --compile-commands bad; rm none",
       0, "searchpath: bad:2: [0].arguments: expected at least the compiler\n", ""},
      {"echo {} >bad; s shadows --compile-commands bad", 2, "searchpath: bad:1: expected a list\n",
       ""},
  });
}

// The lists are those of the compilers of this machine, which drop repeats in ways of their own.
TEST_F(CompileCommandsTest, CompilersOfThisMachineAgree) {
  Check({{R"sh(
. ../db; unset CPATH; mkdir -p s/usr/include; ln -s mid linked
lists() { sed -n 's/.*"quoted":\[\(.*\)\],"folders":\[\(.*\)\],"files".*/\1\n<>\n\2/p' | tr , '\n' | tr -d '"'; }
own() { sed -n '/^#include "/,/^End/{s/^#include <.*/<>/p;s:^ \([^/].*\):'"$PWD"'/\1:p;s:^ /:/:p}'; }
compilers=0
for cc in gcc g++ clang-19; do
  command -v $cc >/dev/null || continue
  compilers=1
  while read -r flags; do
    db <<END
f.c:$cc -O2 -DX=1 $flags -c f.c -o f.o
END
    language=c; case $cc in *++) language=c++ ;; esac
    s shadows --compile-commands db.json --json --quiet | head -n 1 | lists | grep . >../told
    $cc $flags -E -v -x $language /dev/null 2>&1 >/dev/null | own >../own
    diff ../told ../own || echo "$cc $flags"
  done <<'FLAGS'
-Imid -Iover
-Imid -isystem mid -I over -idirafter mid
-iquote over -iquote mid -Imid -Ilib
-iquote over -Ilinked -Imid -isystemover -I nothing -I folders
-I/usr/include -idirafter over -isystem over -iquote /usr/include
-nostdinc -Imid
--sysroot=s -Imid -I.
-iprefix mid/../ -iwithprefix over -isystem lib
FLAGS
done
echo $compilers)sh",
          0, "", "1\n"}});
}

}  // namespace
}  // namespace searchpath_test
