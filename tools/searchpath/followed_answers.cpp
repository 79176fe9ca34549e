#include "followed_answers.h"

#include "difference_output.h"
#include "finder.h"
#include "output.h"
#include "search_path.h"
#include "searchpath/host/name_changes.h"
#include "searchpath/host/working_folder.h"
#include "searchpath/model/byte_text.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <system_error>

namespace Corvane::PathManagement::tool {

namespace {

/// How often to look for changes when the kernel does not announce all of them.
constexpr int kPollInterval = 2000;  // milliseconds

bool AreSameFile(const std::optional<FoundItem>& before, const std::optional<FoundItem>& after) {
  if (!before || !after) return before.has_value() == after.has_value();
  return host::GetNativePath(*before) == host::GetNativePath(*after);
}

/// Adds `root`, the folder of --packages, and the manifests of the packages in it: these decide
/// which folders are on the path.
void AddPackages(const std::string& root, host::OpenedEnvironment& opened) {
  const host::WorkingFolder workingFolder;
  const AbsoluteIRI location = workingFolder.Locate(TextFromBytes(root));
  opened.folders.push_back(location);
  std::error_code error;
  for (std::filesystem::directory_iterator package(root, error), end; !error && package != end;
       package.increment(error)) {
    const std::string manifest = std::filesystem::absolute(package->path() / "searchpath.json");
    opened.files.push_back(workingFolder.Locate(TextFromBytes(manifest)));
  }
}

}  // namespace

host::OpenedEnvironment OpenFollowed(const PathOptions& options, const CommandLine& commandLine,
                                     const std::optional<std::string>& from) {
  host::OpenedEnvironment opened{
      .environment = OpenPath(options, commandLine), .folders = {}, .files = FindLists(options)};
  // The folders that are searched besides the path, depending on which code asks. This environment
  // only finds them out.
  host::EnvironmentOptions besides{.folders = options.GetQuoteFolders(),
                                   .rules = options.GetRules()};
  if (from) besides.folders.push_back(TextFromBytes(*from));
  for (const auto& folder : host::Environment(besides).FindSearchedFolders()) {
    opened.folders.push_back(folder->GetAbsoluteIRI());
  }
  if (options.packages) AddPackages(*options.packages, opened);
  return opened;
}

FollowedAnswers::FollowedAnswers(host::FollowedEnvironment& path, Finder& finder,
                                 const Output& whereTo)
    : followed(path), answers(finder), output(whereTo) {}

void FollowedAnswers::Answer(const std::string& name) {
  Update();
  answers.Answer(name);
  if (!output.IsJson()) return;
  const auto [entry, isNew] = files.insert_or_assign(name, answers.FindFirst(name));
  if (isNew) asked.push_back(name);
}

void FollowedAnswers::Wait() {
  enum Source : std::uint8_t { Input, Changes, Reader };
  std::array<pollfd, 3> sources = {};
  sources[Input] = {.fd = STDIN_FILENO, .events = POLLIN, .revents = 0};
  // A negative descriptor is ignored.
  sources[Changes] = {
      .fd = output.IsJson() ? followed.GetDescriptor() : -1, .events = POLLIN, .revents = 0};
  sources[Reader] = {.fd = STDOUT_FILENO, .events = 0, .revents = 0};  // for errors alone
  do {
    FinishData();
    // With the timeout -1, `poll` waits without limit. Each update may watch other folders.
    const int timeout = output.IsJson() && !followed.WatchesAll() ? kPollInterval : -1;
    if (poll(sources.data(), sources.size(), timeout) < 0 && errno != EINTR) return;
    if ((sources[Reader].revents & POLLERR) != 0) std::raise(SIGPIPE);
    if (output.IsJson()) Update();
  } while (sources[Input].revents == 0);
}

void FollowedAnswers::Update() {
  if (followed.Update() && output.IsJson()) WriteChanges();
}

void FollowedAnswers::WriteChanges() {
  for (const std::string& name : asked) {
    auto& before = files.at(name);
    auto after = answers.FindFirst(name);
    if (AreSameFile(before, after)) continue;
    WriteDifference(output, {.name = TextFromBytes(name), .before = before, .after = after});
    before = std::move(after);
  }
}

}  // namespace Corvane::PathManagement::tool
