#include "compile_commands_audit.h"

#include "command_line.h"
#include "header_lists.h"
#include "phrases.h"
#include "progress.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>

namespace Corvane::PathManagement::tool {

namespace {

void CheckOptions(const PathOptions& path) {
  if (path.HasPath() || path.packages || path.recursive) {
    throw UsageError(
        "--compile-commands names the folders; leave out the options that name others");
  }
  if (path.as.value_or("include") != "include") {
    throw UsageError("--compile-commands and --as " + *path.as +
                     " cannot be given together; "
                     "it is for headers, which are searched as include");
  }
}

// Those of the reported names that every list reports: a name unknown to one list may be known to
// another.
class CommonNames {
 public:
  // Takes the names that the next list reports.
  void Add(const std::vector<ustring>& names) {
    if (isFirst) common = names;
    isFirst = false;
    std::erase_if(common, [&](const ustring& name) {
      return std::find(names.begin(), names.end(), name) == names.end();
    });
  }
  [[nodiscard]] const std::vector<ustring>& Get() const { return common; }

 private:
  bool isFirst = true;
  std::vector<ustring> common;
};

void WriteListObject(const Output& output, const HeaderList& list, std::size_t number) {
  output.WriteObject({{"list", number},
                      {"quoted", list.folders.quoted},
                      {"folders", list.folders.searched},
                      {"files", list.files}});
}

void WriteListWords(const Output& output, const HeaderList& list) {
  constexpr std::size_t kNamed = 3;
  std::vector<std::string> named(
      list.files.begin(),
      list.files.begin() + static_cast<std::ptrdiff_t>(std::min(kNamed, list.files.size())));
  for (std::string& file : named) file = output.GetShown(file);
  if (list.files.size() > kNamed) named.emplace_back("...");
  output.WriteLine("in " + GetCounted(list.files.size(), "file") + ": " + Join(named, ", "));
}

// Searches the lists of folders one by one, and writes what is hidden on each.
class Audit {
 public:
  Audit(PathOptions pathOptions, const host::ShadowLookup& shadowLookup,
        const ShadowFormat& shadowFormat, const Output& whereTo)
      : path(std::move(pathOptions)), lookup(shadowLookup), format(shadowFormat), output(whereTo) {
    path.as = "include";
  }

  // Searches the next list.
  void Add(const HeaderList& list) {
    ++number;
    SourcedPath folders;
    for (const auto* part : {&list.folders.quoted, &list.folders.searched}) {
      const auto texts = GetTexts(*part);
      folders.folders.insert(folders.folders.end(), texts.begin(), texts.end());
    }
    if (output.IsJson()) WriteListObject(output, list, number);
    if (folders.folders.empty()) return;  // as with -nostdinc
    const host::Environment environment = OpenSource(folders, "--compile-commands", path);
    host::ShadowReport report =
        WithProgress(path.quiet, [&] { return environment.FindShadows(lookup); });
    failed = ReportProblems(environment, path) || failed;
    if (!path.quiet) ReportUnread(report.shadows);
    unknown.Add(report.unknown);
    idle.Add(report.idleAllowances);
    KeepOnly(format.kinds, report.shadows);  // all, without --only
    if (report.shadows.empty()) return;
    hasFindings = true;
    if (!output.IsJson() && format.sarif == nullptr) WriteListWords(output, list);
    WriteShadows(output, report.shadows, format,
                 output.IsJson() ? std::optional(number) : std::nullopt);
  }

  // Reports what all lists have in common. Returns the outcome for all of them.
  Outcome Finish() const {
    for (const ustring& name : unknown.Get()) ReportUnknown(name);
    ReportIdleAllowances(idle.Get());
    if (failed) return Outcome::Failed;
    return hasFindings ? Outcome::Findings : Outcome::Clean;
  }

 private:
  PathOptions path;
  const host::ShadowLookup& lookup;
  const ShadowFormat& format;
  const Output& output;
  std::size_t number = 0;  // of the last list; the first is 1
  CommonNames unknown;     // names that no file has
  CommonNames idle;        // names of --allow that hide nothing
  bool failed = false;
  bool hasFindings = false;
};

}  // namespace

Outcome AuditCompileCommands(const std::string& database, PathOptions path,
                             const host::ShadowLookup& lookup, const ShadowFormat& format,
                             const Output& output) {
  CheckOptions(path);
  const HeaderLists found = WithProgress(path.quiet, [&] { return ReadHeaderLists(database); });
  for (const std::string& problem : found.problems) Report(problem);
  if (!found.otherFiles.empty() && !path.quiet) {
    Report("left out " + GetCounted(found.otherFiles.size(), "file") +
           " not in C, C++ or Objective-C: " + Quoted(found.otherFiles.front()) +
           (found.otherFiles.size() > 1 ? ", ..." : ""));
  }
  Audit audit(std::move(path), lookup, format, output);
  for (const HeaderList& list : found.lists) audit.Add(list);
  const Outcome outcome = audit.Finish();
  return found.problems.empty() ? outcome : Outcome::Failed;
}

}  // namespace Corvane::PathManagement::tool
