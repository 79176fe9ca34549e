#include "search_path.h"

#include "cache_file.h"
#include "command_line.h"
#include "output.h"
#include "package_output.h"
#include "path_folder.h"
#include "profiles.h"
#include "progress.h"
#include "searchpath/host/folder_path.h"
#include "searchpath/host/stored_path.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/model/search_scope.h"
#include "searchpath/utilities/iri_conversion.h"

#include <cerrno>
#include <fstream>
#include <iostream>
#include <system_error>
#include <utility>

namespace Corvane::PathManagement::tool {

namespace {

constexpr const char* kNotes =
    "The path:\n"
    "  Without --path, the stored path is searched; see searchpath add --help.\n"
    "  --path A:B takes folders as $PATH does. When it is repeated, the folders of\n"
    "  all are searched in that order. Its value is cut at every \":\" and \";\". IRIs,\n"
    "  and folders with such a character, go into a FILE, one a line: --path @FILE,\n"
    "  or --path - for standard input. An empty part is dropped; unlike in $PATH it\n"
    "  is not the working folder, which is \".\". Folders called \"@name\" and \"-\" are\n"
    "  written \"./@name\" and \"./-\".\n"
    "  A folder that cannot be searched is reported on standard error; the others are\n"
    "  searched. A folder that occurs again, perhaps through a link, is searched\n"
    "  once, at its first position.\n"
    "  \"+\", \"@\", private and resources folders are special: they belong to the folder\n"
    "  that holds them, and --recursive does not enter them.\n"
    "  --without FOLDER hides the folder and its special folders; with --recursive,\n"
    "  it hides all folders below it, too.\n"
    "  --path @FILE may name a cache, written by list --save or cache write: the path\n"
    "  is then the saved one. --cache FILE uses a cache for any path; without --path\n"
    "  it is the saved path, too. Folders that have not changed since are not read\n"
    "  again. With --path, a damaged cache is reported and not used.\n"
    "  --timeout MS is for folders on slow or dead disks: one that has not answered\n"
    "  within MS milliseconds is reported and counts as empty.\n";

constexpr const char* kPackageNotes =
    "  --packages DIR adds the folders of the packages in DIR after all other\n"
    "  folders, in the order of the packages' folder names. It needs no --path, and\n"
    "  --recursive does not apply to it. See searchpath packages --help.\n";

constexpr const char* kRulesNotes =
    "The rules:\n"
    "  --as environment is the default: what the paragraphs above say.\n"
    "  --as plain: a/b.h is the first folder that holds a/b.h. No folder is special.\n"
    "  --as program: what a shell would start: the first file that may be executed.\n"
    "  An empty part of the path is the working folder, and a NAME with \"/\" is that\n"
    "  file itself.\n"
    "  --as include: the header that a C compiler would read. With --from FOLDER, for\n"
    "  a file in FOLDER that includes it in quotes; with --after FOLDER, for a header\n"
    "  in FOLDER that includes the next one of that name (#include_next).\n"
    "  --path is then cut at \":\" alone, and nothing in it is expanded.\n";

constexpr const char* kSourceNotes =
    "The path of another program:\n"
    "  --path-of PATH, or another VARIABLE of the environment, takes the folders that\n"
    "  it holds. --path-of cc and c++ ask the compiler, which CC and CXX may name,\n"
    "  for its own folders; --flag FLAG goes to it and may be repeated. --path-of\n"
    "  perl and python ask perl for @INC and python3 for sys.path. The rules follow\n"
    "  from it, unless --as is given: program for PATH; include for cc, c++, CPATH,\n"
    "  C_INCLUDE_PATH and CPLUS_INCLUDE_PATH; plain for perl, python, PERL5LIB,\n"
    "  PYTHONPATH, MANPATH, LIBRARY_PATH, LD_LIBRARY_PATH, PKG_CONFIG_PATH,\n"
    "  XDG_CONFIG_DIRS and XDG_DATA_DIRS; environment for other variables.\n"
    "  --profile NAME is a path, its rules and its extensions in one; what --path,\n"
    "  --as and --ext say beside it counts. See searchpath profiles --help.\n";

// The lines of `list`; `what` says what is read, for messages.
std::vector<ustring> ReadList(std::istream& list, const std::string& what) {
  std::vector<ustring> folders;
  // If an earlier part has read standard input to its end, the stream has failed, but is open. This
  // part then has no folders.
  const bool isOpen = !list.fail() || list.eof();
  if (isOpen) folders = host::ReadFolderList(list);
  // A cache begins like this.
  if (!folders.empty() && folders.front().starts_with(u"searchpath listing ")) {
    throw UsageError("a cache is read from a file: --path @FILE");
  }
  if (isOpen && !list.bad()) return folders;
  throw UsageError("cannot read " + what + ": " + std::generic_category().message(errno));
}

// The folders that `part` denotes; `where` is its option or operand, for messages. If `part` is a
// cache, the cache is added to `caches`, too.
std::vector<ustring> ReadPart(const std::string& part, const std::string& where,
                              const host::LookupRules& rules,
                              std::vector<host::PathEntryFactory>& caches) {
  if (part == "-") return ReadList(std::cin, "standard input, the list of " + where + " -");
  if (!part.starts_with('@')) return SplitFolders(part, rules);
  if (IsListing(part.substr(1))) {
    caches.push_back(ReadListing(part.substr(1)));
    return caches.back().GetFolderStrings();
  }
  return ReadListFile(part.substr(1), "the list of " + where + ' ' + part +
                                          " (for a folder of that name write ./" + part + ')');
}

// The cache of --cache, if it is given. Beside --path, a cache that cannot be used is reported and
// left out.
std::vector<host::PathEntryFactory> ReadCache(const PathOptions& options) {
  if (!options.cache) return {};
  try {
    return {ReadListing(*options.cache)};
  } catch (const UsageError& error) {
    if (options.parts.empty()) throw;
    if (!options.quiet) Report(std::string(error.what()) + "; the folders are read");
    return {};
  }
}

// Folders, and where they come from.
struct NamedFolders {
  std::vector<ustring> folders;
  host::FolderSource source;
  std::string where;                           // the source in words, for messages
  std::vector<host::PathEntryFactory> caches;  // for folders that have not changed since
  std::vector<ustring> quoteFolders = {};      // see `SourcedPath`
};

host::Environment Open(NamedFolders named, const PathOptions& options) {
  const host::LookupRules rules = options.GetRules();
  // Rules under which names of folders mean nothing are not the default, so `as` is set.
  if (options.recursive && !rules.foldersHaveMeaning) {
    throw UsageError(
        "--recursive and --as " + *options.as +
        " cannot be given together; leave out --recursive: a NAME may begin with folders");
  }
  if (named.folders.empty() && !options.packages) {
    throw UsageError(named.where + " names no folder; write . for the working folder");
  }
  const Progress progress(options.quiet);
  host::EnvironmentOptions environmentOptions = {
      .folders = std::move(named.folders),
      .source = named.source,
      .expansion =
          options.recursive ? host::FolderExpansion::Recursive : host::FolderExpansion::Alone,
      .keepDuplicates = options.keepDuplicates,
      .without = GetTexts(options.without),
      .caches = std::move(named.caches),
      .rules = rules,
      .quoteFolders = std::move(named.quoteFolders),
      .timeout = GetMilliseconds("--timeout", options.timeout)};
  if (options.packages) environmentOptions.packages = TextFromBytes(*options.packages);
  const host::Environment environment = options.foldersOnly
                                            ? host::Environment::WithoutFiles(environmentOptions)
                                            : host::Environment(environmentOptions);
  if (options.packages) CheckRoot("--packages", *options.packages, *environment.GetPackages());
  return environment;
}

// The folders of all `parts`. `caches` may come first; those that `parts` name are added.
NamedFolders ReadParts(const std::vector<std::string>& parts, const std::string& where,
                       const host::LookupRules& rules, std::vector<host::PathEntryFactory> caches) {
  std::vector<ustring> folders;
  for (const std::string& part : parts) {
    std::vector<ustring> more = ReadPart(part, where, rules, caches);
    folders.insert(folders.end(), more.begin(), more.end());
  }
  return {std::move(folders), host::FolderSource::Given, where, std::move(caches)};
}

// The folders of the stored path; none when no path is stored.
NamedFolders ReadStoredPath() {
  const host::StoredPath stored(host::StoredPath::GetDefaultFile());
  std::vector<ustring> folders;
  for (const AbsoluteIRI& location : stored.Read().value_or(std::vector<AbsoluteIRI>())) {
    folders.push_back(GetStringFromIRI(location));
  }
  return {std::move(folders), host::FolderSource::StoredPath, "the stored path", /*caches=*/{}};
}

}  // namespace

std::vector<ustring> ReadListFile(const std::string& name, const std::string& what) {
  std::ifstream file(name);
  return ReadList(file, Quoted(name) + ", " + what);
}

void PathOptions::AddFoldersTo(CommandLine& commandLine) {
  commandLine.AddValues("--path", "FOLDERS", parts,
                        "A:B:..., @FILE (one folder a line, or a cache), or -");
  commandLine.AddValue("--cache", "FILE", cache,
                       "do not read unchanged folders; see cache write --help");
  AddSourcesTo(commandLine);
  AddRulesTo(commandLine);
  AddRecursiveTo(commandLine);
  commandLine.AddValues("--without", "FOLDER", without, "hide this folder; may be repeated");
  commandLine.AddValue("--timeout", "MS", timeout,
                       "give up a folder that does not answer in MS milliseconds");
  commandLine.AddNotes(kNotes);
}

void PathOptions::AddPackagesTo(CommandLine& commandLine) {
  commandLine.AddValue("--packages", "DIR", packages,
                       "then search the folders of the packages in DIR");
  commandLine.AddNotes(kPackageNotes);
}

void PathOptions::AddTo(CommandLine& commandLine) {
  AddFoldersTo(commandLine);
  AddPackagesTo(commandLine);
  commandLine.AddFlag("--keep-duplicates", keepDuplicates,
                      "search a folder as often as it is given");
  AddReportingTo(commandLine);
}

void PathOptions::AddReadingTo(CommandLine& commandLine) {
  AddRulesTo(commandLine);
  AddRecursiveTo(commandLine);
  AddReportingTo(commandLine);
}

void PathOptions::AddSourcesTo(CommandLine& commandLine) {
  commandLine.AddValue("--path-of", "WHAT", pathOf,
                       "PATH, another variable, cc, c++, perl or python",
                       {"PATH", "cc", "c++", "perl", "python"});
  commandLine.AddValues("--flag", "FLAG", flags, "for the compiler of --path-of; may be repeated");
  commandLine.AddValue("--profile", "NAME", profile,
                       "path, rules and extensions; see searchpath profiles");
  commandLine.AddNotes(kSourceNotes);
  commandLine.AfterParse([this] { ReadSources(); });
}

void PathOptions::CheckSources() const {
  const auto refuseBoth = [](const std::string& left, const std::string& right) {
    throw UsageError(left + " and " + right + " cannot be given together; leave out one of them");
  };
  if (pathOf && !parts.empty()) refuseBoth("--path-of", "--path");
  if (pathOf && profile) refuseBoth("--path-of", "--profile");
  if (pathOf && cache) refuseBoth("--path-of", "--cache");
  if (profile && cache && parts.empty()) refuseBoth("--profile", "--cache without --path");
  if (pathOf && !IsPathSource(*pathOf)) {
    throw UsageError("--path-of is " + std::string(kPathSources) + ", not " + Quoted(*pathOf));
  }
}

void PathOptions::ReadSources() {
  CheckSources();
  Profile chosen;
  // Unlike a profile, --path-of alone adds no extensions, not even those of an interpreter.
  if (pathOf) {
    chosen = {.pathOf = pathOf,
              .rules = GetUsualRules(*pathOf),
              .extensions = std::vector<std::string>()};
  }
  if (profile) chosen = GetProfile(*profile);
  const std::string source = chosen.pathOf.value_or("");
  if (!flags.empty() && !IsCompiler(source)) {
    throw UsageError("--flag is for --path-of cc and c++ and their profiles; leave out --flag");
  }
  chosen.flags.insert(chosen.flags.end(), flags.begin(), flags.end());
  if (!as) as = chosen.rules;
  moduleSeparator = TextFromBytes(chosen.moduleSeparator);
  pathIsSourced = parts.empty() && (chosen.pathOf || chosen.path || !chosen.folders.empty());
  const bool takesSuffixes = HasSuffixes(source) && !chosen.extensions;
  // Beside --path, the interpreter of a profile is asked too, but only for its suffixes.
  if (chosen.pathOf && (pathIsSourced || takesSuffixes)) {
    sourced = ReadPathSource(source, chosen.flags, GetRules());
  } else if (chosen.path) {
    sourced.folders = SplitFolders(*chosen.path, GetRules());
  } else {
    sourced.folders = GetTexts(chosen.folders);
  }
  if (!takesSuffixes) {
    sourced.suffixes = GetTexts(chosen.extensions.value_or(std::vector<std::string>()));
  }
}

std::string PathOptions::GetPathOption() const {
  if (!pathIsSourced) return "--path";
  return profile ? "--profile " + *profile : "--path-of " + *pathOf;
}

ustring PathOptions::GetFileName(const std::string& name) const {
  ustring file = TextFromBytes(name);
  if (moduleSeparator.empty() || file.find(u'/') != ustring::npos) return file;
  for (std::size_t at = 0; (at = file.find(moduleSeparator, at)) != ustring::npos; ++at) {
    file.replace(at, moduleSeparator.size(), 1, u'/');
  }
  return file;
}

namespace {

WordList<host::LookupRules> GetNamedRules() {
  WordList<host::LookupRules> words;
  for (const auto& [name, rules] : host::kNamedRules) words.emplace_back(name, rules);
  return words;
}

}  // namespace

void PathOptions::AddRulesTo(CommandLine& commandLine) {
  commandLine.AddValue("--as", "RULES", as, "environment, plain, program or include; see --help",
                       GetWords(GetNamedRules()));
  commandLine.AddNotes(kRulesNotes);
}

host::LookupRules PathOptions::GetRules() const {
  return ChooseValue("--as", as.value_or("environment"), GetNamedRules());
}

void PathOptions::AddRecursiveTo(CommandLine& commandLine) {
  commandLine.AddFlag("--recursive", recursive,
                      "search all ordinary folders below each folder, too");
}

void PathOptions::AddReportingTo(CommandLine& commandLine) {
  commandLine.AddFlag("-q,--quiet", quiet, "do not report folders that cannot be searched");
  commandLine.AddFlag("--strict", strict, "exit with 2 when a folder cannot be searched");
}

host::Environment OpenPath(const PathOptions& options, const CommandLine& commandLine) {
  std::vector<host::PathEntryFactory> caches = ReadCache(options);
  if (!options.parts.empty()) {
    return Open(
        ReadParts(options.parts, options.GetPathOption(), options.GetRules(), std::move(caches)),
        options);
  }
  if (options.cache) {
    // Without --path, `ReadCache` throws when it cannot read the cache, so that there is one.
    std::vector<ustring> folders = caches.front().GetFolderStrings();
    return Open({std::move(folders), host::FolderSource::Cache, "--cache", std::move(caches)},
                options);
  }
  if (options.pathIsSourced) {
    return Open({options.sourced.folders, host::FolderSource::Given, options.GetPathOption(),
                 /*caches=*/{}, options.sourced.quoteFolders},
                options);
  }
  NamedFolders stored = ReadStoredPath();
  if (stored.folders.empty() && !options.packages) {
    throw UsageError("no path to search; type: " + commandLine.GetLineWith("--path \"$PATH\"") +
                     " (or store a path: searchpath add FOLDER...)");
  }
  return Open(std::move(stored), options);
}

std::vector<AbsoluteIRI> FindLists(const PathOptions& options) {
  const host::WorkingFolder workingFolder;
  if (!options.HasPath()) {
    return {workingFolder.Locate(host::StoredPath::GetDefaultFile().native())};
  }
  std::vector<AbsoluteIRI> lists;
  for (const std::string& part : options.parts) {
    if (part.starts_with('@')) {
      const ustring file = TextFromBytes(part.substr(1));
      // With "./" in front, `Locate` takes "~" and IRIs as plain names, as opening the file does.
      lists.push_back(workingFolder.Locate(file.starts_with(u'/') ? file : u"./" + file));
    }
  }
  return lists;
}

host::Environment OpenSource(const SourcedPath& source, const std::string& where,
                             const PathOptions& options) {
  return Open(
      {source.folders, host::FolderSource::Given, where, /*caches=*/{}, source.quoteFolders},
      options);
}

host::Environment OpenVersion(const std::string& part, const std::string& where,
                              const PathOptions& options) {
  if (part.starts_with('@') && IsListing(part.substr(1))) {
    const auto saved = ReadListing(part.substr(1), host::ListingUse::AsSaved);
    return host::Environment(host::EnvironmentOptions{.folders = saved.GetFolderStrings(),
                                                      .source = host::FolderSource::Cache,
                                                      .caches = {saved},
                                                      .rules = options.GetRules()});
  }
  return Open(ReadParts({part}, where, options.GetRules(), /*caches=*/{}), options);
}

namespace {

// Reports folders of --without that hide nothing, and packages that cannot be used. Returns whether
// the command must fail.
bool ReportOtherProblems(const host::Environment& environment, const PathOptions& options) {
  if (!options.quiet) ReportIdleExclusions(environment);
  const host::PackageRegistry* const packages = environment.GetPackages().get();
  if (packages == nullptr) return false;
  if (!options.quiet) ReportPackageProblems(*packages);
  return options.strict && packages->GetProblemCount() > 0;
}

}  // namespace

bool ReportProblems(const host::Environment& environment, const PathOptions& options) {
  // With --quiet alone nobody needs the problems, and looking for them would open every folder.
  if (options.quiet && !options.strict) return false;
  const auto problems = WithProgress(options.quiet, [&] { return environment.FindProblems(); });
  const bool failed = ReportProblems(problems, options);
  return ReportOtherProblems(environment, options) || failed;
}

void ReportProblemsMet(const host::Environment& environment, const PathOptions& options) {
  if (options.quiet) return;
  // The results are for --strict, with which callers report all problems before.
  static_cast<void>(ReportProblems(environment.GetProblemsMet(), options));
  static_cast<void>(ReportOtherProblems(environment, options));
}

bool ReportProblems(const std::vector<host::FolderProblem>& problems, const PathOptions& options) {
  for (const host::FolderProblem& problem : problems) {
    if (options.quiet) break;
    Report("cannot search " + Quoted(problem.folder) + ": " + problem.GetText());
  }
  return options.strict && !problems.empty();
}

void ReportIdleExclusions(const host::Environment& environment) {
  for (const ustring& folder : environment.FindIdleExclusions()) {
    Report("--without " + Quoted(folder) + " hides nothing: that folder is not on the path");
  }
}

void ReadFolders(const host::Environment& environment, const PathOptions& options) {
  const Progress progress(options.quiet);
  const host::FolderPath folders(environment.GetMainFolders());
  folders.ConcurrentForEachEntry(kAllKindsAndResourcesScope, [](const auto& folder) {
    static_cast<void>(GetItemCount(*folder));  // lists the folder
    return false;                              // do not stop
  });
}

void RefuseFolder(const std::string& option, const std::string& folder,
                  const current_working_folder::FailedToAbsolutizeException& error) {
  throw UsageError(option + ' ' + Quoted(folder) + ": " + error.what() +
                   "; name a folder that exists");
}

}  // namespace Corvane::PathManagement::tool
