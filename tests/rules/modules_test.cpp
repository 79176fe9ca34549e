#include "rules/other_programs.h"
#include "searchpath/host/environment.h"
#include "searchpath/host/native_location.h"
#include "support/setting.h"

#include <algorithm>
#include <set>

// The files of this system, asked for as its programs do.
namespace Corvane::PathManagement::host {
namespace {

using Names = std::vector<std::string>;

/// A program, what it prints to say which folders it searches, and what prints the file that it
/// takes each name of standard input for, or an empty line.
struct Interpreter {
  const char* program;
  const char* folders;
  const char* find;
  LookupRules rules;
  Names extensions;
  std::size_t most;  // names in every run
};

const Interpreter kPerl = {"perl",
                           "perl -e 'print map { \"$_\\n\" } @INC'",
                           // What it compiles may do anything, and is given up in any case.
                           R"pl(perl -e 'while (my $name = <STDIN>) { chomp $name;
  my $child = open(my $out, "-|") // die;
  if (!$child) { alarm 10; open STDERR, ">", "/dev/null"; open STDIN, "<", "/dev/null";
    open my $answer, ">&", STDOUT; open STDOUT, ">", "/dev/null";
    eval { require $name }; print $answer $INC{$name} // ""; close $answer;
    require POSIX; POSIX::_exit(0) }
  local $/; print <$out> // "", "\n" }')pl",
                           kPlainRules,
                           {".pm", ".pl"},
                           25};

const Interpreter kPython = {"python3",
                             "python3 -I -c 'import sys; print(*sys.path, sep=\"\\n\")'",
                             R"py(python3 -I -c 'if True:
  import sys
  from importlib.machinery import PathFinder
  def find(parts):
    path = None
    for last in range(1, len(parts) + 1):
      spec = PathFinder.find_spec(".".join(parts[:last]), path)
      path = spec and spec.submodule_search_locations
      if not path and last < len(parts): return None
    return spec and spec.origin
  for line in sys.stdin:
    parts = line[:-4].split("/")
    print(find(parts[:-1] if parts[-1] == "__init__" else parts) or "")')py",
                             kPlainRules,
                             {".py"},
                             300};

const Interpreter kCompiler = {
    "gcc",
    "gcc -E -v -x c /dev/null 2>&1 >/dev/null | sed -n '/<...> search/,/^End/s/^ //p'",
    // Each header is entered, and none that these include.
    R"sh(sed 's/.*/@@\n#include <&>/' >headers.c
gcc -E -w -fmax-include-depth=2 headers.c 2>/dev/null | awk '
  /^@@/ { if (asked++) print found; found = "" }
  /^# 1 ".*" 1( 3)?( 4)?$/ && found == "" { split($0, part, "\""); found = part[2] }
  END { print found }')sh",
    kIncludeRules,
    {".h"},
    400};

Names FilesBelow(const Names& folders, const Names& extensions) {
  std::set<std::string> files;
  for (const std::string& folder : folders) {
    std::error_code gone;
    const auto options = std::filesystem::directory_options::skip_permission_denied;
    for (const auto& file : std::filesystem::recursive_directory_iterator(folder, options, gone)) {
      const std::string extension = file.path().extension();
      const bool isWanted =
          std::find(extensions.begin(), extensions.end(), extension) != extensions.end();
      if (isWanted && !file.is_directory(gone)) {
        files.insert(file.path().lexically_relative(folder));
      }
    }
  }
  return {files.begin(), files.end()};
}

/// Every so many of `names` that `most` are left.
Names Sample(const Names& names, std::size_t most) {
  const std::size_t step = names.size() / most + 1;
  Names sample;
  for (std::size_t name = 0; name < names.size(); name += step) sample.push_back(names[name]);
  return sample;
}

// SEARCHPATH_NAMES says how many names.
void Compare(const Interpreter& asked, const test::TemporaryTree& tree) {
  const Names folders = test::LinesOf(test::Run(tree, asked.folders).out);
  const Names all = FilesBelow(folders, asked.extensions);
  const Names names = Sample(all, test::Setting("SEARCHPATH_NAMES", asked.most));
  std::string input;
  for (const std::string& name : names) input += name + "\n";
  const Names answers = test::LinesOf(test::Run(tree, asked.find, input).out);
  ASSERT_EQ(answers.size(), names.size());
  EnvironmentOptions options{.folders = {}, .rules = asked.rules};
  for (const std::string& folder : folders) options.folders.push_back(TextFromBytes(folder));
  const Environment environment(options);
  std::size_t compared = 0;
  for (std::size_t name = 0; name < names.size(); ++name) {
    // Some cannot be loaded, and some names mean what is no such file.
    if (!answers[name].ends_with("/" + names[name])) continue;
    const auto found = environment.Find({.name = TextFromBytes(names[name])});
    EXPECT_EQ(found ? BytesFromText(GetNativePath(*found)).value() : "",
              test::Plainly(answers[name]))
        << names[name];
    ++compared;
  }
  EXPECT_GE(2 * compared, names.size());
  std::printf("%zu of %zu names of %s compared\n", compared, all.size(), asked.program);
}

TEST(ModuleRulesTest, FilesOfThisSystemAreThoseThatItsProgramsTake) {
  test::RunUnprivileged([] {
    const test::TemporaryTree tree;
    ASSERT_EQ(chdir(tree.Path().c_str()), 0);
    for (const Interpreter& asked : {kCompiler, kPerl, kPython}) {
      if (test::IsInstalled(asked.program)) Compare(asked, tree);
    }
  });
}

}  // namespace
}  // namespace Corvane::PathManagement::host
