#include "command_line.h"
#include "commands.h"
#include "finder.h"
#include "output.h"
#include "path_source.h"

#include <cstdlib>

namespace Corvane::PathManagement::tool {

namespace {

constexpr CommandText kWhichText = {
    "which", "[NAME...]", "Prints the path of the program that a shell would start for each NAME.",
    "  searchpath which ls\n"
    "  searchpath which -a python3           all programs of that name\n"
    "  searchpath which --explain mytool     why that one, or why none\n",
    "The programs:\n"
    "  NAME means the first regular file of that name that this process may execute,\n"
    "  in the folders of $PATH. An empty part of $PATH is the working folder. A NAME\n"
    "  with \"/\" is that file itself. searchpath find --as program --path \"$PATH\"\n"
    "  does the same. Functions of a shell and its built-in commands are not seen.\n"
    "\n"
    "Exit: 0 every NAME was found, 1 some NAME was not, or no NAME was given,\n"
    "2 wrong usage or failure.\n"};

}  // namespace

Outcome RunWhich(const Arguments& arguments) {
  CommandLine commandLine(kWhichText);
  AnswerOptions options;
  PathOptions path;
  OutputOptions outputOptions;
  commandLine.AddFlag("-a,--all", options.all, "all programs of that name, not the first alone");
  commandLine.AddFlag("--explain", options.explain,
                      "why: each folder asked, and the rule that decided");
  outputOptions.AddTo(commandLine);
  outputOptions.AddExitCodeTo(commandLine);
  if (!commandLine.Parse(arguments)) return Outcome::Done;
  if (std::getenv("PATH") == nullptr) {
    throw UsageError("the variable PATH is not set; export it");  // there is no --path here
  }
  path.as = "program";
  path.quiet = true;  // shells skip what they cannot search, too
  const Output output(outputOptions);
  const host::Environment environment =
      OpenSource(ReadPathSource("PATH", /*flags=*/{}, path.GetRules()), "$PATH", path);
  Finder finder(options, path, output, environment, /*commonLookup=*/{});
  for (const std::string& name : commandLine.GetOperands()) finder.Answer(name);
  // Scripts may hand in a list that is empty. Other programs called "which" then find nothing, too.
  const bool foundAll = finder.FoundAll() && !commandLine.GetOperands().empty();
  return foundAll ? Outcome::Found : Outcome::NotFound;
}

}  // namespace Corvane::PathManagement::tool
