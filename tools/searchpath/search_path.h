#ifndef SEARCHPATH_TOOLS_SEARCHPATH_SEARCH_PATH_H
#define SEARCHPATH_TOOLS_SEARCHPATH_SEARCH_PATH_H

#include "path_source.h"
#include "searchpath/host/environment.h"

#include <optional>
#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

class CommandLine;

/// The options that say on which path a command works.
struct PathOptions {
  // The values of --path: "A:B", "-", or "@FILE", which is a list of folders or a cache, as its
  // content shows.
  std::vector<std::string> parts;
  std::optional<std::string> pathOf;  // the program or variable that names the path instead
  std::vector<std::string> flags;     // for the compiler of `pathOf` or of the profile
  std::optional<std::string> profile;
  std::optional<std::string> as;  // the name of the rules; set by a profile or `pathOf`, too
  std::optional<std::string> cache;
  bool recursive = false;
  std::vector<std::string> without;     // folders to hide
  std::optional<std::string> packages;  // the folder of the packages whose folders are added
  bool keepDuplicates = false;
  std::optional<std::string> timeout;  // in milliseconds
  bool quiet = false;
  bool strict = false;
  // No option, but set by a command that asks for no file: `OpenPath` then makes an environment that
  // has none, see `Environment::WithoutFiles`.
  bool foldersOnly = false;

  /// Adds all of these options.
  void AddTo(CommandLine& commandLine);

  /// Adds the options that say what the path is, without --packages and --keep-duplicates, and
  /// without the options on reporting.
  void AddFoldersTo(CommandLine& commandLine);
  void AddPackagesTo(CommandLine& commandLine);

  /// Adds --as, --recursive, --quiet and --strict: for a command whose paths are operands.
  void AddReadingTo(CommandLine& commandLine);

  /// Whether these options name a path. If not, commands work on the stored path.
  [[nodiscard]] bool HasPath() const { return !parts.empty() || cache || pathIsSourced; }

  /// The option that names the folders, with its value if that is not the folders themselves:
  /// "--path" or "--profile c". For messages.
  [[nodiscard]] std::string GetPathOption() const;

  /// The extensions of the profile; each begins with "." or "/".
  [[nodiscard]] const std::vector<ustring>& GetExtensions() const { return sourced.suffixes; }

  /// The folders that are searched before the others for a header in quotes.
  [[nodiscard]] const std::vector<ustring>& GetQuoteFolders() const { return sourced.quoteFolders; }

  /// The file name of `name`, in which "/" takes the place of the profile's separator: "a/b" for
  /// "a.b". A name that has a "/" stays as it is.
  [[nodiscard]] ustring GetFileName(const std::string& name) const;

  /// The rules of --as or else of --path-of or --profile; otherwise the rules "environment".
  /// Errors: `UsageError` when no rules have that name.
  [[nodiscard]] host::LookupRules GetRules() const;

 private:
  friend host::Environment OpenPath(const PathOptions& options, const CommandLine& commandLine);

  void AddSourcesTo(CommandLine& commandLine);
  void CheckSources() const;
  /// Sets what --path-of or --profile stands for, as far as --path and --as do not say otherwise.
  void ReadSources();
  void AddRulesTo(CommandLine& commandLine);
  void AddRecursiveTo(CommandLine& commandLine);
  void AddReportingTo(CommandLine& commandLine);

  bool pathIsSourced = false;  // whether --path-of or --profile names the path, and not --path
  SourcedPath sourced;         // the path and the suffixes of --path-of or --profile
  ustring moduleSeparator;     // of the profile; "" for none
};

/// Opens the path that `options` name, or else the stored one; `commandLine` is for messages.
///
/// Errors: `UsageError` when there is no path, or when a list or the folder of --packages cannot be
/// read.
[[nodiscard]] host::Environment OpenPath(const PathOptions& options,
                                         const CommandLine& commandLine);

/// The files that say which folders there are: each @FILE of --path, be it a list or a cache; or the
/// file of the stored path when no path is named.
[[nodiscard]] std::vector<AbsoluteIRI> FindLists(const PathOptions& options);

/// Opens the path of another program; `where` is the option that names it, for messages.
///
/// Errors: as `OpenPath`.
[[nodiscard]] host::Environment OpenSource(const SourcedPath& source, const std::string& where,
                                           const PathOptions& options);

/// Opens the path that `part` denotes, in the syntax of --path; `where` is the operand, for
/// messages. If it names a cache, by "@FILE", the folders are as they were when it was saved.
///
/// Errors: as `OpenPath`.
[[nodiscard]] host::Environment OpenVersion(const std::string& part, const std::string& where,
                                            const PathOptions& options);

/// Lists all folders of the path in parallel, also special ones ("+", "@", private, resources), and
/// shows progress. `environment` keeps the listings for later questions.
void ReadFolders(const host::Environment& environment, const PathOptions& options);

/// Reports, unless --quiet is given, which folders cannot be searched, which packages cannot be
/// used, and which folders of --without hide nothing. Returns whether the command must fail: with
/// --strict, when there are such folders or packages; folders of --without do not count.
[[nodiscard]] bool ReportProblems(const host::Environment& environment, const PathOptions& options);
/// The same for `problems` alone, without packages and --without.
[[nodiscard]] bool ReportProblems(const std::vector<host::FolderProblem>& problems,
                                  const PathOptions& options);
/// Reports as the first overload of `ReportProblems`, but of the folders only those that an earlier
/// look-up could not search. Ignores --strict.
void ReportProblemsMet(const host::Environment& environment, const PathOptions& options);

/// The lines of the file `name`; `what` says what they are, for messages.
///
/// Errors: `UsageError` when the file cannot be read.
[[nodiscard]] std::vector<ustring> ReadListFile(const std::string& name, const std::string& what);

/// Reports which folders of --without hide nothing.
void ReportIdleExclusions(const host::Environment& environment);

/// Errors: always `UsageError`, which says that `folder`, the value of `option`, such as --from,
/// cannot be used, and `error`, why.
[[noreturn]] void RefuseFolder(const std::string& option, const std::string& folder,
                               const current_working_folder::FailedToAbsolutizeException& error);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_SEARCH_PATH_H
