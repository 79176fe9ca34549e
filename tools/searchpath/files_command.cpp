#include "command_line.h"
#include "commands.h"
#include "found_file.h"
#include "matching.h"
#include "path_folder.h"
#include "progress.h"
#include "search_path.h"
#include "searchpath/host/filename_comparison.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/model/path_entry.h"
#include "searchpath/model/search_scope.h"
#include "until_exit.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace Corvane::PathManagement::tool {

namespace {

constexpr CommandText kFilesText = {
    "files", "", "Prints the files of the folders of the path.",
    "  searchpath files --path lib:src --ext zt --ext c\n"
    "  searchpath files --path lib:src --from lib --all   lib and its special folders\n"
    "  searchpath files --path src --recursive --json\n",
    "The files:\n"
    "  They are printed folder by folder in the order of the path; within a folder,\n"
    "  in the order of the bytes of their names. Files that others hide are\n"
    "  printed, too; files in \"+\", \"@\", private and resources folders with --all.\n"
    "\n"
    "Exit: 0 there are files, 1 there are none, 2 wrong usage or failure.\n"
    "\n"};

struct FilesOptions {
  PathOptions path;
  MatchingOptions matching;
  OutputOptions output;
  bool all = false;
  std::optional<std::string> from;

  void AddTo(CommandLine& commandLine) {
    path.AddTo(commandLine);
    commandLine.AddFlag("-a,--all", all, "also files in special folders: +, @, private, resources");
    commandLine.AddValue("--from", "FOLDER", from,
                         "only files of this folder, which is on the path");
    matching.AddTo(commandLine, "only files with this extension; may be repeated");
    output.AddTo(commandLine);
    output.AddExitCodeTo(commandLine);
  }
};

// The files that are wanted; all files when the options give neither extensions nor names.
class WantedFiles {
 public:
  explicit WantedFiles(const FilesOptions& options) : policy(options.matching.GetPolicy()) {
    for (ustring& extension : options.matching.GetExtensions(options.path.GetExtensions())) {
      // A profile may add "/main.zt": a NAME then means the file main.zt in a folder NAME, so this
      // is the name of a file.
      if (extension.starts_with(u'/')) {
        names.push_back(extension.substr(extension.rfind(u'/') + 1));
      } else {
        extensions.push_back(std::move(extension));
      }
    }
  }

  [[nodiscard]] bool Contain(const PathItem& file) const {
    if (extensions.empty() && names.empty()) return true;
    return IsAny(file.GetExtension(), extensions) ||
           (!names.empty() && IsAny(file.GetName() + file.GetExtension(), names));
  }

 private:
  [[nodiscard]] bool IsAny(const ustring& text, const std::vector<ustring>& known) const {
    return std::any_of(known.begin(), known.end(), [&](const ustring& each) {
      return host::AreSameFilename(each, text, policy);
    });
  }

  FilenameMatchingPolicy policy;
  std::vector<ustring> extensions;  // each begins with its dot
  std::vector<ustring> names;
};

// Writes each file as soon as it is found. Until the first one, progress is shown.
class FileLines {
 public:
  FileLines(const Output& whereTo, bool quiet) : output(whereTo), progress(std::in_place, quiet) {}

  void Write(const FoundItem& file) {
    progress.reset();
    WriteFile(output, file);
    hasAny = true;
  }
  [[nodiscard]] bool AreThereAny() const { return hasAny; }

 private:
  const Output& output;
  std::optional<Progress> progress;
  bool hasAny = false;
};

// As `WriteFiles`, for rules other than "environment", under which no folder is special.
bool WriteFilesByRules(const Output& output, const host::Environment& environment,
                       const FilesOptions& options, const WantedFiles& wanted) {
  if (options.all || options.from ||
      options.matching.GetPolicy() == FilenameMatchingPolicy::IgnoreCase) {
    throw UsageError("--all, --from and --policy ignore-case mean nothing with --as " +
                     *options.path.as + ", under which no folder is special; leave them out");
  }
  FileLines lines(output, options.path.quiet);
  environment.ForEachFile([&](const FoundItem& file) {
    if (wanted.Contain(*file.GetPathItem())) lines.Write(file);
    return false;  // go on
  });
  return lines.AreThereAny();
}

// The entry of the path for `typed`, the folder of --from.
std::shared_ptr<const IPathEntry> GetFolder(const host::Environment& environment,
                                            const std::string& typed) {
  try {
    const AbsoluteIRI location = environment.GetWorkingFolder().absolutize(TextFromBytes(typed));
    auto folder = environment.GetPath()->GetPathEntryFromAbsoluteIRI(
        location, FilenameMatchingPolicy::FileSystemDefault);
    if (folder != nullptr) return folder;
  } catch (const current_working_folder::FailedToAbsolutizeException& error) {
    RefuseFolder("--from", typed, error);
  }
  throw UsageError("--from " + Quoted(typed) +
                   " is not on the path; searchpath list shows the path");
}

// Visits the folders whose files are to be written.
void ForEachFolder(const host::Environment& environment, const FilesOptions& options,
                   const PathEntryVisitor& visitor) {
  if (!options.from) {
    environment.GetPath()->ForEachEntry(options.all ? kAllKindsAndResourcesScope : kMainScope,
                                        visitor);
    return;
  }
  const auto folder = GetFolder(environment, *options.from);
  if (options.all) {
    const auto& path = environment.GetPath();
    folder->ForEachEntryInScope(kAllKindsAndResourcesScope, [&](const auto& entry) {
      // What --without hides is not on the path, and skipped. The result says whether to stop.
      return path->IsEntryOnPath(*entry) && visitor(entry);
    });
  } else {
    visitor(folder);  // says whether to stop, but this folder is the only one
  }
}

// Writes the files that the options ask for; returns whether there are any.
bool WriteFiles(const Output& output, const host::Environment& environment,
                const FilesOptions& options, const WantedFiles& wanted) {
  FileLines lines(output, options.path.quiet);
  ForEachFolder(environment, options, [&](const std::shared_ptr<const IPathEntry>& folder) {
    const auto items = folder->GetItems();
    for (const auto& item : *items) {
      if (wanted.Contain(*item)) lines.Write(FoundItem(item, folder));
    }
    return false;  // go on
  });
  return lines.AreThereAny();
}

}  // namespace

Outcome RunFiles(const Arguments& arguments) {
  CommandLine commandLine(kFilesText);
  FilesOptions options;
  options.AddTo(commandLine);
  if (!commandLine.Parse(arguments)) return Outcome::Done;
  const Output output(options.output);
  const WantedFiles wanted(options);
  const host::Environment& environment = KeepUntilExit(OpenPath(options.path, commandLine));
  const bool failed = ReportProblems(environment, options.path);
  // Folders have a meaning under the rules "environment" alone.
  const bool foundAny = options.path.GetRules().foldersHaveMeaning
                            ? WriteFiles(output, environment, options, wanted)
                            : WriteFilesByRules(output, environment, options, wanted);
  if (!foundAny) Report("no such file on the path");
  if (failed) return Outcome::Failed;
  return foundAny ? Outcome::Found : Outcome::NotFound;
}

}  // namespace Corvane::PathManagement::tool
