#include "command_line.h"
#include "commands.h"
#include "search_path.h"
#include "searchpath/model/path_entry.h"
#include "searchpath/utilities/iri_conversion.h"

#include <nlohmann/json.hpp>

#include <array>
#include <map>

namespace Corvane::PathManagement::tool {

namespace {

constexpr CommandText kText = {
    "list", "", "Prints the folders of the path in the order that they are searched.",
    "  searchpath list --path \"$PATH\"\n"
    "  searchpath list --path lib --recursive --json\n",
    ""};

constexpr std::array<std::uint32_t, 5> kAllKinds = {0, 1, 2, 3, 5};

void WriteFolders(const host::Environment& environment, const Output& output) {
  std::map<ustring, std::string> problems;
  if (output.IsJson()) {
    for (const host::FolderProblem& problem : environment.FindProblems()) {
      problems.emplace(problem.folder, problem.GetText());
    }
  }
  const auto write = [&](const std::shared_ptr<const IPathEntry>& entry) {
    const ustring folder = GetStringFromIRI(entry->GetAbsoluteIRI());
    if (!output.IsJson()) {
      output.WritePath(GetBytes(folder));
      return false;
    }
    nlohmann::ordered_json object;
    AddPath(object, folder);
    object["kind"] = GetKindText(entry->GetPathEntryType());
    const auto problem = problems.find(folder);
    if (problem != problems.end()) object["problem"] = problem->second;
    output.WriteObject(object);
    return false;
  };
  environment.GetPath()->ForEachEntry(SearchScope(kAllKinds.data(), kAllKinds.size()), write);
}

}  // namespace

Outcome RunList(const std::vector<std::string>& arguments) {
  CommandLine commandLine(kText);
  PathOptions path;
  path.AddTo(commandLine);
  OutputOptions outputOptions;
  outputOptions.AddTo(commandLine, true);
  if (!commandLine.Parse(arguments)) return Outcome::Found;
  const Output output(outputOptions);
  const host::Environment environment = OpenPath(path, commandLine);
  const bool failed = TellProblems(environment, path);
  WriteFolders(environment, output);
  return failed ? Outcome::Failed : Outcome::Found;
}

}  // namespace Corvane::PathManagement::tool
