#include "command_line.h"
#include "commands.h"
#include "compile_commands_audit.h"
#include "hint.h"
#include "matching.h"
#include "progress.h"
#include "sarif_log.h"
#include "search_path.h"
#include "searchpath/host/words.h"
#include "shadow_output.h"
#include "until_exit.h"

#include <set>
#include <utility>

namespace Corvane::PathManagement::tool {

namespace {

constexpr CommandText kShadowsText = {
    "shadows", "[NAME...]",
    "Prints the names that hide files: the file meant, then the files it hides.",
    "  searchpath shadows --path \"$PATH\"\n"
    "  searchpath shadows --path \"$PATH\" --summary   numbers, folder by folder\n"
    "  searchpath shadows plot.zt --path mine:lib    this name only\n"
    "  searchpath shadows --path mine:lib --ext zt --allow overrides.txt\n"
    "  searchpath shadows --compile-commands build/compile_commands.json\n",
    "What is printed:\n"
    "  Each plain name, or each NAME given, for which find --all prints several\n"
    "  files; then these files. A hidden file is one of\n"
    "    different   its bytes differ from those of the file meant\n"
    "    identical   it has the same bytes\n"
    "    same file   it is the very same file, reached through a link\n"
    "    other case  its name differs; only with --policy ignore-case\n"
    "    unreadable  one of the two cannot be read; standard error says why\n"
    "  With --ext, names have no extension, as for find: \"plot\" stands for plot.zt\n"
    "  and plot.c, so these hide each other. Without --ext they do not.\n"
    "  --only different leaves out copies of the same bytes: --only takes a word of\n"
    "  the list above, with \"-\" for the blank. The exit then depends on what is left.\n"
    "  With --as, other than environment, names are relative to the folders of the\n"
    "  path: sys/types.h; whole trees are compared.\n"
    "  --sarif prints one report for code hosts, at each hidden file.\n"
    "  --allow FILE holds names that may hide files, one a line, as they are printed.\n"
    "  A name there that hides nothing is reported on standard error. So is a NAME\n"
    "  that no file has.\n"
    "\n"
    "Headers:\n"
    "  --compile-commands FILE asks the compilers in a compilation database for their\n"
    "  folders, with the flags that they are called with (-I, -iquote, -isystem,\n"
    "  -idirafter, --sysroot, ...). Each list of folders is examined once, as --as\n"
    "  include does; those for headers in quotes come first. What is found begins\n"
    "  with the number of files that are compiled with the list, and the first three\n"
    "  of them; --json has all. NAME and --allow take names as geometry/area.h.\n"
    "\n"
    "Exit: 0 no name hides a file, 1 some name does, 2 wrong usage or failure.\n"
    "\n"};

// The words that --only takes.
WordList<host::ShadowKind> GetKnownKinds() {
  WordList<host::ShadowKind> known;
  for (const host::ShadowKind kind : host::kShadowKinds) known.emplace_back(GetWord(kind), kind);
  return known;
}

struct ShadowsOptions {
  PathOptions path;
  MatchingOptions matching;
  OutputOptions output;
  bool summary = false;
  std::optional<std::string> allow;
  std::vector<std::string> only;
  std::optional<std::string> compileCommands;
  bool sarif = false;

  void AddTo(CommandLine& commandLine) {
    path.AddTo(commandLine);
    commandLine.AddFlag("--summary", summary, "how many files each folder hides in each other one");
    commandLine.AddValue("--allow", "FILE", allow, "names that may hide files, one a line");
    commandLine.AddValues("--only", "KIND", only, "only hidden files of this kind; may be repeated",
                          GetWords(GetKnownKinds()));
    commandLine.AddValue("--compile-commands", "FILE", compileCommands,
                         "examine the header folders of a compilation database");
    commandLine.AddFlag("--sarif", sarif, "one report in SARIF, which code hosts read");
    matching.AddTo(commandLine, "only files with this extension; may be repeated");
    output.AddTo(commandLine);
    output.AddExitCodeTo(commandLine);
  }

  [[nodiscard]] host::ShadowLookup GetLookup(const std::vector<std::string>& names) const {
    host::ShadowLookup lookup;
    for (const std::string& name : names) lookup.names.push_back(path.GetFileName(name));
    lookup.extensions = matching.GetExtensions(path.GetExtensions());
    lookup.policy = matching.GetPolicy();
    if (allow) lookup.allowed = ReadListFile(*allow, "the names of --allow");
    return lookup;
  }
};

// The kinds that `words`, the values of --only, name.
std::set<host::ShadowKind> ParseKinds(const std::vector<std::string>& words) {
  const auto known = GetKnownKinds();
  std::set<host::ShadowKind> kinds;
  for (const std::string& word : words) kinds.insert(ChooseValue("--only", word, known));
  return kinds;
}

// Prints the shadows, names with the files that they hide, on the path of the options.
Outcome WriteShadowsOf(const ShadowsOptions& options, const host::ShadowLookup& lookup,
                       const ShadowFormat& format, const Output& output,
                       const CommandLine& commandLine) {
  const host::Environment& environment = KeepUntilExit(OpenPath(options.path, commandLine));
  host::ShadowReport& report = KeepUntilExit(
      WithProgress(options.path.quiet, [&] { return environment.FindShadows(lookup); }));
  const bool failed = ReportProblems(environment, options.path);
  // Names that were typed in vain are reported even with --quiet, which is about the disk.
  for (const ustring& name : report.unknown) {
    ReportUnknown(name, GetHint(environment, {.name = name, .extensions = lookup.extensions}));
  }
  ReportIdleAllowances(report.idleAllowances);
  if (!options.path.quiet) ReportUnread(report.shadows);
  KeepOnly(format.kinds, report.shadows);  // all, without --only
  WriteShadows(output, report.shadows, format);
  if (failed) return Outcome::Failed;
  return report.shadows.empty() ? Outcome::Clean : Outcome::Findings;
}

}  // namespace

Outcome RunShadows(const Arguments& arguments) {
  CommandLine commandLine(kShadowsText);
  ShadowsOptions options;
  options.AddTo(commandLine);
  if (!commandLine.Parse(arguments)) return Outcome::Clean;
  if (options.sarif && (options.summary || options.output.json)) {
    throw UsageError(
        "--sarif, --summary and --json cannot be given together; a report has all files");
  }
  SarifLog sarif;
  const ShadowFormat format = {.isSummary = options.summary,
                               .kinds = ParseKinds(options.only),
                               .sarif = options.sarif ? &sarif : nullptr};
  const host::ShadowLookup lookup = options.GetLookup(commandLine.GetOperands());
  const Output output(options.output);
  const Outcome outcome =
      options.compileCommands
          ? AuditCompileCommands(*options.compileCommands, options.path, lookup, format, output)
          : WriteShadowsOf(options, lookup, format, output, commandLine);
  if (options.sarif) sarif.Write();
  return outcome;
}

}  // namespace Corvane::PathManagement::tool
