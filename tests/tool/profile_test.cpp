#include "tool/tool_test.h"

#include <chrono>

namespace searchpath_test {
namespace {

// Programs that answer as compilers and interpreters do, in $PATH before the others.
constexpr const char* kPrograms = R"sh(
mkdir ../bin ../config ../config/searchpath; cat >../bin/cc <<'END'
#!/bin/sh
echo "$LC_ALL $*" >>../asked
cat >&2 <<'LISTS'
Using built-in specs.
 ignored
#include "..." search starts here:
 over
#include <...> search starts here:
 mid
 /Frameworks (framework directory)
 a:b
End of search list.
 lib
LISTS
END
cat >../bin/python3 <<'END'
#!/bin/sh
printf '/__init__.py\0.py\0\0.\0../mid\0'
END
cat >../bin/perl <<'END'
#!/bin/sh
echo nothing
END
chmod +x ../bin/*; echo 'PATH=${PWD%/tree}/bin:$PATH' >../path)sh";

class ProfileTest : public ToolTest {
 protected:
  void SetUp() override {
    ToolTest::SetUp();
    ASSERT_EQ(RunShell(kPrograms).error, "");
  }
};

TEST_F(ProfileTest, ThePathIsThatOfAVariable) {
  Check({
      {"FOLDERS=over:mid; export FOLDERS; s list --path-of FOLDERS", 0, "", "$T/over\n$T/mid\n"},
      {"export FOLDERS=lib/+pkg; s list --path-of FOLDERS --as environment --long | tail -n 1; s "
       "find "
       "cls/x --path-of FOLDERS --as environment --explain | grep -c 'from --path-of FOLDERS: lib'",
       0, "on the path\n",
       "      0 files  @          $T/lib/+pkg/@cls  (from --path-of FOLDERS: lib/+pkg)\n1\n"},
      {"cd mid; PATH=../over::$OLDPWD/odd s list --path-of PATH", 0, "",
       "$T/mid/../over\n$T/mid\n$T/odd\n"},
      {"PATH=a::b s list --path-of PATH --as environment --quiet", 0, "", "$T/a\n$T/b\n"},
      {"cd mid; export CPATH='~:../over:'; s list --path-of CPATH --quiet", 0, "",
       "$T/mid/~\n$T/mid/../over\n$T/mid\n"},
      {"export PYTHONPATH='~::over'; s list --path-of PYTHONPATH --quiet", 0, "",
       "$T/~\n$T/over\n"},
      {"unset FOLDERS; s list --path-of FOLDERS", 2,
       "the variable FOLDERS is not set; export it, or give the folders with --path", ""},
      {"s add lib; export FOLDERS=; s list --path-of FOLDERS", 2,
       "--path-of FOLDERS names no folder; write . for the working folder\n", ""},
      {"s list --path-of perk", 2, "--path-of is PATH, another variable, cc, c++, perl or python,",
       ""},
      {"s list --path-of PATH --path lib", 2, "--path-of and --path cannot be given together;", ""},
      {"s list --path-of PATH --cache x", 2, "--path-of and --cache cannot be given together;", ""},
      {"s list --path-of PATH --profile c", 2, "--path-of and --profile cannot be given together;",
       ""},
      {"s list --path-of PATH --flag -m32", 2, "--flag is for --path-of cc and c++ and their", ""},
  });
}

TEST_F(ProfileTest, ThePathIsThatOfAProgram) {
  Check({
      {". ../path; unset CC; s list --path-of cc --flag '-I x' --flag -y; cat ../asked", 0, "",
       "$T/mid\n$T/a:b\nC -I x -y -E -v -x c /dev/null\n"},
      {". ../path; CXX=\"env 'A=b  c' cc -m32\" s list --path-of c++ --quiet; tail -n 1 ../asked",
       0, "", "$T/mid\n$T/a:b\nC -m32 -E -v -x c++ /dev/null\n"},
      {". ../path; CC='cc \\\n -m64' s list --path-of cc --quiet; tail -n 1 ../asked", 0, "",
       "$T/mid\n$T/a:b\nC -m64 -E -v -x c /dev/null\n"},
      {". ../path; unset CC; env --ignore-signal=CHLD '" SEARCHPATH_TOOL "' list --path-of cc", 0,
       "", "$T/mid\n$T/a:b\n"},
      {". ../path; cd odd; s list --path-of python", 0, "", "$T/odd\n$T/odd/../mid\n"},
      {". ../path; s list --path-of perl", 2,
       "cannot ask `perl` for its folders: it prints no folders; install it, put it on PATH, or",
       ""},
      {"CC='nothing -m32' s list --path-of cc", 2,
       "cannot ask `nothing -m32` for its folders: there is no such program; name a compiler in CC",
       ""},
      {"CC=true s list --path-of cc", 2, "folders: unlike GCC and Clang, it prints no", ""},
      {"CC=over/fn.zt s list --path-of cc", 2, "for its folders: Permission denied; name a", ""},
      {"CC=\"sh -c 'echo bad >&2; kill -9 \\$$'\" s list --path-of cc", 2, "ended by signal 9;",
       ""},
      {"CXX=\"sh -c 'echo no error: x >&2; echo note >&2; exit 3'\" s list --path-of c++", 2,
       ": exit code 3: no error: x; name a compiler in CXX, or give", ""},
      {"CC=\"sh -c 'echo first >&2; echo last >&2; exit 1'\" s list --path-of cc", 2,
       "exit code 1: last; ", ""},
      {"CC=\"sh -c 'exec yes'\" s list --path-of cc", 2, "it does not stop writing;", ""},
      {"CC=\"sh -c 'cat; exit 7'\" s list --path-of cc <folders", 2, "exit code 7; name", ""},
  });
}

// Three ways not to end, at the same time, since each takes the whole of the 10 seconds.
TEST_F(ProfileTest, AProgramThatDoesNotAnswerIsEnded) {
  const auto start = std::chrono::steady_clock::now();
  const Result result = RunShell(
      "nap=\"sleep 9$$.5\"; left() { for p in /proc/[0-9]*/cmdline; do tr '\\0' ' ' <$p; echo; "
      "done; }\n"
      "CC=\"sh -c '$nap; exit'\" s list --path-of cc & "
      "CC=\"sh -c '$nap & exit 0'\" s list --path-of cc & "
      "CC=\"sh -c 'exec >&- 2>&-; $nap; exit'\" s list --path-of cc & wait; "
      "left 2>/dev/null | grep -c \"^$nap\"");
  EXPECT_EQ(result.out, "0\n");
  const std::regex late(
      "(searchpath: cannot ask \"sh.*: no answer within 10 seconds; name .*\n){3}");
  EXPECT_TRUE(std::regex_match(result.error, late)) << result.error;
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
}

// Where this machine has the program, the modules that a profile finds are those that it finds itself.
TEST_F(ProfileTest, ModulesOfThisMachineAreFoundAsTheirProgramsFindThem) {
  const char* const python =
      R"sh(command -v python3 >/dev/null || exit 0; mkdir m; cd m; export PYTHONPATH=$PWD/../p
mkdir -p ../p/both ../p/only ../p/b; touch both.py ../p/both/__init__.py ../p/only/__init__.py ../p/only.py ../p/b/no.py
touch ../p/over.py; cp ../p/over.py over.pyc; for e in .so .py; do touch ../p/first$e; done
python3 >../told -c '
import os, pkgutil
from importlib.machinery import PathFinder
def tell(prefix, path):
    for module in pkgutil.iter_modules(path):
        spec = PathFinder.find_spec(module.name, path)
        if not spec or not spec.origin or not os.path.isfile(spec.origin): continue
        print(prefix + module.name, spec.origin)
        if module.ispkg and not prefix: tell(module.name + ".", spec.submodule_search_locations)
tell("", None)'
cut -d' ' -f1 ../told | s find --profile python --stdin --quiet >../found; cut -d' ' -f2- ../told | diff - ../found | head
[ $(wc -l <../found) -gt 50 ] || echo too few)sh";
  const char* const perl =
      R"sh(command -v perl >/dev/null || exit 0; mkdir -p p/Text; touch p/Text/Wrap.pm; export PERL5LIB=$PWD/p
perl -MFile::Find -e 'for $d (grep { -d } @INC) { find({no_chdir => 1, wanted => sub {
  return unless /\.pm$/ && -f; ($n = substr($_, 1 + length $d)) =~ s/\.pm$//; $n =~ s{/}{::}g; $f{$n} //= $_ }}, $d) }
  print "$_ $f{$_}
" for grep { !/\./ } sort keys %f' >../told
cut -d' ' -f1 ../told | s find --profile perl --stdin --quiet >../found; cut -d' ' -f2- ../told | diff - ../found | head
[ $(wc -l <../found) -gt 50 ] || echo too few)sh";
  Check({{python, 0, "", ""}, {perl, 0, "", ""}});
}

// Where this machine has the program, the folders are those that it names itself.
TEST_F(ProfileTest, ProgramsOfThisMachineAgree) {
  Check({
      {"command -v perl >/dev/null || exit 0; mkdir hook; echo 'unshift @INC, sub {}, \"mid\"; 1;' "
       ">hook/Hook.pm; export PERL5LIB=$PWD/hook PERL5OPT=-MHook\n"
       "s list --path-of perl --quiet >../told; perl -e '-d and print \"$_\\n\" for @INC' | sed "
       "\"s:^mid:$PWD/&:\" | grep -vxFf ../told; sed -n 1,2p ../told",
       0, "", "$T/mid\n$T/hook\n"},
      {"command -v python3 >/dev/null || exit 0; cd odd; export PYTHONPATH=../mid; s list "
       "--path-of python "
       "--quiet >../told; python3 -c 'import sys; print(\"\\n\".join(sys.path[1:]))' | grep -vxFf "
       "../told; sed -n 1,2p ../told",
       0, "", "$T/odd\n$T/mid\n"},
      {"for CC in gcc clang clang-19; do command -v $CC >/dev/null || continue; export CC; "
       "s list --path-of cc --flag -Imid --flag -isystem --flag over --flag -iquote --flag lib "
       ">../told; "
       "sed -n '1,2s:.*/::p' ../told | paste -sd ' '; echo '#include <stdio.h>' | $CC -E - | sed "
       "-n "
       "'s:^# [0-9]* \"\\(/.*\\)/stdio.h\".*:\\1:p' | sort -u | grep -vxFf ../told; done | sort -u",
       0, "", "mid over\n"},
  });
}

TEST_F(ProfileTest, AProfileIsPathRulesAndExtensions) {
  const std::string file = "{ cat >../config/searchpath/profiles.json; } <<'END'\n";
  const std::string own = file + R"({"profiles": {
  "mine": {"path": "lib:over", "extensions": ["zt", ".c"], "moduleSeparator": "::"},
  "list": {"path": ["a:b", "mid"], "rules": "plain", "flags": []},
  "c": {"pathOf": "cc", "flags": ["-m32"]},
  "names": {"extensions": ["/x.zt"], "moduleSeparator": "."}}}
END
)";
  Check({
      {(own + "s profiles").c_str(), 2, "profiles.list.flags: expected `pathOf` to be cc or c++\n",
       ""},
      {"sed -i 's/, .flags.: \\[\\]//' ../config/searchpath/profiles.json; s profiles", 0, "",
       "command  program      of PATH\n"
       "c        include      of cc -m32\n"
       "c++      include      of c++\n"
       "perl     plain        of perl     .pm\n"
       "python   plain        of python   as the interpreter has them\n"
       "mine     environment  lib:over    .zt .c\n"
       "list     plain        a:b, mid\n"
       "names    environment  (no path)   /x.zt\n"},
      {"s profiles --json | sed -n '1p;2s:,.file.*::p;5p;7s:,.file.*::p'", 0, "",
       "{`name`:`command`,`rules`:`program`,`path`:null,`pathOf`:`PATH`,`flags`:[],"
       "`extensions`:[],`moduleSeparator`:`/`,`file`:null}\n"
       "{`name`:`c`,`rules`:`include`,`path`:null,`pathOf`:`cc`,`flags`:[`-m32`],"
       "`extensions`:[],`moduleSeparator`:`/`\n"
       "{`name`:`python`,`rules`:`plain`,`path`:null,`pathOf`:`python`,`flags`:[],"
       "`extensions`:null,`moduleSeparator`:`.`,`file`:null}\n"
       "{`name`:`list`,`rules`:`plain`,`path`:[`a:b`,`mid`],`pathOf`:null,`flags`:[],"
       "`extensions`:[],`moduleSeparator`:`/`\n"},
      {"touch lib/+pkg/a::b.zt; s find --profile mine fn pkg::inner pkg/a::b sub/own; echo "
       "private::own | s find --stdin --profile "
       "mine",
       0, "no file called `sub/own` on the path",
       "$T/lib/fn.zt\n$T/lib/+pkg/inner.zt\n$T/lib/+pkg/a::b.zt\n$T/lib/private/own.zt\n"},
      {"s find --profile mine fn --ext c; s find --profile mine fn --path mid:over", 0, "",
       "$T/lib/fn.c\n$T/over/fn.zt\n"},
      {"s shadows --profile mine fn | head -n 1; s files --profile mine | head -n 2", 0, "",
       "`fn` means $T/lib/fn.zt and hides\n$T/lib/Case.zt\n$T/lib/fn.c\n"},
      {"s list --profile list; s list --profile list --as environment --path 'mid;over'", 0, "",
       "$T/a:b\n$T/mid\n$T/mid\n$T/over\n"},
      {". ../path; unset CC; s list --profile c --flag -y; tail -n 1 ../asked", 0, "",
       "$T/mid\n$T/a:b\nC -m32 -y -E -v -x c /dev/null\n"},
      {". ../path; cd odd; s list --profile python", 0, "", "$T/odd\n$T/odd/../mid\n"},
      {"s add over mid; touch mid/x.zt mid/ax.zt; s list --profile names; s files --profile names",
       0, "", "$T/over\n$T/mid\n$T/mid/x.zt\n"},
      {"mkdir -p mid/in; touch mid/in/x.zt; s files --profile names --as plain --path mid; s files "
       "--profile names --path over; s files --profile names --ext zt --path mid | wc -l",
       0, "no such file on the path\n", "$T/mid/x.zt\n$T/mid/in/x.zt\n4\n"},
      {"s list --profile pearl", 2,
       "no profile `pearl`; the profiles are command, c, c++, perl, python, mine, list and names; "
       "did you mean "
       "perl?",
       ""},
      {"s list --profile mine --cache x", 2, "--profile and --cache without --path cannot be", ""},
      {"s list --profile mine --flag -y", 2, "--flag is for --path-of cc and c++ and their", ""},
  });
}

TEST_F(ProfileTest, AFaultInTheFileOfProfilesIsReportedWithItsPlace) {
  const std::vector<std::array<const char*, 2>> faults = {
      {"{", "profiles.json:1: not JSON here"},
      {"{\n\"profiles\": {},\n\"x\": 1}", "profiles.json:3: x: no such field"},
      {"{}", "profiles.json:1: profiles: missing"},
      {"{\"profiles\": []}", "profiles.json:1: profiles: expected an object"},
      {"{\"profiles\": {\n\"\": {}}}", "profiles.json:2: profiles.\"\": expected a name that is"},
      {"{\"profiles\": {\"m\": {\n\"pathof\": \"cc\"}}}",
       "json:2: profiles.m.pathof: no such field"},
      {"{\"profiles\": {\"m\": {\"path\": 1}}}",
       "profiles.m.path: expected a text or a list of tex"},
      {"{\"profiles\": {\"m\": {\"path\": []}}}", "profiles.m.path: expected at least one folder"},
      {"{\"profiles\": {\"m\": {\"path\":\n[\"a\",\n2]}}}",
       "json:3: profiles.m.path[1]: expected a"},
      {"{\"profiles\": {\"m\": {\"path\": \"a\", \"pathOf\": \"cc\"}}}",
       "m.pathOf: expected either"},
      {"{\"profiles\": {\"m\": {\"pathOf\": \"gcc\"}}}",
       "m.pathOf: expected PATH, another variable,"},
      {"{\"profiles\": {\"m\": {\"pathOf\": \"perl\", \"flags\": []}}}",
       "m.flags: expected \"path"},
      {"{\"profiles\": {\"m\": {\"rules\": \"c\"}}}",
       "m.rules: expected one of environment, plain,"},
      {"{\"profiles\": {\"m\": {\"extensions\": [\"\"]}}}",
       "m.extensions[0]: expected a text that"},
      {"{\"profiles\": {\"m\": {\"moduleSeparator\": 1}}}", "m.moduleSeparator: expected a text"},
      {"{\"profiles\": {\"m\": {},\n\"m\": {}}}", "profiles.json:2: profiles.m: given twice"},
  };
  for (const auto& [text, message] : faults) {
    tree.File("config/searchpath/profiles.json", text);
    for (const char* command : {"s profiles", "s list --profile c"}) {
      const Result result = RunShell(command);
      EXPECT_EQ(result.exit, 2) << text;
      EXPECT_NE(result.error.find(message), std::string::npos) << text << '\n' << result.error;
    }
  }
  Check({
      {"rm ../config/searchpath/profiles.json; s profiles | wc -l", 0, "", "5\n"},
      {"mkfifo ../config/searchpath/profiles.json; s profiles", 2, "searchpath: cannot read `", ""},
      {"s list --path over", 0, "", "$T/over\n"},
  });
}

}  // namespace
}  // namespace searchpath_test
