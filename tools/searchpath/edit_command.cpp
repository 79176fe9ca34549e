#include "command_line.h"
#include "commands.h"
#include "difference_output.h"
#include "progress.h"
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

constexpr const char* kEditNotes =
    "The stored path:\n"
    "  Commands without --path search it. It is kept in the file searchpath/path\n"
    "  below $XDG_CONFIG_HOME, or else below ~/.config: one folder or \"file\" IRI a\n"
    "  line. The file may be edited by hand. Several add and remove commands at once\n"
    "  do not lose each other's changes.\n"
    "  --dry-run prints what would differ, as searchpath diff does: the folders, then\n"
    "  the names that would mean another file.\n";

constexpr CommandText kAddText = {
    "add", "FOLDER...", "Puts folders at the front of the stored path, or moves them there.",
    "  searchpath add ~/lib /opt/lib       search these first, ~/lib before /opt/lib\n"
    "  searchpath add --end /usr/share/lib\n"
    "  searchpath add --dry-run ~/lib      which names would mean another file?\n",
    "When some FOLDER cannot be read, it is reported, and no folder is added.\n"
    "Exit: 0 the folders are on the path, 2 wrong usage or failure.\n"
    "\n"};

constexpr CommandText kRemoveText = {
    "remove", "FOLDER...", "Takes folders off the stored path.",
    "  searchpath remove ~/lib\n"
    "  searchpath remove --dry-run ~/lib   which names would mean another file?\n",
    "A FOLDER need not exist on the disk any more. One that is not on the path is\n"
    "reported, and the others are taken off.\n"
    "Exit: 0 all are off the path, 1 some FOLDER was not on it, 2 wrong usage or\n"
    "failure.\n"
    "\n"};

struct EditOptions {
  std::optional<std::string> store;  // the file of another stored path
  bool dryRun = false;
  OutputOptions output;

  void AddTo(CommandLine& commandLine) {
    commandLine.AddValue("--store", "FILE", store, "edit the path that is stored in FILE instead");
    commandLine.AddFlag("--dry-run", dryRun, "change nothing, print what would differ");
    output.AddTo(commandLine);
    commandLine.AddNotes(kEditNotes);
  }

  [[nodiscard]] host::StoredPath GetStoredPath() const {
    if (!store) return host::StoredPath(host::StoredPath::GetDefaultFile());
    if (store->empty()) throw UsageError("--store is empty; leave it out, or name a file");
    return host::StoredPath(TextFromBytes(*store));
  }
};

// Edits a path. Returns messages on the folders that could not be added or removed.
using Edit = std::function<Notification(IMainSearchPathManager&)>;

void WriteDifferences(const Output& output, const host::FolderPath& before,
                      const host::FolderPath& after) {
  using Filter = PathEntryVectorDifferentiator::ComparisonFilter;
  const auto folders = WithProgress(
      /*quiet=*/false,
      [&] { return host::FindPathDifferences(before, after, Filter::TopLevelOnly); });
  const auto names =
      WithProgress(/*quiet=*/false, [&] { return host::FindNameChanges(before, after); });
  for (const auto& folder : folders) WriteDifference(output, folder);
  for (const host::NameChange& name : names) WriteDifference(output, name);
}

// Applies `edit` to the stored path; with --dry-run, applies it to a copy and prints what differs.
// Returns the messages of `edit`.
Notification Change(const EditOptions& options, const Output& output, const Edit& edit) {
  const host::StoredPath stored = options.GetStoredPath();
  Notification notification;
  host::MainSearchPathManager manager;
  const auto change = [&](const std::vector<AbsoluteIRI>& folders) {
    manager.SetFolderIRIs(folders, notification);  // never adds a message
    const auto before = manager.GetPath();
    notification = edit(manager);
    if (options.dryRun) WriteDifferences(output, *before, *manager.GetPath());
    return *manager.GetFolderIRIs();
  };
  if (options.dryRun) {  // nothing is stored
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
  return notification.empty() ? Outcome::Done : outcomeWithMessages;
}

}  // namespace

Outcome RunAdd(const Arguments& arguments) {
  CommandLine commandLine(kAddText);
  EditOptions options;
  bool atEnd = false;
  commandLine.AddFlag("--end", atEnd, "put them at the end of the path");
  options.AddTo(commandLine);
  if (!commandLine.Parse(arguments)) return Outcome::Done;
  const auto add = [&](IMainSearchPathManager& manager) {
    return AddFoldersToZentraPath(GetTexts(commandLine.GetOperands()), host::WorkingFolder(),
                                  manager, atEnd ? Position::End : Position::Begin);
  };
  return Run(options, add, Outcome::Failed);
}

Outcome RunRemove(const Arguments& arguments) {
  CommandLine commandLine(kRemoveText);
  EditOptions options;
  options.AddTo(commandLine);
  if (!commandLine.Parse(arguments)) return Outcome::Done;
  const auto remove = [&](IMainSearchPathManager& manager) {
    return host::RemoveFolders(GetTexts(commandLine.GetOperands()), host::WorkingFolder(), manager);
  };
  return Run(options, remove, Outcome::NotFound);
}

}  // namespace Corvane::PathManagement::tool
