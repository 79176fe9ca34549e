#include "command_line.h"
#include "commands.h"
#include "host/origin_json.h"
#include "origin_output.h"
#include "path_folder.h"
#include "phrases.h"
#include "saved_path.h"
#include "search_path.h"
#include "searchpath/model/path_entry.h"
#include "searchpath/model/search_scope.h"
#include "until_exit.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Corvane::PathManagement::tool {

namespace {

constexpr CommandText kListText = {
    "list", "", "Prints the folders of the path in the order of the search.",
    "  searchpath list --path \"$PATH\"\n"
    "  searchpath list --path lib --recursive --long\n"
    "  searchpath list --path lib --recursive --json\n"
    "  searchpath list --path lib --recursive --save today\n"
    "  searchpath list --path @today                 the same folders again\n",
    "What is printed:\n"
    "  --long and --json add to each folder the number of its files, its kind, and\n"
    "  what keeps it from being searched (in JSON, \"problem\" is null when nothing\n"
    "  does). They also say who put the folder on the path; --long does so unless the\n"
    "  folder itself was named on the command line.\n"
    "  --save writes a cache of the path to FILE and prints nothing; see searchpath\n"
    "  cache write --help.\n"
    "\n"
    "Exit: 0 the folders are printed or saved, 2 wrong usage or failure.\n"
    "\n"};

constexpr std::size_t kNumberWidth = 7;  // longer numbers shift their line to the right
constexpr std::size_t kCountWidth = kNumberWidth + std::string_view(" files").size();
constexpr std::size_t kKindWidth = 9;  // of "resources"

void WriteLong(const Output& output, const PathOptions& path, const host::Environment& environment,
               const IPathEntry& folder) {
  const std::string count = GetCounted(GetItemCount(folder), "file");
  const std::size_t digits = count.find(' ');
  const std::string blanks(kNumberWidth - std::min(kNumberWidth, digits), ' ');  // right-aligned
  const char* problem = host::FindProblemText(folder);
  const std::string origin =
      GetOriginText(output, path, environment, environment.FindOrigin(folder), folder);
  output.WriteLine(GetPadded(blanks + count, kCountWidth) + "  " +
                   GetPadded(host::GetWord(folder.GetPathEntryType()), kKindWidth) + "  " +
                   output.GetShown(GetNativePath(folder)) +
                   (problem == nullptr ? "" : std::string("  (") + problem + ')') +
                   (origin.empty() ? "" : "  (" + origin + ')'));
}

void WriteObject(const Output& output, const host::Environment& environment,
                 const IPathEntry& folder) {
  nlohmann::ordered_json object;
  AddText(object, "path", GetNativePath(folder));
  object["kind"] = host::GetWord(folder.GetPathEntryType());
  object["items"] = GetItemCount(folder);
  object["problem"] = nullptr;
  if (const char* problem = host::FindProblemText(folder)) object["problem"] = problem;
  host::AddOrigin(object, environment.FindOrigin(folder));
  output.WriteObject(object);
}

void WriteFolder(const Output& output, const PathOptions& path,
                 const host::Environment& environment, const IPathEntry& folder, bool isLong) {
  if (output.IsJson()) {
    WriteObject(output, environment, folder);
  } else if (isLong) {
    WriteLong(output, path, environment, folder);
  } else {
    output.WritePath(GetNativePath(folder));
  }
}

}  // namespace

Outcome RunList(const Arguments& arguments) {
  CommandLine commandLine(kListText);
  PathOptions path;
  path.AddTo(commandLine);
  OutputOptions outputOptions;
  bool isLong = false;
  commandLine.AddFlag("--long", isLong, "add the number of files, the kind and what is wrong");
  std::optional<std::string> saveTo;
  commandLine.AddValue("--save", "FILE", saveTo,
                       "write a cache of the path to FILE, for --path @FILE");
  outputOptions.AddTo(commandLine);
  if (!commandLine.Parse(arguments)) return Outcome::Done;
  const Output output(outputOptions);
  path.foldersOnly = !isLong && !output.IsJson() && !saveTo;
  const host::Environment& environment = KeepUntilExit(OpenPath(path, commandLine));
  if (saveTo) return SavePath(environment, path, *saveTo);
  ReadFolders(environment, path);
  const bool failed = ReportProblems(environment, path);
  environment.GetPath()->ForEachEntry(kAllKindsAndResourcesScope,
                                      [&](const std::shared_ptr<const IPathEntry>& folder) {
                                        WriteFolder(output, path, environment, *folder, isLong);
                                        return false;  // do not stop
                                      });
  return failed ? Outcome::Failed : Outcome::Done;
}

}  // namespace Corvane::PathManagement::tool
