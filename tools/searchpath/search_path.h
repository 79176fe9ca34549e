#ifndef SEARCHPATH_TOOLS_SEARCHPATH_SEARCH_PATH_H
#define SEARCHPATH_TOOLS_SEARCHPATH_SEARCH_PATH_H

#include "path_source.h"
#include "searchpath/host/environment.h"

#include <optional>
#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

class CommandLine;

/// The options on the path that a command works on.
struct PathOptions {
  std::vector<std::string> parts;     // of --path, in order
  std::optional<std::string> pathOf;  // who names the path instead
  std::vector<std::string> flags;     // for the compiler that does
  std::optional<std::string> profile;
  std::optional<std::string> as;  // the name of the rules
  std::optional<std::string> cache;
  bool recursive = false;
  std::vector<std::string> without;
  std::optional<std::string> packages;  // the root of packages whose folders are added
  bool keepDuplicates = false;
  std::optional<std::string> timeout;  // in milliseconds
  bool quiet = false;
  bool strict = false;

  void AddTo(CommandLine& commandLine);

  /// For a command that examines the path itself.
  void AddFoldersTo(CommandLine& commandLine);
  void AddPackagesTo(CommandLine& commandLine);

  /// For a command whose paths are operands.
  void AddReadingTo(CommandLine& commandLine);

  /// Whether these options name a path. Otherwise the stored one is meant.
  [[nodiscard]] bool NameAPath() const { return !parts.empty() || cache || isNamed; }

  /// The extensions of the profile, each with its dot.
  [[nodiscard]] const std::vector<ustring>& GetExtensions() const { return named.suffixes; }

  /// The folders that are asked before the others for a header in quotes.
  [[nodiscard]] const std::vector<ustring>& GetQuoteFolders() const { return named.quoteFolders; }

  /// The file name of `name`, which may be written as the programs of the profile write it.
  [[nodiscard]] ustring GetFileName(const std::string& name) const;

  /// Errors: `UsageError` when --as names none.
  [[nodiscard]] host::LookupRules GetRules() const;

 private:
  friend host::Environment OpenPath(const PathOptions& options, const CommandLine& commandLine);

  void AddSourcesTo(CommandLine& commandLine);
  void CheckSources() const;
  /// Takes what --path-of and --profile mean, unless another option says it.
  void ReadSources();
  void AddRulesTo(CommandLine& commandLine);
  void AddRecursiveTo(CommandLine& commandLine);
  void AddReportingTo(CommandLine& commandLine);

  bool isNamed = false;     // by --path-of or --profile
  SourcedPath named;        // by --path-of or --profile
  ustring moduleSeparator;  // of the profile; "" for none
};

/// Errors: `UsageError` when there is no path, or a list or a root of packages that cannot be read.
[[nodiscard]] host::Environment OpenPath(const PathOptions& options,
                                         const CommandLine& commandLine);

/// The files that the path is read from.
[[nodiscard]] std::vector<AbsoluteIRI> FindLists(const PathOptions& options);

/// The path of another program; `where` is the option that named it, for messages.
///
/// Errors: as `OpenPath`.
[[nodiscard]] host::Environment OpenSource(const SourcedPath& source, const std::string& where,
                                           const PathOptions& options);

/// The path that `part` denotes, in the syntax of --path; `where` is the operand, for messages. The
/// folders of a saved listing are as they were when it was saved.
///
/// Errors: as `OpenPath`.
[[nodiscard]] host::Environment OpenVersion(const std::string& part, const std::string& where,
                                            const PathOptions& options);

/// Reads all folders of the path, special ones too, and shows progress.
void ReadFolders(const host::Environment& environment, const PathOptions& options);

/// Reports which folders cannot be searched, which packages cannot be used, and which --without hide
/// nothing. Returns whether they make the command fail.
[[nodiscard]] bool ReportProblems(const host::Environment& environment, const PathOptions& options);
[[nodiscard]] bool ReportProblems(const std::vector<host::FolderProblem>& problems,
                                  const PathOptions& options);
/// The same of the folders that questions have come upon so far, without --strict.
void ReportProblemsMet(const host::Environment& environment, const PathOptions& options);

/// The lines of the file `name`; `what` says what they are, for messages. Errors: `UsageError` when
/// the file cannot be read.
[[nodiscard]] std::vector<ustring> ReadListFile(const std::string& name, const std::string& what);

/// Reports which --without hide nothing.
void ReportIdleExclusions(const host::Environment& environment);

/// Reports that the folder of `option`, such as --from, cannot be used.
[[noreturn]] void RefuseFrom(const std::string& option, const std::string& folder,
                             const current_working_folder::FailedToAbsolutizeException& error);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_SEARCH_PATH_H
