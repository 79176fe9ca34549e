#ifndef SEARCHPATH_TOOLS_SEARCHPATH_SEARCH_PATH_H
#define SEARCHPATH_TOOLS_SEARCHPATH_SEARCH_PATH_H

#include "searchpath/host/environment.h"

#include <optional>
#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

class CommandLine;

/// The path that a command works on, as it was asked for.
struct PathOptions {
  std::vector<std::string> parts;  // of --path, in order
  std::optional<std::string> cache;
  bool recursive = false;
  std::vector<std::string> without;
  std::optional<std::string> packages;  // the root of those whose folders follow
  bool keepDuplicates = false;
  bool quiet = false;
  bool strict = false;

  void AddTo(CommandLine& commandLine);

  /// For a command that looks for what is wrong with the path itself.
  void AddFoldersTo(CommandLine& commandLine);
  void AddPackagesTo(CommandLine& commandLine);

  /// For a command that is given its paths in another way.
  void AddReadingTo(CommandLine& commandLine);

 private:
  void AddRecursiveTo(CommandLine& commandLine);
  void AddReportingTo(CommandLine& commandLine);
};

/// Errors: `UsageError` when there is no path, or a list or a root of packages that cannot be read.
[[nodiscard]] host::Environment OpenPath(const PathOptions& options,
                                         const CommandLine& commandLine);

/// The path that `part` makes, which is written as one of --path and was given for `where`. A saved
/// listing counts as what was there when it was saved.
///
/// Errors: as `OpenPath`.
[[nodiscard]] host::Environment OpenVersion(const std::string& part, const std::string& where,
                                            const PathOptions& options);

/// Reads all folders of the path, special ones too, so that nothing has to be waited for later.
void ReadFolders(const host::Environment& environment, const PathOptions& options);

/// Tells which folders cannot be searched, which packages cannot be used, and which --without hide
/// nothing. Returns whether that makes the command fail.
[[nodiscard]] bool ReportProblems(const host::Environment& environment, const PathOptions& options);
[[nodiscard]] bool ReportProblems(const std::vector<host::FolderProblem>& problems,
                                  const PathOptions& options);

/// The lines of the list `name`, which `what` says the use of. Errors: `UsageError` when it cannot be
/// read.
[[nodiscard]] std::vector<ustring> ReadListFile(const std::string& name, const std::string& what);

/// Tells which --without hide nothing.
void ReportIdleExclusions(const host::Environment& environment);

/// Answers a --from whose folder cannot be used.
[[noreturn]] void RefuseFrom(const std::string& folder,
                             const current_working_folder::FailedToAbsolutizeException& error);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_SEARCH_PATH_H
