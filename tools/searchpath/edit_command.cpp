#include "command_line.h"
#include "commands.h"
#include "difference_output.h"
#include "searchpath/host/main_search_path_manager.h"
#include "searchpath/host/name_changes.h"
#include "searchpath/host/path_differences.h"
#include "searchpath/host/stored_path.h"
#include "searchpath/host/working_folder.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/utilities/path_editing.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

namespace {

using foundation::core::except::Notification;

constexpr const char* kNotes =
    "The stored path:\n"
    "  It is what commands without --path search. It stands in searchpath/path in\n"
    "  $XDG_CONFIG_HOME, or else in ~/.config, a folder or \"file\" IRI a line, and may\n"
    "  be edited by hand. --dry-run prints what would be different as diff does: the\n"
    "  folders, then the names that would mean another file. Several of these\n"
    "  commands at once do not lose each other's changes.\n\n";

constexpr CommandText kAddText = {
    "add", "FOLDER...", "Puts folders in front of the stored path, or moves them there.",
    "  searchpath add ~/lib /opt/lib       search these first, ~/lib before /opt/lib\n"
    "  searchpath add --end /usr/share/lib\n"
    "  searchpath add --dry-run ~/lib      which names would mean another file?\n",
    "A folder that cannot be read is told, and then none is added.\n"
    "Exit: 0 it is done, 2 wrong usage or failure.\n\n"};

constexpr CommandText kRemoveText = {
    "remove", "FOLDER...", "Takes folders off the stored path.",
    "  searchpath remove ~/lib\n"
    "  searchpath remove --dry-run ~/lib   which names would mean another file?\n",
    "A folder may be gone from the disk. One that is not on the path is told, and the\n"
    "others are taken off.\n"
    "Exit: 0 it is done, 1 some folder was not on the path, 2 wrong usage or failure.\n\n"};

struct EditOptions {
  std::optional<std::string> store;
  bool dryRun = false;
  OutputOptions output;

  void AddTo(CommandLine& commandLine) {
    commandLine.AddValue("--store", "FILE", store, "the stored path in this file");
    commandLine.AddFlag("--dry-run", dryRun, "change nothing, print what would be different");
    output.AddTo(commandLine, false);
    commandLine.AddNotes(kNotes);
  }

  [[nodiscard]] host::StoredPath GetStoredPath() const {
    if (!store) return host::StoredPath(host::StoredPath::GetDefaultFile());
    if (store->empty()) throw UsageError("--store is empty; leave it out, or name a file");
    return host::StoredPath(TextFromBytes(*store));
  }
};

// Edits a path. Its messages say which folders could not be added or removed.
using Edit = std::function<Notification(IMainSearchPathManager&)>;

void WriteDifferences(const Output& output, const host::FolderPath& before,
                      const host::FolderPath& after) {
  using Filter = PathEntryVectorDifferentiator::ComparisonFilter;
  for (const auto& folder : host::FindPathDifferences(before, after, Filter::TopLevelOnly)) {
    WriteDifference(output, folder);
  }
  for (const host::NameChange& name : host::FindNameChanges(before, after)) {
    WriteDifference(output, name);
  }
}

Notification Change(const EditOptions& options, const Output& output, const Edit& edit) {
  const host::StoredPath stored = options.GetStoredPath();
  Notification notification;
  host::MainSearchPathManager manager;
  const auto change = [&](const std::vector<AbsoluteIRI>& folders) {
    manager.SetFolderIRIs(folders, notification);
    const auto before = manager.GetPath();
    notification = edit(manager);
    if (options.dryRun) WriteDifferences(output, *before, *manager.GetPath());
    return *manager.GetFolderIRIs();
  };
  if (options.dryRun) {
    static_cast<void>(change(stored.Read().value_or(std::vector<AbsoluteIRI>())));
  } else {
    stored.Change(change);
  }
  return notification;
}

// `outcomeWithMessages` is the outcome when some folder could not be added or removed.
Outcome Run(const EditOptions& options, const Edit& edit, Outcome outcomeWithMessages) {
  const Notification notification = Change(options, Output(options.output), edit);
  for (const auto& message : notification.GetMessages()) {
    Report(GetBytes(foundation::core::except::GetText(message)));
  }
  return notification.empty() ? Outcome::Found : outcomeWithMessages;
}

}  // namespace

Outcome RunAdd(const std::vector<std::string>& arguments) {
  CommandLine commandLine(kAddText);
  EditOptions options;
  bool atEnd = false;
  commandLine.AddFlag("--end", atEnd, "behind the path, not in front of it");
  options.AddTo(commandLine);
  if (!commandLine.Parse(arguments)) return Outcome::Found;
  const auto add = [&](IMainSearchPathManager& manager) {
    return AddFoldersToZentraPath(GetTexts(commandLine.GetOperands()), host::WorkingFolder(),
                                  manager, atEnd ? Position::End : Position::Begin);
  };
  return Run(options, add, Outcome::Failed);
}

Outcome RunRemove(const std::vector<std::string>& arguments) {
  CommandLine commandLine(kRemoveText);
  EditOptions options;
  options.AddTo(commandLine);
  if (!commandLine.Parse(arguments)) return Outcome::Found;
  const auto remove = [&](IMainSearchPathManager& manager) {
    return host::RemoveFolderTexts(GetTexts(commandLine.GetOperands()), host::WorkingFolder(),
                                   manager);
  };
  return Run(options, remove, Outcome::NotFound);
}

}  // namespace Corvane::PathManagement::tool
