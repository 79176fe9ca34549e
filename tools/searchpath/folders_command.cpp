#include "command_line.h"
#include "commands.h"
#include "matching.h"
#include "path_folder.h"
#include "phrases.h"
#include "progress.h"
#include "search_path.h"
#include "searchpath/host/words.h"
#include "searchpath/model/byte_text.h"
#include "until_exit.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <memory>
#include <string>

namespace Corvane::PathManagement::tool {

namespace {

constexpr CommandText kFoldersText = {
    "folders", "NAME...", "Prints the folders of the path that each NAME denotes.",
    "  searchpath folders util --path src:lib --recursive   all folders called util\n"
    "  searchpath folders lib/+pkg --path lib               by its last folders\n"
    "  searchpath folders ~/src/lib --path @folders         is it on the path?\n",
    "The names:\n"
    "  A NAME that begins with \"/\" or \"~\" denotes that folder, if it is on the path;\n"
    "  links are resolved. Any other NAME is a partial pathname: it denotes each\n"
    "  folder whose location ends in it. It is not looked for in the working folder.\n"
    "  The \"+\" or \"@\" of a folder's name may be left out, and a match may not begin\n"
    "  inside a \"+\" folder.\n"
    "  With --literal, \"+\" must be written, and no match begins below a special\n"
    "  folder: +, @, private or resources.\n"
    "\n"
    "Exit: 0 every NAME denotes a folder, 1 some NAME does not, 2 wrong usage or\n"
    "failure.\n"
    "\n"};

using Folders = std::vector<std::shared_ptr<const IPathEntry>>;

void WriteFolders(const Output& output, const std::string& name, const Folders& folders) {
  for (const auto& folder : folders) {
    if (!output.IsJson()) {
      output.WritePath(GetNativePath(*folder));
      continue;
    }
    nlohmann::ordered_json object;
    AddText(object, "name", TextFromBytes(name));
    AddText(object, "path", GetNativePath(*folder));
    object["kind"] = host::GetWord(folder->GetPathEntryType());
    output.WriteObject(object);
  }
}

// The folders as a list: "A, B or C" if `last` is "or"; "A, B, C or 2 more" for five of them.
std::string GetList(const Folders& folders, const std::string& last) {
  constexpr std::size_t kMost = 3;
  std::vector<std::string> list;
  for (const auto& folder : folders) {
    if (list.size() < kMost) list.push_back(Quoted(GetNativePath(*folder)));
  }
  if (folders.size() > kMost) list.push_back(std::to_string(folders.size() - kMost) + " more");
  return Join(list, ", ", ' ' + last + ' ');
}

// What may help when `lookup` found nothing; may be empty.
std::string GetFolderHint(const host::Environment& environment, host::FolderLookup lookup) {
  if (lookup.isLiteral) {
    lookup.isLiteral = false;
    const Folders notLiteral = environment.FindFolders(lookup);
    if (!notLiteral.empty()) {
      return "; without --literal it denotes " + GetList(notLiteral, "and");
    }
  }
  lookup.policy = FilenameMatchingPolicy::IgnoreCase;
  const Folders inOtherCase = environment.FindFolders(lookup);
  if (!inOtherCase.empty()) {
    return "; did you mean " + GetList(inOtherCase, "or") +
           " (another case: --policy ignore-case finds it)?";
  }
  const Folders similar = environment.FindSimilarFolders(lookup);
  return similar.empty() ? "" : "; did you mean " + GetList(similar, "or") + '?';
}

}  // namespace

Outcome RunFolders(const Arguments& arguments) {
  CommandLine commandLine(kFoldersText);
  PathOptions path;
  path.AddTo(commandLine);
  host::FolderLookup lookup;
  commandLine.AddFlag("--literal", lookup.isLiteral,
                      "\"+\" must be written; no match below special folders");
  std::optional<std::string> policy;
  AddPolicyTo(commandLine, policy);
  OutputOptions outputOptions;
  outputOptions.AddTo(commandLine);
  outputOptions.AddExitCodeTo(commandLine);
  if (!commandLine.Parse(arguments)) return Outcome::Done;
  lookup.policy = GetPolicy(policy);
  const Output output(outputOptions);
  const host::Environment& environment = KeepUntilExit(OpenPath(path, commandLine));
  const bool failed = ReportProblems(environment, path);
  bool foundAll = true;
  for (const std::string& name : commandLine.GetOperands()) {
    lookup.name = TextFromBytes(name);
    const Folders folders =
        WithProgress(path.quiet, [&] { return environment.FindFolders(lookup); });
    WriteFolders(output, name, folders);
    if (!folders.empty()) continue;
    foundAll = false;
    const std::string hint =
        WithProgress(path.quiet, [&] { return GetFolderHint(environment, lookup); });
    Report("no folder of the path is called " + Quoted(name) + hint);
  }
  if (failed) return Outcome::Failed;
  return foundAll ? Outcome::Found : Outcome::NotFound;
}

}  // namespace Corvane::PathManagement::tool
