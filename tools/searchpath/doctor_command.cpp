#include "command_line.h"
#include "commands.h"
#include "package_output.h"
#include "phrases.h"
#include "progress.h"
#include "search_path.h"
#include "searchpath/host/words.h"
#include "until_exit.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>

namespace Corvane::PathManagement::tool {

namespace {

constexpr CommandText kDoctorText = {
    "doctor", "", "Prints what is wrong with the path, one finding a line, and what helps.",
    "  searchpath doctor --path \"$PATH\"\n"
    "  searchpath doctor --path lib --recursive --slow 20\n"
    "  searchpath doctor --path @folders --json\n",
    "What is wrong with a path:\n"
    "  missing         a folder that does not exist, or is a file\n"
    "  unreadable      a folder that cannot be searched, or is a loop of links\n"
    "  empty           a folder that brings no file to the path\n"
    "  repeat          the same folder as an earlier one, perhaps through a link\n"
    "  special         a folder that is also the private, resources, + or @ folder of\n"
    "                  another one: its files are found by their plain names\n"
    "  slow            a folder that takes long to list\n"
    "  case-collision  files whose different names are equal where case is ignored,\n"
    "                  as on other systems or with --policy ignore-case\n"
    "  not-utf-8       files whose names are not UTF-8\n"
    "  With --as, other than environment, also:\n"
    "  unexpanded-home a part that begins with ~, which nobody expands\n"
    "  empty-part      an empty part, which is the working folder\n"
    "  relative-part   a part that depends on the working folder\n"
    "  not-executable  files that look like programs and may not be executed\n"
    "  broken-link     links that lead nowhere\n"
    "  special and case-collision are then not looked for.\n"
    "  These words are the \"finding\" in JSON. A folder that is below another folder\n"
    "  of the path is not reported. For files that hide others, see searchpath\n"
    "  shadows; for who else could change what names mean, see searchpath trust.\n"
    "\n"
    "Exit: 0 nothing is wrong, 1 something is, 2 wrong usage or failure.\n"
    "\n"};

// The first few files, and how many more there are.
std::string GetList(const Output& output, const std::vector<ustring>& files) {
  constexpr std::size_t kMost = 3;
  std::vector<std::string> list;
  for (const ustring& file : files) {
    if (list.size() < kMost) list.push_back(output.GetShown(file));
  }
  const std::size_t more = files.size() - list.size();
  return Join(list, ", ") + (more == 0 ? "" : " and " + std::to_string(more) + " more");
}

std::string GetWords(const Output& output, const host::PathFinding& finding) {
  const auto shown = [&](const ustring& text) { return output.GetShown(text); };
  const std::string folder = shown(finding.folder) + ": ";
  switch (finding.kind) {
    case host::FindingKind::Missing:
    case host::FindingKind::Unreadable:
      return folder + host::FolderProblem{finding.folder, finding.reason.value()}.GetText();
    case host::FindingKind::Repeat:
      return folder + "the same folder as " + shown(finding.other);
    case host::FindingKind::Special:
      return folder + "belongs to " + shown(finding.other) + ", which is on the path";
    case host::FindingKind::Slow:
      return folder + "took " + std::to_string(finding.listingTime.count()) + " ms to list";
    case host::FindingKind::CaseCollision:
    case host::FindingKind::NotUtf8:
    case host::FindingKind::NotExecutable:
    case host::FindingKind::BrokenLink:
      return GetList(output, finding.files) + ": " + host::GetText(finding.kind);
    case host::FindingKind::Empty:
    case host::FindingKind::UnexpandedHome:
    case host::FindingKind::EmptyPart:
    case host::FindingKind::RelativePart:
      break;
  }
  return folder + host::GetText(finding.kind);
}

void WriteObject(const Output& output, const host::PathFinding& finding) {
  nlohmann::ordered_json object = {{"finding", GetWord(finding.kind)}};
  AddText(object, "path", finding.folder);
  AddText(object, "origin", finding.origin);
  if (!finding.other.empty()) AddText(object, "other", finding.other);
  if (finding.kind == host::FindingKind::Slow) {
    object["milliseconds"] = finding.listingTime.count();
  }
  if (finding.reason) {
    object["problem"] = host::FolderProblem{finding.folder, *finding.reason}.GetText();
  }
  for (const ustring& file : finding.files) AddText(object["files"].emplace_back(), "path", file);
  object["advice"] = host::GetAdvice(finding.kind);
  output.WriteObject(object);
}

}  // namespace

Outcome RunDoctor(const Arguments& arguments) {
  CommandLine commandLine(kDoctorText);
  PathOptions path;
  path.AddFoldersTo(commandLine);
  path.AddPackagesTo(commandLine);
  std::optional<std::string> slow;
  commandLine.AddValue("--slow", "MS", slow, "slow is MS milliseconds or more; the default is 100");
  OutputOptions outputOptions;
  outputOptions.AddTo(commandLine);
  outputOptions.AddExitCodeTo(commandLine);
  if (!commandLine.Parse(arguments)) return Outcome::Clean;
  const Output output(outputOptions);
  const host::Examination examination{
      .slow = GetMilliseconds("--slow", slow).value_or(host::Examination().slow)};
  const host::Environment& environment = KeepUntilExit(OpenPath(path, commandLine));
  const std::vector<host::PathFinding> findings =
      WithProgress(/*quiet=*/false, [&] { return environment.Examine(examination); });
  ReportIdleExclusions(environment);
  if (environment.GetPackages() != nullptr) ReportPackageProblems(*environment.GetPackages());
  for (const host::PathFinding& finding : findings) {
    if (output.IsJson()) {
      WriteObject(output, finding);
    } else {
      output.WriteLine(GetWords(output, finding) + "; " + host::GetAdvice(finding.kind));
    }
  }
  return findings.empty() ? Outcome::Clean : Outcome::Findings;
}

}  // namespace Corvane::PathManagement::tool
