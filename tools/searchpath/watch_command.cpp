#include "command_line.h"
#include "commands.h"
#include "difference_output.h"
#include "path_folder.h"
#include "phrases.h"
#include "progress.h"
#include "search_path.h"
#include "searchpath/host/disk_feed.h"
#include "searchpath/host/folder_observer.h"
#include "searchpath/host/main_search_path_manager.h"
#include "searchpath/host/name_changes.h"
#include "searchpath/host/path_differences.h"
#include "searchpath/host/wake_up.h"
#include "searchpath/host/words.h"
#include "searchpath/host/working_folder.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/platform/file_folder_changed_event.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <system_error>
#include <vector>

namespace Corvane::PathManagement::tool {

namespace {

using Filter = PathEntryVectorDifferentiator::ComparisonFilter;
using foundation::msg_svc::eventmgr::createLocalEventMgr;
using foundation::msg_svc::eventmgr::Event;
using foundation::msg_svc::eventmgr::SessionEmId;
using storage::filefolderobserver::FileFolderChangedEvent;

constexpr CommandText kWatchText = {
    "watch", "", "Prints what changes on the path, until it is interrupted.",
    "  searchpath watch --path \"$PATH\"\n"
    "  searchpath watch --path lib --recursive --json\n"
    "  searchpath watch --path lib --count 1 --quiet   wait for the next change\n",
    "What is printed:\n"
    "  The lines of searchpath diff, for the path as it was and as it is now: first\n"
    "  the folders that were added, removed, moved or refreshed, then the names that\n"
    "  mean another file (changed), no file any more (gone), or a file for the first\n"
    "  time (new). Changes in quick succession count as one; what they undo is not\n"
    "  printed. In JSON, an object with \"name\" is about a name, any other about a\n"
    "  folder. Each line is written at once. As soon as every folder is watched,\n"
    "  standard error gets the line \"watching N folders\".\n"
    "\n"
    "What is watched:\n"
    "  Files and folders that come and go, not the contents of files. The stored path\n"
    "  and --path @FILE are read again when they change. With --recursive, folders\n"
    "  that come and go below are added and removed. Folders on network file systems\n"
    "  are checked every two seconds. A folder hidden by --without stays hidden. A\n"
    "  folder that becomes hidden, or becomes a repeat through a link, while watch\n"
    "  runs is still printed.\n"
    "\n"
    "Exit: 0 after --count, 2 wrong usage or failure; otherwise by the signal.\n"
    "\n"};

struct WatchOptions {
  PathOptions path;
  OutputOptions output;
  bool subfolders = false;
  std::optional<std::string> count;

  void AddTo(CommandLine& commandLine) {
    commandLine.AddFlag("--subfolders", subfolders,
                        "also special folders: +, @, private, resources");
    commandLine.AddValue("--count", "N", count,
                         "end after N lines, or more if several change at once");
    path.AddTo(commandLine);
    output.AddTo(commandLine);
  }

  // How many lines to print before the end; `nullopt` for no end.
  [[nodiscard]] std::optional<std::size_t> GetCount() const {
    if (!count) return std::nullopt;
    const auto lines = ParseNumber<std::size_t>(*count);
    if (lines && *lines > 0) return lines;
    throw UsageError("--count is a number of lines, 1 or more, not " + Quoted(*count));
  }

  // Folders have a meaning under the rules "environment" alone. Under others, each change needs the
  // path anew; see `PrintedNames`.
  void Check() const {
    const bool readsInput = std::count(path.parts.begin(), path.parts.end(), "-") > 0;
    if ((path.recursive || !path.GetRules().foldersHaveMeaning) && readsInput) {
      throw UsageError(std::string(path.recursive ? "--recursive" : "--as " + *path.as) +
                       " reads the path again, and standard input can be read only once; write the "
                       "folders into a file: --path @FILE");
    }
  }
};

// If standard output were closed, the next file that is opened would take its descriptor, and get
// the output.
void CheckStandardOutput() {
  if (fcntl(STDOUT_FILENO, F_GETFD) < 0) {
    throw std::system_error(errno, std::generic_category(), "cannot write standard output");
  }
}

// Waits until another thread sets `wakeUp`. Ends the program when nobody reads its output any more.
void Wait(const host::WakeUp& wakeUp) {
  // With no `events`, `poll` still says when the reader is gone.
  std::array<pollfd, 2> sources = {{{.fd = wakeUp.GetDescriptor(), .events = POLLIN, .revents = 0},
                                    {.fd = STDOUT_FILENO, .events = 0, .revents = 0}}};
  while (poll(sources.data(), sources.size(), /*timeout=*/-1) < 0 && errno == EINTR) {
  }
  if (sources[1].revents != 0) std::raise(SIGPIPE);
  wakeUp.Clear();
}

// Returns the number of lines written.
std::size_t WriteDifferences(const Output& output, const WatchOptions& options,
                             const host::FolderPath& before, const host::FolderPath& after,
                             const std::vector<host::NameChange>& names) {
  const auto folders = host::FindPathDifferences(
      before, after, options.subfolders ? Filter::IncludeSubfolders : Filter::TopLevelOnly);
  for (const host::FolderDifference& folder : folders) {
    WriteDifference(output, folder);
    const char* const problem =
        folder.after == nullptr ? nullptr : host::FindProblemText(*folder.after);
    if (problem != nullptr && !options.path.quiet) {
      Report("cannot search " + Quoted(GetNativePath(*folder.after)) + ": " + problem);
    }
  }
  for (const host::NameChange& name : names) WriteDifference(output, name);
  return folders.size() + names.size();
}

// Gives `manager` the path that the options mean now. If that path cannot be read, reports why, and
// leaves the former one.
void ReadAgain(host::MainSearchPathManager& manager, const WatchOptions& options,
               const CommandLine& commandLine) {
  std::vector<AbsoluteIRI> folders;
  try {
    const host::Environment environment = OpenPath(options.path, commandLine);
    for (const auto& folder : environment.FindSearchedFolders()) {
      folders.push_back(folder->GetAbsoluteIRI());
    }
  } catch (const std::exception& error) {
    Report(std::string(error.what()) + "; the path stays as it was");
    return;
  }
  foundation::core::except::Notification notification;
  manager.SetFolderIRIs(folders, notification);  // never adds a message
}

// Finds the names that mean another file than when they were printed last.
class PrintedNames {
 public:
  PrintedNames(const WatchOptions& watchOptions, const CommandLine& typed,
               const host::Environment& path)
      : options(watchOptions), commandLine(typed), printed(path) {}

  [[nodiscard]] std::vector<host::NameChange> FindChanges(const host::FolderPath& before,
                                                          const host::FolderPath& after) {
    if (printed.GetRules().foldersHaveMeaning) return host::FindNameChanges(before, after);
    // Other rules look names up below folders, too; a `FolderPath` knows nothing of such files.
    const host::Environment now = OpenNow();
    auto changes = now.FindNameChangesSince(printed);
    printed = now;
    return changes;
  }

 private:
  // The path that the options mean now. If that path cannot be read, as `ReadAgain` has reported,
  // the result is the former path, with its folders as they are now.
  [[nodiscard]] host::Environment OpenNow() const try {
    return OpenPath(options.path, commandLine);
  } catch (const std::exception&) {
    host::EnvironmentOptions former = {
        .keepDuplicates = options.path.keepDuplicates,
        .without = GetTexts(options.path.without),
        .rules = printed.GetRules(),
        .timeout = GetMilliseconds("--timeout", options.path.timeout)};
    for (const auto& folder : printed.GetMainFolders()) {
      former.folders.push_back(GetNativePath(*folder));
    }
    return host::Environment(former);
  }

  const WatchOptions& options;
  const CommandLine& commandLine;
  host::Environment printed;
};

Outcome Watch(host::MainSearchPathManager& manager, PrintedNames& names,
              const WatchOptions& options, const Output& output, const CommandLine& commandLine) {
  const std::optional<std::size_t> count = options.GetCount();
  const std::vector<AbsoluteIRI> lists = FindLists(options.path);
  const host::WakeUp wakeUp;
  std::atomic<bool> mustReadAgain = false;
  const auto events = createLocalEventMgr(SessionEmId);
  const auto eventSubscription = events->subscribe([&](const Event& event) {
    const auto* const changed = dynamic_cast<const FileFolderChangedEvent*>(&event);
    if (changed == nullptr) return;
    const auto isChanged = [&](const AbsoluteIRI& list) {
      return list.toString() == changed->GetLocation();
    };
    // With these options, folders below the path count, so that every event may change the path.
    const bool readsAll = options.path.recursive || !options.path.GetRules().foldersHaveMeaning;
    if (!readsAll && std::none_of(lists.begin(), lists.end(), isChanged)) return;
    mustReadAgain = true;
    wakeUp.Set();
  });
  const auto pathSubscription =
      manager.AddListener([&](const auto& /*before*/, const auto& /*after*/) { wakeUp.Set(); });
  const host::FolderObserver observer(manager, *events);
  auto printed = manager.GetPath();  // before the feed starts, so that no change is missed
  const host::DiskFeed feed(manager, events, {.files = lists});
  if (!options.path.quiet) {
    Report("watching " + GetCounted(printed->GetMainFolders().size(), "folder"));
  }
  for (std::size_t lines = 0; !count || lines < *count;) {
    Wait(wakeUp);
    if (mustReadAgain.exchange(false)) ReadAgain(manager, options, commandLine);
    const auto current = manager.GetPath();
    lines += WriteDifferences(output, options, *printed, *current,
                              names.FindChanges(*printed, *current));
    FinishData();
    printed = current;
  }
  return Outcome::Done;
}

}  // namespace

Outcome RunWatch(const Arguments& arguments) {
  CommandLine commandLine(kWatchText);
  WatchOptions options;
  options.AddTo(commandLine);
  if (!commandLine.Parse(arguments)) return Outcome::Done;
  options.Check();
  CheckStandardOutput();
  const Output output(options.output);
  const host::Environment environment = OpenPath(options.path, commandLine);
  ReadFolders(environment, options.path);
  if (ReportProblems(environment, options.path)) return Outcome::Failed;
  PrintedNames names(options, commandLine, environment);
  if (environment.GetRules().foldersHaveMeaning) {
    const auto manager = environment.CreateManager();
    return Watch(*manager, names, options, output, commandLine);
  }
  // The result is empty: the call only lists the folders as they are now, to compare with later.
  static_cast<void>(WithProgress(options.path.quiet,
                                 [&] { return environment.FindNameChangesSince(environment); }));
  // Some of these rules also search folders below the path; all that are searched are watched.
  host::MainSearchPathManager manager(environment.FindSearchedFolders());
  return Watch(manager, names, options, output, commandLine);
}

}  // namespace Corvane::PathManagement::tool
