#include "command_line.h"
#include "commands.h"
#include "search_path.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/model/path_entry.h"
#include "searchpath/utilities/iri_conversion.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace Corvane::PathManagement::tool {

namespace {

constexpr CommandText kText = {
    "find", "NAME...", "Prints the path of the file that each NAME means.",
    "  searchpath find ls --path \"$PATH\"            what ls means\n"
    "  searchpath find --all ls --path \"$PATH\"      and what it hides\n"
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
    "Exit: 0 every NAME was found, 1 some NAME was not, 2 wrong usage or failure.\n\n"};

struct FindOptions {
  PathOptions path;
  OutputOptions output;
  bool all = false;
  std::optional<std::string> from;
  std::optional<std::string> policy;
  std::vector<std::string> extensions;

  void AddTo(CommandLine& commandLine) {
    path.AddTo(commandLine);
    commandLine.AddFlag("--all", all, "every file that NAME could mean, the one it means first");
    commandLine.AddValue("--from", "FOLDER", from,
                         "what NAME means to code in FOLDER: private first");
    commandLine.AddValues("--ext", "EXT", extensions, "an extension to try; may be repeated");
    commandLine.AddValue("--policy", "POLICY", policy,
                         "case-sensitive, ignore-case or file-system");
    output.AddTo(commandLine, true);
  }
};

std::string GetExtension(const std::string& typed) {
  if (typed.empty()) throw UsageError("--ext is empty; leave it out to search names as they stand");
  return typed.starts_with('.') ? typed : '.' + typed;
}

// What all names have in common.
host::Lookup GetLookup(const FindOptions& options) {
  host::Lookup lookup;
  for (const std::string& extension : options.extensions) {
    lookup.extensions.push_back(TextFromBytes(GetExtension(extension)));
  }
  if (options.from) lookup.fromFolder = TextFromBytes(*options.from);
  lookup.policy = ChooseValue<FilenameMatchingPolicy>(
      "--policy", options.policy.value_or("file-system"),
      {{"case-sensitive", FilenameMatchingPolicy::CaseSensitive},
       {"ignore-case", FilenameMatchingPolicy::IgnoreCase},
       {"file-system", FilenameMatchingPolicy::FileSystemDefault}});
  return lookup;
}

void WriteFound(const Output& output, const std::string& name, const FoundItem& found) {
  const ustring path = host::GetNativePath(found);
  if (!output.IsJson()) {
    output.WritePath(GetBytes(path));
    return;
  }
  const IPathEntry& folder = *found.GetPathEntry();
  nlohmann::ordered_json object = {{"name", name}};
  AddPath(object, path);
  object["folder"] = GetBytes(GetStringFromIRI(folder.GetAbsoluteIRI()));
  object["kind"] = GetKindText(folder.GetPathEntryType());
  output.WriteObject(object);
}

void TellNotFound(const host::Environment& environment, const std::string& name,
                  host::Lookup lookup) {
  std::string message = "no file called " + Quoted(name) + " on the path";
  if (lookup.policy != FilenameMatchingPolicy::IgnoreCase) {
    lookup.policy = FilenameMatchingPolicy::IgnoreCase;
    if (const auto similar = environment.Find(lookup)) {
      message += "; --policy ignore-case finds " + Quoted(GetBytes(host::GetNativePath(*similar)));
    }
  }
  Tell(message);
}

bool FindName(const host::Environment& environment, const std::string& name, host::Lookup lookup,
              bool all, const Output& output) {
  lookup.name = TextFromBytes(name);
  std::vector<FoundItem> found;
  if (all) {
    found = environment.FindAll(lookup);
  } else if (const auto first = environment.Find(lookup)) {
    found.push_back(*first);
  }
  for (const FoundItem& item : found) WriteFound(output, name, item);
  if (found.empty()) TellNotFound(environment, name, lookup);
  return !found.empty();
}

bool FindNames(const host::Environment& environment, const std::vector<std::string>& names,
               const host::Lookup& lookup, bool all, const Output& output) {
  bool foundAll = true;
  for (const std::string& name : names) {
    foundAll = FindName(environment, name, lookup, all, output) && foundAll;
  }
  return foundAll;
}

}  // namespace

Outcome RunFind(const std::vector<std::string>& arguments) {
  CommandLine commandLine(kText);
  FindOptions options;
  options.AddTo(commandLine);
  if (!commandLine.Parse(arguments)) return Outcome::Found;
  const std::vector<std::string>& names = commandLine.GetOperands();
  if (std::find(names.begin(), names.end(), "") != names.end()) {
    throw UsageError("an empty NAME means no file; type: searchpath find NAME");
  }
  const Output output(options.output);
  const host::Lookup lookup = GetLookup(options);
  const host::Environment environment = OpenPath(options.path, commandLine);
  const bool failed = TellProblems(environment, options.path);
  try {
    const bool foundAll = FindNames(environment, names, lookup, options.all, output);
    if (failed) return Outcome::Failed;
    return foundAll ? Outcome::Found : Outcome::NotFound;
  } catch (const current_working_folder::FailedToAbsolutizeException& error) {
    throw UsageError("--from " + Quoted(*options.from) + ": " + error.what() +
                     "; name a folder that exists");
  }
}

}  // namespace Corvane::PathManagement::tool
