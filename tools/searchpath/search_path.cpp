#include "search_path.h"

#include "command_line.h"
#include "output.h"
#include "path_folder.h"
#include "progress.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/utilities/path_strings.h"

#include <cerrno>
#include <fstream>
#include <iostream>
#include <system_error>

namespace Corvane::PathManagement::tool {

namespace {

constexpr const char* kNotes =
    "The path:\n"
    "  --path takes folders as in $PATH. Given several times, its parts follow one\n"
    "  another. A path string is cut at every \":\" and \";\": write IRIs, and folders\n"
    "  with such a character, into a FILE, one a line, and give --path @FILE, or\n"
    "  --path - for standard input. An empty part is dropped; it is not the working\n"
    "  folder, as it would be in $PATH: write \".\". A folder whose name begins with\n"
    "  \"@\" or is \"-\" is written \"./@name\" or \"./-\". A folder that cannot be searched\n"
    "  is told on standard error; the others are searched.\n"
    "  \"+\", \"@\", private and resources folders belong to the folder that they stand\n"
    "  in: --recursive passes them by.\n";

// `what` is read, and how else it could be written.
std::vector<ustring> ReadList(std::istream& list, const std::string& what) {
  std::vector<ustring> folders;
  const bool isOpen = !list.fail() || list.eof();
  if (isOpen) folders = host::ReadFolderList(list);
  if (isOpen && !list.bad()) return folders;
  throw UsageError("cannot read " + what + ": " + std::generic_category().message(errno));
}

std::vector<ustring> ReadPart(const std::string& part) {
  if (part == "-") return ReadList(std::cin, "standard input, the list of --path -");
  if (!part.starts_with('@')) return SplitZentraPath(TextFromBytes(part));
  std::ifstream file(part.substr(1));
  return ReadList(file, Quoted(part.substr(1)) + ", the list of --path " + part +
                            " (for a folder of that name write ./" + part + ')');
}

}  // namespace

void PathOptions::AddTo(CommandLine& commandLine) {
  commandLine.AddValues("--path", "FOLDERS", parts,
                        "A:B:..., @FILE with a folder a line, - for stdin");
  commandLine.AddFlag("--recursive", recursive, "each folder with all ordinary folders below it");
  commandLine.AddFlag("--quiet", quiet, "no word on folders that cannot be searched");
  commandLine.AddFlag("--strict", strict, "exit with 2 when there are such folders");
  commandLine.AddNotes(kNotes);
}

host::Environment OpenPath(const PathOptions& options, const CommandLine& commandLine) {
  if (options.parts.empty()) {
    throw UsageError("no path to search; type: " + commandLine.GetLineWith("--path \"$PATH\""));
  }
  std::vector<ustring> folders;
  for (const std::string& part : options.parts) {
    std::vector<ustring> more = ReadPart(part);
    folders.insert(folders.end(), more.begin(), more.end());
  }
  if (folders.empty()) {
    throw UsageError("--path names no folder; write . for the working folder: --path .");
  }
  const Progress progress(options.quiet);
  return host::Environment(
      folders, options.recursive ? host::FolderExpansion::Recursive : host::FolderExpansion::Alone);
}

bool TellProblems(const host::Environment& environment, const PathOptions& options) {
  // Looking for problems opens every folder, which a first hit alone would not.
  if (options.quiet && !options.strict) return false;
  const auto problems = [&] {
    const Progress progress(options.quiet);
    return environment.FindProblems();
  }();
  for (const host::FolderProblem& problem : problems) {
    if (options.quiet) break;
    Tell("cannot search " + Quoted(GetBytes(problem.folder)) + ": " + problem.GetText());
  }
  return options.strict && !problems.empty();
}

void ReadFolders(const host::Environment& environment, const PathOptions& options) {
  const Progress progress(options.quiet);
  environment.GetPath()->ForEachEntry(GetScopeOfAll(), [](const auto& folder) {
    [[maybe_unused]] const auto items = folder->GetItems();
    return false;
  });
}

void RefuseFrom(const std::string& folder,
                const current_working_folder::FailedToAbsolutizeException& error) {
  throw UsageError("--from " + Quoted(folder) + ": " + error.what() +
                   "; name a folder that exists");
}

}  // namespace Corvane::PathManagement::tool
