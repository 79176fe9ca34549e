#include "command_line.h"
#include "commands.h"
#include "explanation_output.h"
#include "found_file.h"
#include "hint.h"
#include "matching.h"
#include "names_from_input.h"
#include "output.h"
#include "search_path.h"
#include "searchpath/model/byte_text.h"

#include <algorithm>
#include <utility>

namespace Corvane::PathManagement::tool {

namespace {

constexpr CommandText kText = {
    "find", "NAME...", "Prints the path of the file that each NAME means.",
    "  searchpath find ls --path \"$PATH\"            what ls means\n"
    "  searchpath find --all ls --path \"$PATH\"      and what it hides\n"
    "  searchpath find --explain ls --path \"$PATH\"  why that file: all folders asked\n"
    "  searchpath find --stdin --path \"$PATH\" <names.txt\n"
    "  searchpath find stdio.h --path /usr/include --recursive\n"
    "  searchpath find main --ext cpp --ext c --path src:lib\n"
    "  searchpath find pkg/name.m --path @folders   in a folder called pkg or +pkg\n",
    "What is found:\n"
    "  Regular files, also through links. Whether they may be executed is not asked.\n"
    "  A NAME with \"/\" is a partial pathname: the folders in front of its last part\n"
    "  are the last folders of the file's location; \"+\" and \"@\" may be left out.\n"
    "  With --ext, NAME is tried with each extension in turn, unless it has one of\n"
    "  its own. A file in a private folder is found with --from, or as private/NAME.\n"
    "  The policy is file-system unless given: here names that differ in case are\n"
    "  different files.\n"
    "  Write -- before a NAME that begins with \"-\".\n\n"
    "Why:\n"
    "  --explain shows each folder that was asked, in order: what came of it, which\n"
    "  hidden files it holds, and, where it is no folder of --path itself, which of\n"
    "  those or which package brought it; then the rule that decided. It shows what --all does.\n\n"
    "Many names:\n"
    "  --stdin skips an empty line, tells its number and ends with 2; the others are\n"
    "  answered. With -0, names are ended by NUL, and so are the answers. What is not\n"
    "  found is told without a \"did you mean\".\n\n"
    "Exit: 0 every NAME was found, 1 some NAME was not, 2 wrong usage or failure.\n\n"};

struct FindOptions {
  PathOptions path;
  MatchingOptions matching;
  OutputOptions output;
  bool all = false;
  bool explain = false;
  bool fromInput = false;
  std::optional<std::string> from;

  void AddTo(CommandLine& commandLine) {
    path.AddTo(commandLine);
    commandLine.AddFlag("--all", all, "every file that NAME could mean, the one it means first");
    commandLine.AddFlag("--explain", explain, "why: each folder asked, and the rule that decided");
    commandLine.AddValue("--from", "FOLDER", from,
                         "what NAME means to code in FOLDER: private first");
    matching.AddTo(commandLine, "an extension to try; may be repeated");
    commandLine.AddFlagForOperands("--stdin", fromInput,
                                   "NAMEs from standard input: a line each, with -0 NUL-ended");
    output.AddTo(commandLine, true);
  }
};

void CheckOptions(const FindOptions& options, const std::vector<std::string>& names) {
  if (std::find(names.begin(), names.end(), "") != names.end()) {
    throw UsageError("an empty NAME means no file; type: searchpath find NAME");
  }
  const auto& parts = options.path.parts;
  if (options.fromInput && std::find(parts.begin(), parts.end(), "-") != parts.end()) {
    throw UsageError(
        "--stdin and --path - both read standard input; write the folders into a file and give "
        "--path @FILE");
  }
  if (options.explain && options.output.print0) {
    throw UsageError("--explain and --print0 exclude each other; for programs there is --json");
  }
}

// What all names have in common.
host::Lookup GetLookup(const FindOptions& options) {
  host::Lookup lookup;
  lookup.extensions = options.matching.GetExtensions();
  lookup.policy = options.matching.GetPolicy();
  if (options.from) lookup.fromFolder = TextFromBytes(*options.from);
  return lookup;
}

// Answers one name after the other.
class Finder {
 public:
  Finder(const FindOptions& findOptions, const Output& whereTo,
         const host::Environment& searchedPath, host::Lookup commonLookup)
      : options(findOptions),
        output(whereTo),
        environment(searchedPath),
        lookup(std::move(commonLookup)) {}

  void Answer(const std::string& name) {
    lookup.name = TextFromBytes(name);
    if (options.explain ? Explain(name) : Find(name)) return;
    foundAll = false;
    // A hint reads the whole path, which is too much for each of very many names.
    Report("no file called " + Quoted(name) + " on the path" +
           (options.fromInput ? "" : GetHint(environment, lookup)));
  }

  [[nodiscard]] bool FoundAll() const noexcept { return foundAll; }

 private:
  [[nodiscard]] bool Explain(const std::string& name) const {
    const host::Explanation explanation = environment.Explain(lookup);
    WriteExplanation(output, environment, name, explanation);
    return !explanation.files.empty();
  }

  [[nodiscard]] bool Find(const std::string& name) const {
    if (options.all) {
      const std::vector<FoundItem> files = environment.FindAll(lookup);
      for (const FoundItem& file : files) WriteAnswer(output, name, file);
      return !files.empty();
    }
    const auto file = environment.Find(lookup);
    if (file) WriteAnswer(output, name, *file);
    return file.has_value();
  }

  const FindOptions& options;
  const Output& output;
  const host::Environment& environment;
  host::Lookup lookup;
  bool foundAll = true;
};

// Returns whether there was no name among them that cannot be one.
bool AnswerAll(Finder& finder, const FindOptions& options, const std::vector<std::string>& names) {
  for (const std::string& name : names) finder.Answer(name);
  if (!options.fromInput) return true;
  return ForEachNameFromInput(options.output.print0 ? '\0' : '\n',
                              [&](const std::string& name) { finder.Answer(name); });
}

}  // namespace

Outcome RunFind(const std::vector<std::string>& arguments) {
  CommandLine commandLine(kText);
  FindOptions options;
  options.AddTo(commandLine);
  if (!commandLine.Parse(arguments)) return Outcome::Found;
  const std::vector<std::string>& names = commandLine.GetOperands();
  CheckOptions(options, names);
  const Output output(options.output);
  host::Lookup lookup = GetLookup(options);
  const host::Environment environment = OpenPath(options.path, commandLine);
  Finder finder(options, output, environment, std::move(lookup));
  const bool failed = ReportProblems(environment, options.path);
  try {
    if (!AnswerAll(finder, options, names) || failed) return Outcome::Failed;
    return finder.FoundAll() ? Outcome::Found : Outcome::NotFound;
  } catch (const current_working_folder::FailedToAbsolutizeException& error) {
    RefuseFrom(*options.from, error);
  }
}

}  // namespace Corvane::PathManagement::tool
