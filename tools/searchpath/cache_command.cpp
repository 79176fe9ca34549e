#include "cache_file.h"
#include "command_line.h"
#include "commands.h"
#include "output.h"
#include "path_folder.h"
#include "phrases.h"
#include "progress.h"
#include "saved_path.h"
#include "search_path.h"
#include "searchpath/host/words.h"
#include "until_exit.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

namespace {

constexpr CommandText kWriteText = {
    "cache write", "FILE", "Writes a cache of the path to FILE.",
    "  searchpath cache write lib/cache --path lib --recursive\n"
    "  searchpath find plot.zt --cache lib/cache\n",
    "The cache:\n"
    "  It holds the path, the names in each of its folders, and when each folder last\n"
    "  changed. With --cache FILE, folders that have not changed are not read again;\n"
    "  all others are, so the answers are the same. FILE is replaced in one step.\n"
    "  Folders below the folder that holds FILE are saved relative to it, so the tree\n"
    "  can be moved together with its cache.\n"
    "\n"
    "Exit: 0 the cache is written, 2 wrong usage or failure.\n"
    "\n"};

constexpr CommandText kVerifyText = {
    "cache verify", "FILE",
    "Checks that the cache FILE is whole, and prints which folders have changed.",
    "  searchpath cache verify lib/cache\n"
    "  searchpath cache verify lib/cache --json\n",
    "What is printed:\n"
    "  stale   something in the folder was added, removed or renamed since, or\n"
    "          another folder is in its place\n"
    "  gone    the folder does not exist any more or cannot be read\n"
    "  unsure  a later change might not show in its times: it had changed less than\n"
    "          two seconds before it was read, or its times are in the future\n"
    "  Commands read such folders again. --json prints the fresh ones, too.\n"
    "\n"
    "Exit: 0 all folders are fresh, 1 some are not, 2 wrong usage, or FILE cannot be\n"
    "used as a cache.\n"};

constexpr const char* kCacheHelp =
    "Usage: searchpath cache write FILE [OPTION]...\n"
    "       searchpath cache verify FILE [OPTION]...\n"
    "Writes a cache of a path, or checks which of its folders have changed.\n"
    "\n"
    "searchpath cache write -h and searchpath cache verify -h show the options. All\n"
    "commands that search a path take --cache FILE.\n";

constexpr const char* kCacheExamples =
    "  searchpath cache write lib/cache --path lib --recursive\n"
    "  searchpath find plot.zt --cache lib/cache\n"
    "  searchpath cache verify lib/cache\n";

// The one operand. `Parse` has refused a command line without operands.
const std::string& GetFile(const CommandLine& commandLine) {
  const auto& files = commandLine.GetOperands();
  if (files.size() == 1) return files.front();
  throw UsageError("a cache is one FILE; leave out " + Quoted(files[1]));
}

Outcome Write(const Arguments& arguments) {
  CommandLine commandLine(kWriteText);
  PathOptions path;
  path.AddTo(commandLine);
  if (!commandLine.Parse(arguments)) return Outcome::Done;
  const std::string& file = GetFile(commandLine);
  const host::Environment& environment = KeepUntilExit(OpenPath(path, commandLine));
  return SavePath(environment, path, file);
}

// A folder of a cache, and whether it has changed.
struct CheckedFolder {
  std::shared_ptr<const host::FolderEntry> entry;  // as it was saved
  std::size_t files;
  host::Freshness freshness;
};

// Why the folder is not fresh; `nullopt` when it is.
std::optional<std::string> GetReason(const CheckedFolder& folder) {
  using enum host::Freshness;
  if (folder.freshness == Fresh) return std::nullopt;
  if (folder.freshness == Stale) return "changed since it was listed";
  if (folder.freshness == Unknown) return "its times may not show a later change";
  // The folder is gone. A new entry says why, unless the folder has come back meanwhile.
  const auto problems = host::FolderEntry::Create(folder.entry->GetAbsoluteIRI())->GetProblems();
  return problems.empty() ? "could not be read" : problems.front().GetText();
}

std::vector<CheckedFolder> Check(const host::PathEntryFactory& cache) {
  const Progress progress(/*quiet=*/false);
  std::vector<CheckedFolder> checked;
  for (auto& entry : cache.CreateSavedFolders()) {
    const std::size_t files = entry->GetItemCount();
    const host::Freshness freshness = entry->GetFreshness();
    checked.push_back({std::move(entry), files, freshness});
  }
  return checked;
}

void WriteObjects(const Output& output, const std::vector<CheckedFolder>& folders) {
  for (const CheckedFolder& folder : folders) {
    nlohmann::ordered_json object;
    AddText(object, "path", GetNativePath(*folder.entry));
    object["items"] = folder.files;
    object["state"] = GetWord(folder.freshness);
    object["reason"] = nullptr;
    if (const auto reason = GetReason(folder)) object["reason"] = *reason;
    output.WriteObject(object);
  }
}

void WriteWords(const Output& output, const std::vector<CheckedFolder>& folders,
                std::size_t mainFolders) {
  constexpr std::size_t stateWidth = 6;  // of "unsure"
  std::size_t files = 0;
  for (const CheckedFolder& folder : folders) {
    files += folder.files;
    const auto reason = GetReason(folder);
    if (!reason) continue;
    output.WriteLine(GetPadded(GetWord(folder.freshness), stateWidth) + "  " +
                     output.GetShown(GetNativePath(*folder.entry)) + "  (" + *reason + ')');
  }
  output.WriteLine("a path of " + GetCounted(mainFolders, "folder") + "; in all " +
                   GetCounted(folders.size(), "folder") + " with " + GetCounted(files, "file"));
}

Outcome Verify(const Arguments& arguments) {
  CommandLine commandLine(kVerifyText);
  OutputOptions outputOptions;
  outputOptions.AddTo(commandLine);
  outputOptions.AddExitCodeTo(commandLine);
  if (!commandLine.Parse(arguments)) return Outcome::Done;
  const Output output(outputOptions);
  const auto cache = ReadListing(GetFile(commandLine), host::ListingUse::AsSaved);
  const std::vector<CheckedFolder> folders = Check(cache);
  if (output.IsJson()) {
    WriteObjects(output, folders);
  } else {
    WriteWords(output, folders, cache.GetFolders().size());
  }
  const bool isFresh = std::all_of(folders.begin(), folders.end(), [](const auto& folder) {
    return folder.freshness == host::Freshness::Fresh;
  });
  return isFresh ? Outcome::Clean : Outcome::Findings;
}

}  // namespace

Outcome RunCache(const Arguments& arguments) {
  if (arguments.describe) {  // describes both commands and runs neither of them
    static_cast<void>(Write(arguments));
    return Verify(arguments);
  }
  const auto& words = arguments.words;
  const std::string word = words.empty() ? "" : words.front();
  if (word == "write") return Write({.words = {words.begin() + 1, words.end()}});
  if (word == "verify") return Verify({.words = {words.begin() + 1, words.end()}});
  if (AnswerHelp(word, kCacheHelp, kCacheExamples)) return Outcome::Done;
  throw UsageError("after cache comes write or verify" +
                   (word.empty() ? "" : ", not " + Quoted(word)) +
                   "; type: searchpath cache write FILE --path FOLDERS");
}

}  // namespace Corvane::PathManagement::tool
