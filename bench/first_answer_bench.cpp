// A program that asks one name: the path is made, the name asked for, and all forgotten. The name is in
// the first, the middle or the last folder.

#include "bench_tree.h"
#include "searchpath/host/environment.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/utilities/file_lookup.h"

#include <sys/ptrace.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <benchmark/benchmark.h>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <functional>
#include <stdexcept>

namespace searchpath_bench {
namespace {

using namespace Corvane::PathManagement;

enum class Place { First, Middle, Last };

/// A question whose answer stands at one place of a path.
struct Question {
  Question(const BenchTree& tree, Place place) : folders(tree.Folders()) {
    const std::size_t last = folders.size() - 1;
    const std::size_t at = place == Place::First ? 0 : place == Place::Middle ? last / 2 : last;
    name = BenchTree::FileName(at, 0);
    for (const auto& folder : folders) texts.push_back(TextFromBytes(folder));
  }

  const std::vector<std::string>& folders;
  std::vector<std::u16string> texts;
  std::string name;
};

/// Follows a child of this process and its threads to their end; returns how many system calls they
/// make.
std::size_t CountCallsOf(pid_t child) {
  int status = 0;
  waitpid(child, &status, 0);  // it has stopped itself
  ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_TRACECLONE);
  std::size_t stops = 0;  // two for each call
  ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
  for (pid_t thread = 0; (thread = waitpid(-1, &status, __WALL)) > 0;) {
    if (WIFSTOPPED(status)) {
      if (WSTOPSIG(status) == (SIGTRAP | 0x80)) ++stops;
      ptrace(PTRACE_SYSCALL, thread, nullptr, nullptr);
    } else if (thread == child) {
      break;
    }
  }
  return stops / 2;
}

/// How many system calls `work` makes, counted from outside.
std::size_t CountCalls(const std::function<void()>& work) {
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no process");
  if (child == 0) {
    ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    raise(SIGSTOP);
    work();
    _exit(0);
  }
  return CountCallsOf(child);
}

void Measure(benchmark::State& state, const std::function<void()>& work) {
  for (auto _ : state) work();
  state.counters["calls"] = static_cast<double>(CountCalls(work));
}

/// The floor: one question to the disk for each folder up to the answer.
void Floor(benchmark::State& state, Place place) {
  const Question question(BenchTree::Of(state), place);
  Measure(state, [&] {
    for (const auto& folder : question.folders) {
      if (access((folder + '/' + question.name).c_str(), F_OK) == 0) return;
    }
    throw std::runtime_error("not found");
  });
}

void OfEnvironment(benchmark::State& state, Place place) {
  const Question question(BenchTree::Of(state), place);
  const std::u16string name = TextFromBytes(question.name);
  Measure(state, [&] {
    const host::Environment environment(question.texts);
    if (!environment.Find({.name = name})) throw std::runtime_error("not found");
  });
}

/// The two questions of the library's function, which works on any path.
void OfFunction(benchmark::State& state, Place place) {
  const BenchTree& tree = BenchTree::Of(state);
  const detail::SearchTarget target(TextFromBytes(Question(tree, place).name));
  Measure(state, [&] {
    const auto path = tree.MakePath();
    if (!FindFirstFileVisibleOnPath(*path, target, FilenameMatchingPolicy::FileSystemDefault)) {
      throw std::runtime_error("not found");
    }
  });
}

/// A shell's own look-up, in a shell that runs already.
void OfDash(benchmark::State& state, Place place) {
  const BenchTree& tree = BenchTree::Of(state);
  const Question question(tree, place);
  constexpr int repetitions = 20;
  const std::string script = tree.Root() + "/script";
  std::ofstream lines(script);
  lines << "PATH=/";
  for (const auto& folder : question.folders) lines << ':' << folder;
  lines << "\necho ready\n";
  for (int count = 0; count < repetitions; ++count) {
    lines << "hash -r; command -v " << question.name << " >/dev/null || exit\n";
  }
  lines << "echo done\n";
  lines.close();
  for (const auto& folder : question.folders) {  // a shell finds what may be executed
    chmod((folder + '/' + question.name).c_str(), 0755);
  }
  for (auto _ : state) {
    std::array<char, 16> line{};
    FILE* const shell = popen(("exec dash " + script).c_str(), "r");
    const bool isReady = std::fgets(line.data(), line.size(), shell) != nullptr;
    const auto start = std::chrono::steady_clock::now();
    const bool isDone = isReady && std::fgets(line.data(), line.size(), shell) != nullptr;
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
    pclose(shell);
    if (!isDone) return state.SkipWithError("dash does not find it");
    state.SetIterationTime(time.count() / repetitions);
  }
}

void Add(const std::string& row, Place place) {
  const auto add = [&](const std::string& name, auto run) {
    return benchmark::RegisterBenchmark((row + ":" + name).c_str(), run, place)
        ->Arg(100)
        ->Arg(5000)
        ->Unit(benchmark::kMicrosecond);
  };
  add("floor", Floor);
  add("environment", OfEnvironment);
  add("function", OfFunction);
  // As many as a median needs: the time of a process is no loop that grows.
  add("dash", OfDash)->UseManualTime()->Iterations(10);
}

/// The floor: one question to the disk about each folder.
void ConstructionFloor(benchmark::State& state) {
  const BenchTree& tree = BenchTree::Of(state);
  for (auto _ : state) {
    for (const auto& folder : tree.Folders()) {
      struct stat status = {};
      benchmark::DoNotOptimize(lstat(folder.c_str(), &status));
    }
  }
}
BENCHMARK(ConstructionFloor)->Name("construction:floor")->Arg(100)->Arg(5000);

/// A path without repeats, which needs the canonical location of every folder.
void Construction(benchmark::State& state) {
  const Question question(BenchTree::Of(state), Place::First);
  for (auto _ : state) {
    const host::Environment environment(question.texts);
    benchmark::DoNotOptimize(environment.GetPath());
  }
}
BENCHMARK(Construction)->Name("construction:environment")->Arg(100)->Arg(5000);

const bool kAreAdded = [] {
  Add("answer_in_first", Place::First);
  Add("answer_in_middle", Place::Middle);
  Add("answer_in_last", Place::Last);
  return true;
}();

}  // namespace
}  // namespace searchpath_bench
