#include "general_help.h"

#include "command_table.h"
#include "output.h"

#include <algorithm>
#include <cstddef>

namespace Corvane::PathManagement::tool {

const char* const kGeneralExamples =
    "  searchpath which ls                          which program does ls start?\n"
    "  searchpath which -a ls                       which programs does it hide?\n"
    "  searchpath find ls --path \"$PATH\"            which file does ls mean?\n"
    "  searchpath find --explain ls --path \"$PATH\"  why that file?\n"
    "  searchpath list --path lib --recursive       which folders are searched?\n"
    "  searchpath shadows --path lib:src            which files hide others?\n"
    "  searchpath doctor --path \"$PATH\"             what is wrong with the path?\n"
    "  searchpath diff \"$OLD\" \"$PATH\"               how do two paths differ?\n"
    "  searchpath add ~/bin /usr/bin                store a path, to leave out --path\n"
    "  searchpath iri '/usr/my lib'                 what is its IRI?\n";

std::string GetGeneralHelp() {
  std::string help = "Usage: searchpath COMMAND [OPTION]... [ARGUMENT]...\n";
  help += std::string(kGeneralPurpose) + "\n\nCommands:\n";
  std::size_t width = 0;
  for (const Command& command : GetCommands()) width = std::max(width, command.usage.size());
  for (const Command& command : GetCommands()) {
    help += "  " + GetPadded(std::string(command.usage), width) + "  " +
            std::string(command.purpose) + '\n';
  }
  return help +
         "\n"
         "searchpath COMMAND -h shows its options; --help, or searchpath help COMMAND,\n"
         "adds examples and rules. searchpath -V shows the version.\n";
}

}  // namespace Corvane::PathManagement::tool
