#include "answer_record.h"
#include "command_line.h"
#include "commands.h"
#include "finder.h"
#include "followed_answers.h"
#include "matching.h"
#include "names_from_input.h"
#include "output.h"
#include "progress.h"
#include "searchpath/model/byte_text.h"

#include <algorithm>
#include <utility>

namespace Corvane::PathManagement::tool {

namespace {

constexpr CommandText kFindText = {
    "find", "NAME...", "Prints the path of the file that each NAME means.",
    "  searchpath find ls --path \"$PATH\"            which file does ls mean?\n"
    "  searchpath which -a ls                       which programs does it hide?\n"
    "  searchpath find --explain ls --path \"$PATH\"  why that file?\n"
    "  searchpath find --stdin --path \"$PATH\" <names.txt\n"
    "  searchpath find stdio.h --path /usr/include --recursive\n"
    "  searchpath find plot --ext zt --ext c --path mine:lib\n"
    "  searchpath find geometry/area.zt --path @folders\n"
    "  searchpath find --glob 'plot*' --path mine:lib\n",
    "What is found:\n"
    "  NAME means the file of that name in the first folder of the path that has one.\n"
    "  Only regular files are found, and links to regular files. Execute permission\n"
    "  does not matter.\n"
    "  A NAME with \"/\" is a partial pathname: geometry/area.zt is a file area.zt in a\n"
    "  folder whose location ends in \"geometry\" or \"+geometry\". The \"+\" or \"@\" of a\n"
    "  folder's name may be left out.\n"
    "  --ext EXT adds the extension to NAME, unless NAME has an extension already.\n"
    "  With several, the one given first wins within a folder. NAME then also means\n"
    "  the file NAME.EXT in a folder @NAME; such a folder is a method entry.\n"
    "  A file in a private folder is found with --from, or as private/NAME.\n"
    "  --policy file-system is the default: on Linux, names that differ in case are\n"
    "  different names.\n"
    "  Write -- before a NAME that begins with \"-\".\n"
    "\n"
    "Patterns:\n"
    "  With --glob, NAME is a pattern: the answer is, for each name that matches, the\n"
    "  file that it means, in the order of the path. * matches any characters, also a\n"
    "  dot at the beginning, ? one character, [a-c] one of these, [!a-c] any other;\n"
    "  \\ takes the meaning from the character behind it. The whole name has to match.\n"
    "  In geometry/*.zt, only the last part may be a pattern. --ext adds the\n"
    "  extension to the pattern.\n"
    "\n"
    "Why:\n"
    "  --explain prints each folder that was asked, in the order of the search: what\n"
    "  came of it, the hidden files in it, and who put it on the path, unless --path\n"
    "  names the folder itself. Then comes the rule that decided. These lines\n"
    "  name all files that --all prints.\n"
    "\n"
    "Many names:\n"
    "  --stdin reads one NAME a line; with -0, each NAME and each answer ends with\n"
    "  NUL. An empty line is skipped and reported with its number, and the exit is 2.\n"
    "  For a NAME that is not found there is no \"did you mean\".\n"
    "\n"
    "For programs:\n"
    "  With --stdin a NAME is answered as soon as no further one waits to be read, so\n"
    "  a program can write one, read the answer, and go on. With --json as well, a\n"
    "  NAME that is not found is answered, too: {\"name\":\"x\",\"path\":null}. With --all\n"
    "  or --glob, {\"name\":\"x\",\"end\":true} comes behind the last file of each NAME.\n"
    "  --follow sees what changes on the disk before it answers. With --json it also\n"
    "  writes, without being asked, which of the NAMEs so far mean another file now,\n"
    "  as searchpath watch does: {\"change\":\"changed\",\"name\":\"x\",\"old\":..,\"new\":..}\n"
    "\n"
    "Exit: 0 every NAME was found, 1 some NAME was not, 2 wrong usage or failure.\n"
    "\n"};

struct FindOptions {
  PathOptions path;
  MatchingOptions matching;
  OutputOptions output;
  AnswerOptions answers = {.suggestsGlob = true};  // --stdin sets `manyNames`
  bool follow = false;
  std::optional<std::string> from;
  std::optional<std::string> after;
  RecordOptions record;

  void AddTo(CommandLine& commandLine) {
    path.AddTo(commandLine);
    commandLine.AddFlag("-a,--all", answers.all,
                        "the file that NAME means, then those that it hides");
    commandLine.AddFlag("--glob", answers.glob, "NAME is a pattern, with *, ? and [a-c]");
    commandLine.AddFlag("--explain", answers.explain,
                        "why: each folder asked, and the rule that decided");
    commandLine.AddValue("--from", "FOLDER", from,
                         "as code in FOLDER sees it: private files first");
    commandLine.AddValue("--after", "FOLDER", after,
                         "only folders behind this one of the path; with --as");
    matching.AddTo(commandLine, "add this extension to NAME; may be repeated");
    commandLine.AddFlagForOperands("--stdin", answers.manyNames,
                                   "read NAMEs from standard input, one a line");
    commandLine.AddFlag("--follow", follow, "with --stdin: keep the path as the disk is");
    record.AddTo(commandLine);
    output.AddTo(commandLine);
    output.AddExitCodeTo(commandLine);
  }
};

// Refuses options that mean nothing under the rules of the path.
void CheckRules(const FindOptions& options) {
  const host::LookupRules rules = options.path.GetRules();
  if (rules.foldersHaveMeaning) {  // the rules "environment"
    if (!options.after) return;
    throw UsageError("--after needs rules under which folders have no meaning: --as include");
  }
  if (options.matching.GetPolicy() == FilenameMatchingPolicy::IgnoreCase) {
    throw UsageError("--policy ignore-case and --as " + *options.path.as +
                     " cannot be given together; these rules compare names as they are");
  }
  // "program" alone has this separator; "plain" and "include" search the folder of --from first.
  if (options.from && rules.separator == host::LookupRules::Separator::ThatFile) {
    throw UsageError("--from and --as " + *options.path.as +
                     " cannot be given together; under these rules it does not matter who asks");
  }
}

void CheckOptions(const FindOptions& options, const std::vector<std::string>& names) {
  if (std::find(names.begin(), names.end(), "") != names.end()) {
    throw UsageError("an empty NAME means no file; type: searchpath find NAME");
  }
  const auto& parts = options.path.parts;
  if (options.answers.manyNames && std::find(parts.begin(), parts.end(), "-") != parts.end()) {
    throw UsageError(
        "--stdin and --path - both read standard input; write the folders into a file and give "
        "--path @FILE");
  }
  if (options.follow && !options.answers.manyNames) {
    throw UsageError("--follow is for the NAMEs of --stdin; add --stdin");
  }
  if (options.answers.glob &&
      (options.answers.explain || options.follow || options.record.WritesFiles())) {
    throw UsageError(
        "--glob cannot be given together with --explain, --follow, --receipt or --depfile");
  }
  options.record.Check();
  if (options.follow && options.record.WritesFiles()) {
    throw UsageError(
        "--follow cannot be given together with --receipt or --depfile; it answers as the disk "
        "changes");
  }
  CheckRules(options);
}

// All of the look-ups but the name, which `Finder` sets.
host::Lookup GetLookup(const FindOptions& options) {
  host::Lookup lookup;
  lookup.extensions = options.matching.GetExtensions(options.path.GetExtensions());
  lookup.policy = options.matching.GetPolicy();
  if (options.from) lookup.fromFolder = TextFromBytes(*options.from);
  if (options.after) lookup.afterFolder = TextFromBytes(*options.after);
  return lookup;
}

// The path that is searched. Either `once` or `followed` is set.
struct SearchedPath {
  std::optional<host::Environment> once;              // without --follow
  std::optional<host::FollowedEnvironment> followed;  // for --follow

  SearchedPath(const FindOptions& options, const CommandLine& commandLine) {
    if (options.follow) {
      followed.emplace([&] { return OpenFollowed(options.path, commandLine, options.from); });
    } else {
      once.emplace(OpenPath(options.path, commandLine));
    }
  }

  [[nodiscard]] const host::Environment& Get() const { return once ? *once : followed->Get(); }
};

// Answers the names on standard input, and makes the answers visible before each wait for more
// names. Returns false when a name was empty.
bool AnswerInput(SearchedPath& path, Finder& finder, const FindOptions& options,
                 const Output& output) {
  const char end = options.output.print0 ? '\0' : '\n';
  if (!path.followed) {
    return ForEachNameFromInput(
        end, [&](const std::string& name) { finder.Answer(name); }, FinishData);
  }
  FollowedAnswers answers(*path.followed, finder, output);
  return ForEachNameFromInput(
      end, [&](const std::string& name) { answers.Answer(name); }, [&] { answers.Wait(); });
}

}  // namespace

Outcome RunFind(const Arguments& arguments) {
  CommandLine commandLine(kFindText);
  FindOptions options;
  options.AddTo(commandLine);
  if (!commandLine.Parse(arguments)) return Outcome::Done;
  const std::vector<std::string>& names = commandLine.GetOperands();
  CheckOptions(options, names);
  const Output output(options.output);
  host::Lookup lookup = GetLookup(options);
  SearchedPath path(options, commandLine);
  Finder finder(options.answers, options.path, output, path.Get(), std::move(lookup));
  const bool failed = options.path.strict && ReportProblems(path.Get(), options.path);
  std::optional<host::ReceiptRecorder> recorder;
  if (options.record.WritesFiles()) finder.RecordIn(recorder.emplace(path.Get()));
  try {
    for (const std::string& name : names) finder.Answer(name);
    const bool answeredAll =
        !options.answers.manyNames || AnswerInput(path, finder, options, output);
    if (recorder) {
      const auto receipt = WithProgress(options.path.quiet, [&] { return recorder->Finish(); });
      WriteRecord(options.record, receipt);
    }
    finder.ReportProblems();
    if (!answeredAll || failed) return Outcome::Failed;
    return finder.FoundAll() ? Outcome::Found : Outcome::NotFound;
  } catch (const current_working_folder::FailedToAbsolutizeException& error) {
    // When both are given, --from is not used.
    if (options.after) RefuseFolder("--after", *options.after, error);
    if (options.from) RefuseFolder("--from", *options.from, error);
    throw;
  }
}

}  // namespace Corvane::PathManagement::tool
