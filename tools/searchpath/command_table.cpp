#include "command_table.h"

#include "commands.h"
#include "other_names.h"

#include <algorithm>
#include <vector>

namespace Corvane::PathManagement::tool {

namespace {

constexpr Command kCommands[] = {
    {"find NAME...", "the file that each NAME means", RunFind},
    {"which NAME...", "the program that a shell would start for each NAME", RunWhich},
    {"files", "the files on the path, all or by extension", RunFiles},
    {"list", "the folders of the path, in the order of the search", RunList},
    {"folders NAME...", "the folders of the path that each NAME denotes", RunFolders},
    {"shadows [NAME...]", "the names that hide files, and how these files differ", RunShadows},
    {"doctor", "what is wrong with the path, and what helps", RunDoctor},
    {"trust", "who else could make a name mean another file", RunTrust},
    {"diff OLD NEW", "how two paths differ: in folders, or in what names mean", RunDiff},
    {"watch", "what changes on the path, while it changes", RunWatch},
    {"add FOLDER...", "puts folders on the stored path, which needs no --path", RunAdd},
    {"remove FOLDER...", "takes folders off the stored path", RunRemove},
    {"packages", "the packages below a folder, and their folders", RunPackages},
    {"profiles", "names for a path, its rules and its extensions", RunProfiles},
    {"cache", "saves what the folders hold, and checks what has changed", RunCache},
    {"verify FILE", "which answers in a receipt of find have changed", RunVerify},
    {"iri TEXT...", "the IRI, canonical IRI and native path of a text", RunIri},
    {"help [COMMAND]", "the help of a command, with examples", RunHelp}};

}  // namespace

std::span<const Command> GetCommands() { return kCommands; }

const Command& GetCommand(const std::string& name) {
  const auto found = std::ranges::find(kCommands, name, &Command::GetName);
  if (found != std::end(kCommands)) return *found;
  std::vector<std::string> names;
  for (const Command& command : kCommands) names.emplace_back(command.GetName());
  const std::string meant = FindCommandMeant(name, names);
  throw UsageError("there is no command " + Quoted(name) + "; " +
                   (meant.empty() ? "see searchpath -h" : "did you mean " + meant + "?"));
}

}  // namespace Corvane::PathManagement::tool
