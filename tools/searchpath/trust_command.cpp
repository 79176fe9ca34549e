#include "command_line.h"
#include "commands.h"
#include "phrases.h"
#include "progress.h"
#include "search_path.h"
#include "searchpath/host/words.h"
#include "searchpath/model/byte_text.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace Corvane::PathManagement::tool {

namespace {

constexpr CommandText kTrustText = {
    "trust", "", "Prints who, beside root and you, could make a name mean another file.",
    "  searchpath trust --path-of PATH\n"
    "  searchpath trust --path \"$PATH\" --as program --user alice\n"
    "  searchpath trust --path lib --names     which names they could take over\n"
    "  searchpath trust --profile c --json\n",
    "What is printed:\n"
    "  One way in a line: the folder in which names are searched, the object at\n"
    "  fault, who can do it and what, and what helps. These words are the \"kind\" in\n"
    "  JSON:\n"
    "  writable         the folder can be written: by a group, by others, or by those\n"
    "                   whom an access-control list names\n"
    "  owner            the folder, or a file that a name means, is somebody else's\n"
    "  parent-writable  a folder above can be written or is somebody else's, so that\n"
    "                   what stands in it can be replaced; in a sticky folder, by the\n"
    "                   owner of what stands in it alone\n"
    "  file-writable    a file that a name means can be written\n"
    "  creatable        a folder, or what a link leads to, is missing and can be made\n"
    "  relative         a part of the path depends on the working folder\n"
    "  empty-part       an empty part is the working folder, as with --as program\n"
    "  A group counts when it has a member who is not trusted. Links are followed\n"
    "  step by step, and all folders on the way are looked at.\n"
    "  Who is trusted: root and --user, a name or a number; otherwise who asks.\n"
    "  --names adds a line for each name that has a file and could mean another one.\n"
    "  Whoever can make names in a folder can also make names that have no file yet.\n"
    "  What is not seen: capabilities, other mount namespaces, and file systems whose\n"
    "  server decides by rules of its own.\n"
    "\n"
    "Exit: 0 nobody can, 1 somebody can, 2 wrong usage or failure.\n"
    "\n"};

std::string GetWho(const host::TrustFinding& finding) {
  std::vector<std::string> who;
  who.reserve(finding.who.size());
  for (const host::Intruder& intruder : finding.who) {
    who.push_back(GetBytes(host::GetText(intruder)));
  }
  return Join(who, ", ", " and ");
}

void WriteLines(const Output& output, const host::TrustFinding& finding) {
  output.WriteLine(output.GetShown(finding.folder) + ": " + output.GetShown(finding.object) + ": " +
                   output.GetShown(GetWho(finding)) + ' ' + host::GetText(finding.kind) + "; " +
                   host::GetAdvice(finding.kind));
  for (const ustring& name : finding.names) output.WriteLine("  " + output.GetShown(name));
}

void WriteObject(const Output& output, const host::TrustFinding& finding, bool withNames) {
  nlohmann::ordered_json object = {{"kind", GetWord(finding.kind)}};
  AddText(object, "folder", finding.folder);
  AddText(object, "object", finding.object);
  AddText(object, "who", TextFromBytes(GetWho(finding)));
  object["users"] = nlohmann::ordered_json::array();
  for (const host::Intruder& intruder : finding.who) {
    for (const std::uint32_t user : intruder.users) object["users"].push_back(user);
  }
  AddText(object, "origin", finding.origin);
  object["why"] = host::GetText(finding.kind);
  object["advice"] = host::GetAdvice(finding.kind);
  if (withNames) object["names"] = nlohmann::ordered_json::array();
  for (const ustring& name : finding.names) AddText(object["names"].emplace_back(), "name", name);
  output.WriteObject(object);
}

host::TrustLookup GetLookup(const std::optional<std::string>& user, bool names) {
  host::TrustLookup lookup{.names = names};
  if (!user) return lookup;
  lookup.user = host::FindUser(TextFromBytes(*user));
  if (!lookup.user) throw UsageError("--user " + Quoted(*user) + ": there is no such user");
  return lookup;
}

}  // namespace

Outcome RunTrust(const Arguments& arguments) {
  CommandLine commandLine(kTrustText);
  PathOptions path;
  path.AddTo(commandLine);
  std::optional<std::string> user;
  bool names = false;
  commandLine.AddValue("--user", "NAME", user, "who is trusted beside root: a name or a number");
  commandLine.AddFlag("--names", names, "which names each way in could take over");
  OutputOptions outputOptions;
  outputOptions.AddTo(commandLine);
  outputOptions.AddExitCodeTo(commandLine);
  if (!commandLine.Parse(arguments)) return Outcome::Clean;
  const Output output(outputOptions);
  const host::TrustLookup lookup = GetLookup(user, names);
  const host::Environment environment = OpenPath(path, commandLine);
  const host::TrustReport report =
      WithProgress(path.quiet, [&] { return environment.ExamineTrust(lookup); });
  if (!path.quiet) ReportIdleExclusions(environment);
  const bool failed = ReportProblems(report.unexamined, path);
  for (const host::TrustFinding& finding : report.findings) {
    if (output.IsJson()) {
      WriteObject(output, finding, names);
    } else {
      WriteLines(output, finding);
    }
  }
  if (failed) return Outcome::Failed;
  return report.findings.empty() ? Outcome::Clean : Outcome::Findings;
}

}  // namespace Corvane::PathManagement::tool
