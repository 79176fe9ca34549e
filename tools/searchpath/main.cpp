#include "command_line.h"
#include "commands.h"
#include "output.h"
#include "searchpath/host/diagnostic_log.h"
#include "searchpath/model/byte_text.h"
#include "suggestion.h"

#include <csignal>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <optional>
#include <string_view>

namespace Corvane::PathManagement::tool {

namespace {

struct Command {
  const char* name;
  Outcome (*run)(const std::vector<std::string>& arguments);
};

constexpr Command kCommands[] = {{"find", RunFind},
                                 {"which", RunWhich},
                                 {"files", RunFiles},
                                 {"list", RunList},
                                 {"folders", RunFolders},
                                 {"shadows", RunShadows},
                                 {"doctor", RunDoctor},
                                 {"trust", RunTrust},
                                 {"diff", RunDiff},
                                 {"watch", RunWatch},
                                 {"add", RunAdd},
                                 {"remove", RunRemove},
                                 {"packages", RunPackages},
                                 {"profiles", RunProfiles},
                                 {"cache", RunCache},
                                 {"verify", RunVerify},
                                 {"iri", RunIri}};

constexpr const char* kExamples =
    "  searchpath which ls                          which program does ls start?\n"
    "  searchpath find ls --path \"$PATH\"            which file does ls mean?\n"
    "  searchpath find --all ls --path \"$PATH\"      which files does it hide?\n"
    "  searchpath find --explain ls --path \"$PATH\"  why that file?\n"
    "  searchpath list --path lib --recursive       which folders are searched?\n"
    "  searchpath shadows --path lib:src            which files hide others?\n"
    "  searchpath doctor --path \"$PATH\"             what is wrong with the path?\n"
    "  searchpath diff \"$OLD\" \"$PATH\"               how do two paths differ?\n"
    "  searchpath add ~/bin /usr/bin                store a path, to leave out --path\n"
    "  searchpath iri '/usr/my lib'                 what is its IRI?\n";

constexpr const char* kHelp =
    "Usage: searchpath COMMAND [OPTION]... [ARGUMENT]...\n"
    "Says which file a name means on a search path, and why.\n"
    "\n"
    "Commands:\n"
    "  find NAME...       the file that each NAME means\n"
    "  which NAME...      the program that a shell would start for each NAME\n"
    "  files              the files on the path, all or by extension\n"
    "  list               the folders of the path, in the order of the search\n"
    "  folders NAME...    the folders of the path that each NAME denotes\n"
    "  shadows [NAME...]  the names that hide files, and how these files differ\n"
    "  doctor             what is wrong with the path, and what helps\n"
    "  trust              who else could make a name mean another file\n"
    "  diff OLD NEW       how two paths differ: in folders, or in what names mean\n"
    "  watch              what changes on the path, while it changes\n"
    "  add FOLDER...      puts folders on the stored path, which needs no --path\n"
    "  remove FOLDER...   takes folders off the stored path\n"
    "  packages           the packages below a folder, and their folders\n"
    "  profiles           names for a path, its rules and its extensions\n"
    "  cache              saves what the folders hold, and checks what has changed\n"
    "  verify FILE        which answers in a receipt of find have changed\n"
    "  iri TEXT...        the IRI, canonical IRI and native path of a text\n"
    "\n"
    "searchpath COMMAND -h shows its options; --help adds examples and rules.\n"
    "searchpath --version shows the version.\n";

[[noreturn]] void RefuseWord(const std::string& word) {
  if (word.starts_with('-')) {
    throw UsageError("the command comes first; type: searchpath find NAME --path FOLDERS");
  }
  std::vector<std::string> names;
  for (const Command& command : kCommands) names.emplace_back(command.name);
  const std::string nearest = FindNearest(word, names);
  throw UsageError("there is no command " + Quoted(word) + "; " +
                   (nearest.empty() ? "see searchpath -h" : "did you mean " + nearest + "?"));
}

Outcome Run(const std::vector<std::string>& arguments) {
  if (arguments.empty()) {
    throw UsageError("no command; type: searchpath find NAME --path FOLDERS, or searchpath -h");
  }
  const std::string& word = arguments.front();
  for (const Command& command : kCommands) {
    if (word == command.name) return command.run({arguments.begin() + 1, arguments.end()});
  }
  if (AnswerHelp(word, kHelp, kExamples)) return Outcome::Found;
  RefuseWord(word);
}

// In the environment, since every command would need an option for it.
void StartLogIfAsked() {
  const char* const log = std::getenv("SEARCHPATH_LOG");
  if (log == nullptr || *log == '\0') return;
  const bool isFile = std::string_view(log) != "-";
  host::StartDiagnosticLog(isFile ? std::optional<fl::filesystem::path>(TextFromBytes(log))
                                  : std::nullopt);
}

}  // namespace

}  // namespace Corvane::PathManagement::tool

int main(int count, char** words) {
  using namespace Corvane::PathManagement::tool;
  // The program ends when its reader is gone, even if it was started with this signal ignored.
  std::signal(SIGPIPE, SIG_DFL);
  std::ios::sync_with_stdio(false);  // otherwise standard input hides its errors
  try {
    StartLogIfAsked();
    const Outcome outcome = Run({words + (count > 0 ? 1 : 0), words + count});
    FinishData();
    return static_cast<int>(outcome);
  } catch (const std::exception& error) {
    Report(error.what());
    return static_cast<int>(Outcome::Failed);
  }
}
