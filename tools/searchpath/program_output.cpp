#include "program_output.h"

#include "command_line.h"
#include "platform/descriptor.h"
#include "standard_streams.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <spawn.h>
#include <string_view>
#include <system_error>

namespace Corvane::PathManagement::tool {

namespace {

using fl::filesystem::detail::Descriptor;
using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kLongest(10);
constexpr std::size_t kMostOutput = std::size_t{16} << 20;  // of each stream, in bytes

// Both ends of a pipe. A started program inherits neither, only the copy that `SpawnActions` makes.
struct Pipe {
  Pipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
      throw std::system_error(errno, std::generic_category(), "cannot make a pipe");
    }
    readEnd = Descriptor(ends[0]);
    writeEnd = Descriptor(ends[1]);
  }

  Descriptor readEnd{-1};
  Descriptor writeEnd{-1};
};

// How a program is started: its streams, its folder and its process group.
class SpawnActions {
 public:
  // `out` and `error` get what the program writes.
  SpawnActions(const ProgramQuestion& question, const Pipe& out, const Pipe& error) {
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, out.writeEnd.Get(), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, error.writeEnd.Get(), STDERR_FILENO);
    if (question.folder) {
      posix_spawn_file_actions_addchdir_np(&actions, question.folder->c_str());
    }
    // The program gets its own process group, so that it can be killed with all that it starts.
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    posix_spawnattr_setpgroup(&attributes, 0);
  }
  SpawnActions(const SpawnActions&) = delete;
  SpawnActions& operator=(const SpawnActions&) = delete;
  ~SpawnActions() {
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
  }

  // Starts the program, and sets `process`. Returns the errno of a failure, else 0.
  int Start(const ProgramQuestion& question, pid_t& process) const {
    std::vector<char*> words;
    words.reserve(question.words.size() + 1);
    // `posix_spawnp` takes `char*`, but does not change the words.
    for (const std::string& word : question.words) words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    std::string locale = "LC_ALL=C";
    std::vector<char*> variables;
    for (char** variable = environ; *variable != nullptr; ++variable) {
      if (!std::string_view(*variable).starts_with("LC_ALL=")) variables.push_back(*variable);
    }
    variables.insert(variables.end(), {locale.data(), nullptr});
    return posix_spawnp(&process, words[0], &actions, &attributes, words.data(), variables.data());
  }

 private:
  posix_spawn_file_actions_t actions{};
  posix_spawnattr_t attributes{};
};

// A program that runs. The destructor kills it, unless `Wait` has seen its end.
class RunningProgram {
 public:
  // `programQuestion` has to outlive this object.
  explicit RunningProgram(const ProgramQuestion& programQuestion) : question(programQuestion) {
    const int error = SpawnActions(question, out, errors).Start(question, process);
    if (error == ENOENT) RefuseAnswer(question, "there is no such program");
    if (error != 0) RefuseAnswer(question, std::generic_category().message(error));
    // Closed here, so that the streams end as soon as the program has closed them, too.
    out.writeEnd = Descriptor(-1);
    errors.writeEnd = Descriptor(-1);
  }
  RunningProgram(const RunningProgram&) = delete;
  RunningProgram& operator=(const RunningProgram&) = delete;
  ~RunningProgram() {
    if (hasEnded) return;
    kill(-process, SIGKILL);  // the whole process group
    waitpid(process, nullptr, 0);
  }

  // All that the program writes, until both streams end.
  ProgramOutput Read() {
    ProgramOutput output;
    const std::array<std::string*, 2> texts = {&output.out, &output.error};
    std::array<pollfd, 2> streams = {
        {{.fd = out.readEnd.Get(), .events = POLLIN, .revents = 0},
         {.fd = errors.readEnd.Get(), .events = POLLIN, .revents = 0}}};
    while (streams[0].fd >= 0 || streams[1].fd >= 0) {
      WaitFor(streams);
      for (std::size_t i = 0; i < streams.size(); ++i) {
        if (streams.at(i).fd < 0 || streams.at(i).revents == 0) continue;
        if (!ReadSome(streams.at(i).fd, *texts.at(i))) streams.at(i).fd = -1;
      }
    }
    return output;
  }

  // Waits until the program has ended. Returns its status, as `waitpid` gives it. Asks again and
  // again, since `waitpid` has no time limit.
  int Wait() {
    int status = 0;
    std::array<pollfd, 0> nothing{};
    for (;;) {
      const pid_t ended = waitpid(process, &status, WNOHANG);
      if (ended == process) break;
      RefuseIfLate();
      poll(nothing.data(), 0, 1);  // sleeps for a millisecond
    }
    hasEnded = true;
    return status;
  }

 private:
  [[nodiscard]] std::chrono::milliseconds GetTimeLeft() const {
    return std::chrono::ceil<std::chrono::milliseconds>(start + kLongest - Clock::now());
  }

  void RefuseIfLate() const {
    if (GetTimeLeft().count() <= 0) RefuseAnswer(question, "no answer within 10 seconds");
  }

  // Waits until a stream can be read or has ended.
  void WaitFor(std::array<pollfd, 2>& streams) const {
    do {
      RefuseIfLate();
    } while (poll(streams.data(), streams.size(), static_cast<int>(GetTimeLeft().count())) <= 0);
  }

  // Appends what `stream` has to `text`. Returns whether there may be more.
  bool ReadSome(int stream, std::string& text) const {
    std::array<char, 4096> bytes{};
    const ssize_t got = read(stream, bytes.data(), bytes.size());
    if (got < 0) return errno == EINTR;
    text.append(bytes.data(), static_cast<std::size_t>(got));
    if (text.size() > kMostOutput) RefuseAnswer(question, "it does not stop writing");
    return got > 0;
  }

  const ProgramQuestion& question;
  Clock::time_point start = Clock::now();
  Pipe out;
  Pipe errors;
  pid_t process = -1;     // also the number of its process group
  bool hasEnded = false;  // whether `Wait` has seen the end
};

// ": " and the line that best says what went wrong: the first one with "error:", which compilers
// write, or else the last one, as of interpreters. Empty when nothing was written.
std::string GetComplaint(const std::string& errors) {
  std::string last;
  for (std::size_t begin = 0; begin < errors.size();) {
    const std::size_t end = std::min(errors.find('\n', begin), errors.size());
    if (end > begin) last = errors.substr(begin, end - begin);
    if (last.find("error:") != std::string::npos) break;
    begin = end + 1;
  }
  return last.empty() ? "" : ": " + last;
}

}  // namespace

ProgramOutput AskProgram(const ProgramQuestion& question) {
  RunningProgram running(question);
  ProgramOutput output = running.Read();
  const int status = running.Wait();
  if (WIFSIGNALED(status)) {
    RefuseAnswer(question, "ended by signal " + std::to_string(WTERMSIG(status)));
  }
  if (WEXITSTATUS(status) != 0) {
    RefuseAnswer(question,
                 "exit code " + std::to_string(WEXITSTATUS(status)) + GetComplaint(output.error));
  }
  return output;
}

void RefuseAnswer(const ProgramQuestion& question, const std::string& why) {
  throw UsageError("cannot ask " + Quoted(question.program) + " for its folders: " + why + "; " +
                   question.advice);
}

}  // namespace Corvane::PathManagement::tool
