#include "command_line.h"
#include "commands.h"
#include "difference_output.h"
#include "progress.h"
#include "search_path.h"
#include "searchpath/host/name_changes.h"
#include "searchpath/host/path_differences.h"
#include "searchpath/host/path_refresh.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace Corvane::PathManagement::tool {

namespace {

constexpr CommandText kDiffText = {
    "diff", "OLD NEW", "Prints how the path NEW differs from the path OLD.",
    "  searchpath diff \"$PATH\" /opt/bin:\"$PATH\"     which folders differ?\n"
    "  searchpath diff --names lib:src src:lib     which names mean another file?\n"
    "  searchpath list --path lib --save then; searchpath diff @then lib\n"
    "                                              what has changed since then?\n",
    "The paths:\n"
    "  OLD and NEW are written as for --path: A:B:..., @FILE with one folder a line,\n"
    "  or - for standard input. When list --save has written FILE, its folders count\n"
    "  as they were then. All other folders are read now.\n"
    "\n"
    "The folders:\n"
    "  removed    only on OLD             added      only on NEW\n"
    "  moved      in another order        refreshed  holds other files\n"
    "  After the word comes the folder's position on OLD, on NEW, or on both; the\n"
    "  first is 1. As few folders as possible count as moved. A folder is refreshed\n"
    "  when files or special folders (\"+\", \"@\", private, resources) have come or\n"
    "  gone in it; the contents of files are not compared. --subfolders prints\n"
    "  special folders too, each with the position of the folder that it belongs to.\n"
    "\n"
    "The names:\n"
    "  --names prints, instead of the folders, the file names that mean another file\n"
    "  on NEW (changed OLD -> NEW), no file any more (gone), or a file for the first\n"
    "  time (new). Files in special folders do not count. In JSON, \"old\" and \"new\"\n"
    "  are the files, or null.\n"
    "\n"
    "Exit: 0 no difference, 1 some difference, 2 wrong usage or failure.\n"};

struct DiffOptions {
  PathOptions path;
  OutputOptions output;
  bool subfolders = false;
  bool names = false;

  void AddTo(CommandLine& commandLine) {
    commandLine.AddFlag("--subfolders", subfolders,
                        "also special folders: +, @, private, resources");
    commandLine.AddFlag("--names", names, "names that mean another file, instead of folders");
    path.AddReadingTo(commandLine);
    output.AddTo(commandLine);
    output.AddExitCodeTo(commandLine);
  }
};

void CheckOptions(const DiffOptions& options, const std::vector<std::string>& operands) {
  if (operands.size() != 2) {
    throw UsageError("diff needs two paths, OLD and NEW; type: searchpath diff A:B C:D");
  }
  if (operands[0] == "-" && operands[1] == "-") {
    throw UsageError("OLD and NEW cannot both be standard input; write one into a file: @FILE");
  }
  if (options.names && options.subfolders) {
    throw UsageError(
        "--names and --subfolders cannot be given together; --names leaves special folders out");
  }
}

// Whether the path was read from a file that list --save has written. If one folder comes from
// there, all do.
bool IsSaved(const host::Environment& path) {
  const auto folders = path.GetMainFolders();
  return !folders.empty() && path.FindOrigin(*folders.front()).source == host::FolderSource::Cache;
}

// For --names with --as program, which needs the rights of files.
void RefuseSavedPrograms(const host::Environment& before, const host::Environment& after) {
  // Both paths have the same rules; those of "program" ask for executable files.
  if (after.GetRules().files != host::LookupRules::Files::Executable) return;
  if (!IsSaved(before) && !IsSaved(after)) return;
  throw UsageError(
      "--names and --as program cannot be given together for a saved path, which does not have "
      "the rights of files; leave out --as program");
}

// A saved path is examined without its rules: these may ask the disk, but a saved folder counts as
// it was, whatever has become of it.
std::vector<host::FolderProblem> FindProblemsOf(const host::Environment& path) {
  return IsSaved(path) ? host::Environment(path.GetPath()).FindProblems() : path.FindProblems();
}

// The folders of both paths that cannot be searched, each once.
std::vector<host::FolderProblem> FindProblems(const host::Environment& before,
                                              const host::Environment& after) {
  std::vector<host::FolderProblem> problems = FindProblemsOf(before);
  const std::size_t countBefore = problems.size();
  for (host::FolderProblem& problem : FindProblemsOf(after)) {
    const bool isKnown =
        std::any_of(problems.begin(), problems.begin() + static_cast<std::ptrdiff_t>(countBefore),
                    [&](const host::FolderProblem& known) {
                      return known.folder == problem.folder && known.reason == problem.reason;
                    });
    if (!isKnown) problems.push_back(std::move(problem));
  }
  return problems;
}

// Returns whether there is a difference.
bool WriteDifferences(const Output& output, const DiffOptions& options,
                      const host::Environment& old, const host::Environment& now) {
  using Filter = PathEntryVectorDifferentiator::ComparisonFilter;
  if (options.names) {
    const auto names =
        WithProgress(options.path.quiet, [&] { return now.FindNameChangesSince(old); });
    for (const host::NameChange& name : names) WriteDifference(output, name);
    return !names.empty();
  }
  const host::FolderPath before(old.GetMainFolders());
  // The comparison takes folders as unchanged when their entries are the same objects.
  const host::FolderPath after(
      host::ShareUnchangedFolders(now.GetMainFolders(), before.GetMainFolders()));
  const auto filter = options.subfolders ? Filter::IncludeSubfolders : Filter::TopLevelOnly;
  const auto folders = WithProgress(
      options.path.quiet, [&] { return host::FindPathDifferences(before, after, filter); });
  for (const host::FolderDifference& folder : folders) WriteDifference(output, folder);
  return !folders.empty();
}

}  // namespace

Outcome RunDiff(const Arguments& arguments) {
  CommandLine commandLine(kDiffText);
  DiffOptions options;
  options.AddTo(commandLine);
  if (!commandLine.Parse(arguments)) return Outcome::Done;
  const std::vector<std::string>& operands = commandLine.GetOperands();
  CheckOptions(options, operands);
  const Output output(options.output);
  const host::Environment before = OpenVersion(operands[0], "OLD", options.path);
  const host::Environment after = OpenVersion(operands[1], "NEW", options.path);
  if (options.names) RefuseSavedPrograms(before, after);
  const auto problems =
      WithProgress(options.path.quiet, [&] { return FindProblems(before, after); });
  const bool failed = ReportProblems(problems, options.path);
  const bool differ = WriteDifferences(output, options, before, after);
  if (failed) return Outcome::Failed;
  return differ ? Outcome::Findings : Outcome::Clean;
}

}  // namespace Corvane::PathManagement::tool
