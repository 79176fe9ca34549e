#include "command_line.h"
#include "commands.h"
#include "package_output.h"
#include "progress.h"
#include "search_path.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/utilities/iri_conversion.h"
#include "searchpath/utilities/packages_on_path.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>
#include <set>

namespace Corvane::PathManagement::tool {

namespace {

constexpr CommandText kPackagesText = {
    "packages", "", "Prints the packages below a folder, and the folders of each package.",
    "  searchpath packages --root /opt/packages\n"
    "  searchpath packages --root /opt/packages --path lib   # are they on it?\n"
    "  searchpath find plot.zt --path src --packages /opt/packages\n",
    "The packages:\n"
    "  A package is a folder directly below DIR that holds a file searchpath.json:\n"
    "    {\"name\": \"geometry\", \"version\": \"1.2\", \"folders\": [\"lib\"]}\n"
    "  Each of its folders is a pathname below the package, an IRI, or an object\n"
    "    {\"folder\": \"lib\", \"tags\": [0]}\n"
    "  Folders with tag 0 are for the path, and folders without tags are, too. A\n"
    "  package that cannot be used is reported on standard error; the others are\n"
    "  printed. With --path, each folder for the path is marked as on that path or\n"
    "  not.\n"
    "\n"
    "Exit: 0 there are packages, 1 there are none, 2 wrong usage or failure.\n"
    "\n"};

// A folder of a package.
struct FolderLine {
  AbsoluteIRI location;
  std::set<int> tags;            // as in searchpath.json
  bool isForPath;                // whether the package puts it on the path
  std::optional<bool> isOnPath;  // `nullopt` when no path was given
};

// A package and its folders.
struct PackageLines {
  ComponentIdentifier identifier;
  std::shared_ptr<const Corvane::PackageRegistry::IPackage> package;
  std::vector<FolderLine> folders;
  std::string problem;  // why its folders cannot be put on the path; usually empty
};

// `environment` has the path of --path, if one was given.
PackageLines GetLines(const host::PackageRegistry& registry, const ComponentIdentifier& identifier,
                      const std::optional<host::Environment>& environment) {
  PackageLines lines{identifier, registry.GetPackage(identifier), /*folders=*/{}, /*problem=*/{}};
  std::set<CanonicalAbsoluteIRI> forPath;
  try {
    const auto folders = GetPathFoldersForPackages(registry, {&identifier, /*count=*/1});
    forPath = {folders.begin(), folders.end()};
  } catch (const foundation::storage::vfs::Exception& error) {
    lines.problem = GetText(identifier) + " contributes nothing to the path: " + error.what();
  }
  // Adds a line; returns whether its folder is for the path.
  const auto add = [&](const AbsoluteIRI& folder, const std::set<int>& tags) {
    const auto identity = host::FolderEntry::Create(folder)->GetCanonicalAbsoluteIRI();
    const bool isForPath = forPath.contains(identity);
    std::optional<bool> isOnPath;
    if (environment) {
      isOnPath = environment->GetPath()->GetPathEntryFromAbsoluteIRI(identity) != nullptr;
    }
    lines.folders.push_back({folder, tags, isForPath, isOnPath});
    return isForPath;
  };
  std::size_t countForPath = 0;
  for (const auto& each : lines.package->GetFolders()) countForPath += add(each.folder, *each.tags);
  // What a package puts on the path may be its root folder, which need not be among its folders.
  if (countForPath == 0 && !forPath.empty()) add(lines.package->GetMetadata().rootFolder, {});
  return lines;
}

void WriteWords(const Output& output, const PackageLines& lines) {
  const bool contributes = std::any_of(lines.folders.begin(), lines.folders.end(),
                                       [](const FolderLine& line) { return line.isForPath; });
  output.WriteLine(
      output.GetShown(GetText(lines.identifier)) +
      (contributes ? ": contributes to the path" : ": contributes nothing to the path"));
  for (const FolderLine& line : lines.folders) {
    std::string remark;
    if (line.isForPath && line.isOnPath) {
      remark = *line.isOnPath ? "  (on the path)" : "  (not on the path)";
    }
    output.WriteLine((line.isForPath ? "  for the path  " : "  other         ") +
                     output.GetShown(GetStringFromIRI(line.location)) + remark);
  }
}

void WriteObject(const Output& output, const PackageLines& lines) {
  nlohmann::ordered_json object;
  AddText(object, "name", lines.identifier.name);
  AddText(object, "version", lines.identifier.version);
  const auto& metadata = lines.package->GetMetadata();
  AddText(object, "path", GetStringFromIRI(metadata.rootFolder));
  object["contributesToPath"] = metadata.contributesToPath;
  object["checksManualInstall"] = metadata.checksManualInstall;
  object["folders"] = nlohmann::ordered_json::array();
  for (const FolderLine& line : lines.folders) {
    nlohmann::ordered_json& folder = object["folders"].emplace_back();
    AddText(folder, "path", GetStringFromIRI(line.location));
    folder["tags"] = line.tags;
    folder["forPath"] = line.isForPath;
    folder["onPath"] = nullptr;
    if (line.isOnPath) folder["onPath"] = *line.isOnPath;
  }
  output.WriteObject(object);
}

}  // namespace

Outcome RunPackages(const Arguments& arguments) {
  CommandLine commandLine(kPackagesText);
  std::optional<std::string> root;
  PathOptions path;
  commandLine.AddValue("--root", "DIR", root, "the folder that holds the packages");
  path.AddFoldersTo(commandLine);
  commandLine.AddFlag("-q,--quiet", path.quiet, "do not report what cannot be used");
  commandLine.AddFlag("--strict", path.strict, "exit with 2 when something cannot be used");
  OutputOptions outputOptions;
  outputOptions.AddTo(commandLine);
  outputOptions.AddExitCodeTo(commandLine);
  if (!commandLine.Parse(arguments)) return Outcome::Done;
  if (!root) {
    throw UsageError("packages needs --root; type: " + commandLine.GetLineWith("--root DIR"));
  }
  const Output output(outputOptions);
  const host::PackageRegistry registry(TextFromBytes(*root));
  CheckRoot("--root", *root, registry);
  std::optional<host::Environment> environment;
  bool failed = path.strict && registry.GetProblemCount() > 0;
  if (path.HasPath()) {
    environment.emplace(OpenPath(path, commandLine));
    failed = ReportProblems(*environment, path) || failed;
  }
  if (!path.quiet) ReportPackageProblems(registry);
  for (const ComponentIdentifier& identifier : registry.GetIdentifiers()) {
    const PackageLines lines =
        WithProgress(path.quiet, [&] { return GetLines(registry, identifier, environment); });
    failed = failed || (path.strict && !lines.problem.empty());
    if (!path.quiet && !lines.problem.empty()) Report(lines.problem);
    if (output.IsJson()) {
      WriteObject(output, lines);
    } else {
      WriteWords(output, lines);
    }
  }
  if (failed) return Outcome::Failed;
  if (!registry.GetIdentifiers().empty()) return Outcome::Found;
  Report("no package in " + Quoted(*root) + "; see searchpath packages --help");
  return Outcome::NotFound;
}

}  // namespace Corvane::PathManagement::tool
