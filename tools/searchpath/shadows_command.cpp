#include "command_line.h"
#include "commands.h"
#include "hint.h"
#include "matching.h"
#include "path_folder.h"
#include "phrases.h"
#include "progress.h"
#include "search_path.h"
#include "searchpath/model/byte_text.h"
#include "words.h"

#include <nlohmann/json.hpp>

#include <set>

namespace Corvane::PathManagement::tool {

namespace {

constexpr CommandText kText = {
    "shadows", "[NAME...]", "Prints the names that hide files: the file meant, then the hidden.",
    "  searchpath shadows --path \"$PATH\"\n"
    "  searchpath shadows --path \"$PATH\" --summary  folder by folder, in numbers\n"
    "  searchpath shadows plot.m --path mine:lib    of this name alone\n"
    "  searchpath shadows --path mine:lib --ext m --allow overrides.txt\n",
    "What is printed:\n"
    "  Every plain name, or each NAME, for which find --all prints several files, and\n"
    "  those files. Each hidden one is\n"
    "    different   it has other bytes than the file meant\n"
    "    identical   it has the same bytes\n"
    "    same file   it is that very file, through a link\n"
    "    other case  it has another name; only with --policy ignore-case\n"
    "    unreadable  one of the two cannot be read; why is told on standard error\n"
    "  With --ext, names are written without extension, as find takes them: \"fn\" for\n"
    "  fn.m and fn.c. Without it, fn.m and fn.c do not hide each other.\n"
    "  --allow FILE holds names that may hide files, one a line, as they are printed.\n"
    "  One that hides nothing any more is told on standard error, and so is a NAME\n"
    "  that no file has.\n\n"
    "Exit: 0 no name hides a file, 1 some does, 2 wrong usage or failure.\n\n"};

struct ShadowsOptions {
  PathOptions path;
  MatchingOptions matching;
  OutputOptions output;
  bool summary = false;
  std::optional<std::string> allow;

  void AddTo(CommandLine& commandLine) {
    path.AddTo(commandLine);
    commandLine.AddFlag("--summary", summary, "how many files each folder hides in which other");
    commandLine.AddValue("--allow", "FILE", allow, "names that may hide files, one a line");
    matching.AddTo(commandLine, "files with this extension; may be repeated");
    output.AddTo(commandLine, false);
  }

  [[nodiscard]] host::ShadowLookup GetLookup(const std::vector<std::string>& names) const {
    host::ShadowLookup lookup;
    lookup.names = GetTexts(names);
    lookup.extensions = matching.GetExtensions();
    lookup.policy = matching.GetPolicy();
    if (allow) lookup.allowed = ReadListFile(*allow, "the names of --allow");
    return lookup;
  }
};

std::string GetCounts(const host::ShadowCounts& counts) {
  std::vector<std::string> list;
  for (const host::ShadowKind kind : host::kShadowKinds) {
    const std::size_t count = counts.Of(kind);
    if (count > 0) list.push_back(std::to_string(count) + ' ' + host::GetText(kind));
  }
  return Join(list, ", ");
}

void AddCounts(nlohmann::ordered_json& object, const host::ShadowCounts& counts) {
  object["files"] = counts.GetTotal();
  for (const host::ShadowKind kind : host::kShadowKinds) {
    object[GetWord(kind)] = counts.Of(kind);
  }
}

void WriteSummaryObjects(const Output& output, std::size_t names,
                         const host::ShadowSummary& summary) {
  nlohmann::ordered_json total = {{"names", names}};
  AddCounts(total, summary.counts);
  output.WriteObject(total);
  for (const host::FolderShadows& folders : summary.folders) {
    nlohmann::ordered_json object;
    AddText(object, "winner", GetNativePath(*folders.winner));
    AddText(object, "hidden", GetNativePath(*folders.hidden));
    AddCounts(object, folders.counts);
    output.WriteObject(object);
  }
}

void WriteSummaryWords(const Output& output, std::size_t names,
                       const host::ShadowSummary& summary) {
  const std::size_t files = summary.counts.GetTotal();
  WriteData(GetCounted(names, "name") + (names == 1 ? " hides " : " hide ") +
            GetCounted(files, "file") + (files == 0 ? "" : ": " + GetCounts(summary.counts)) +
            '\n');
  for (const host::FolderShadows& folders : summary.folders) {
    WriteData("  " + output.GetShown(GetNativePath(*folders.winner)) + " hides " +
              GetCounted(folders.counts.GetTotal(), "file") + " of " +
              output.GetShown(GetNativePath(*folders.hidden)) + ": " + GetCounts(folders.counts) +
              '\n');
  }
}

void WriteSummary(const Output& output, const std::vector<host::Shadow>& shadows) {
  const host::ShadowSummary summary = host::GetSummary(shadows);
  if (output.IsJson()) {
    WriteSummaryObjects(output, shadows.size(), summary);
  } else {
    WriteSummaryWords(output, shadows.size(), summary);
  }
}

void WriteShadow(const Output& output, const host::Shadow& shadow) {
  if (output.IsJson()) {
    nlohmann::ordered_json object;
    AddText(object, "name", shadow.name);
    AddText(object, "path", host::GetNativePath(shadow.winner));
    object["hidden"] = nlohmann::ordered_json::array();
    for (const host::HiddenFile& hidden : shadow.hidden) {
      nlohmann::ordered_json& file = object["hidden"].emplace_back();
      AddText(file, "path", host::GetNativePath(hidden.file));
      file["kind"] = GetWord(hidden.kind);
    }
    output.WriteObject(object);
    return;
  }
  constexpr std::size_t kKindWidth = 10;  // of "unreadable"
  WriteData(output.GetShown(Quoted(shadow.name)) + " means " +
            output.GetShown(host::GetNativePath(shadow.winner)) + " and hides\n");
  for (const host::HiddenFile& hidden : shadow.hidden) {
    WriteData("  " + GetPadded(host::GetText(hidden.kind), kKindWidth) + "  " +
              output.GetShown(host::GetNativePath(hidden.file)) + '\n');
  }
}

// Tells each file once that could not be read.
void ReportUnread(const std::vector<host::Shadow>& shadows) {
  std::set<std::string> told;
  for (const host::Shadow& shadow : shadows) {
    for (const host::HiddenFile& hidden : shadow.hidden) {
      if (!hidden.problem) continue;
      const std::string file = GetBytes(host::GetNativePath(hidden.problem->file));
      if (!told.insert(file).second) continue;
      Report("cannot read " + Quoted(file) + ": " + hidden.problem->reason.message());
    }
  }
}

}  // namespace

Outcome RunShadows(const std::vector<std::string>& arguments) {
  CommandLine commandLine(kText);
  ShadowsOptions options;
  options.AddTo(commandLine);
  if (!commandLine.Parse(arguments)) return Outcome::Clean;
  const Output output(options.output);
  const host::ShadowLookup lookup = options.GetLookup(commandLine.GetOperands());
  const host::Environment environment = OpenPath(options.path, commandLine);
  const host::ShadowReport report =
      WithProgress(options.path.quiet, [&] { return environment.FindShadows(lookup); });
  const bool failed = ReportProblems(environment, options.path);
  for (const ustring& name : report.unknown) {
    const std::string hint = GetHint(environment, {.name = name, .extensions = lookup.extensions});
    Report("no file called " + Quoted(name) + " on the path" + hint);
  }
  for (const ustring& name : report.idleAllowances) {
    Report("--allow " + Quoted(name) + ": that name hides nothing (any more)");
  }
  if (!options.path.quiet) ReportUnread(report.shadows);
  if (options.summary) {
    WriteSummary(output, report.shadows);
  } else {
    for (const host::Shadow& shadow : report.shadows) WriteShadow(output, shadow);
  }
  if (failed) return Outcome::Failed;
  return report.shadows.empty() ? Outcome::Clean : Outcome::Findings;
}

}  // namespace Corvane::PathManagement::tool
