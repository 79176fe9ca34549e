// Many names by the rules of other programs, each on a path that has just been opened, beside these
// programs themselves: a C compiler that is asked whether headers are there, a library that asks the disk
// for each name, and a shell. Times are of one name. Names are cached by the kernel.

#include "header_tree.h"

#include <sys/stat.h>

#include <array>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <functional>
#include <kpathsea/kpathsea.h>

namespace searchpath_bench {
namespace {

constexpr std::size_t kNames = 2000;
constexpr std::size_t kFoldersInARoot = 4;

const HeaderTree& TreeOf(const benchmark::State& state) {
  return HeaderTree::Of(static_cast<std::size_t>(state.range(0)), kFoldersInARoot);
}

double Seconds(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Sets the time of one of the names that `work` asks for.
void MeasureNames(benchmark::State& state, const std::function<void()>& work) {
  for (auto _ : state) state.SetIterationTime(Seconds(work) / kNames);
}

std::vector<std::string> NamesOf(const HeaderTree& tree) {
  std::vector<std::string> names;
  for (const auto& question : tree.Questions(kNames)) {
    names.push_back(BytesFromText(question.name).value());
  }
  return names;
}

void OfEnvironment(benchmark::State& state, const host::LookupRules& rules) {
  const HeaderTree& tree = TreeOf(state);
  const auto questions = tree.Questions(kNames);
  MeasureNames(state, [&] {
    const host::Environment environment(tree.Options(rules));
    for (const auto& question : questions) benchmark::DoNotOptimize(environment.Find(question));
  });
}

/// The floor: the system is asked for the name in one folder after the other.
void AskSystem(const std::vector<std::string>& folders, const std::string& name) {
  for (const auto& folder : folders) {
    struct stat status = {};
    if (stat((folder + '/' + name).c_str(), &status) == 0) return;
  }
}

void HeadersFloor(benchmark::State& state) {
  const HeaderTree& tree = TreeOf(state);
  const auto names = NamesOf(tree);
  MeasureNames(state, [&] {
    for (const auto& name : names) AskSystem(tree.Roots(), name);
  });
}

/// What it takes to ask the compiler for these names beyond what it takes to start it.
void HeadersOfCompiler(benchmark::State& state) {
  const HeaderTree& tree = TreeOf(state);
  const std::string source = tree.Roots().front() + "/source.c";
  std::ofstream questions(source);
  for (const auto& name : NamesOf(tree))
    questions << "#if __has_include(<" << name << ">)\n#endif\n";
  questions.close();
  const std::string empty = tree.Roots().front() + "/empty.c";
  std::ofstream(empty).close();
  std::string command = "gcc -E -nostdinc";
  for (const auto& root : tree.Roots()) command += " -I" + root;
  const auto run = [&](const std::string& file) {
    if (std::system((command + ' ' + file + " >/dev/null").c_str()) != 0) {
      state.SkipWithError("gcc fails");
    }
  };
  for (auto _ : state) {
    const double start = Seconds([&] { run(empty); });
    state.SetIterationTime((Seconds([&] { run(source); }) - start) / kNames);
  }
}

void HeadersOfKpathsea(benchmark::State& state) {
  const HeaderTree& tree = TreeOf(state);
  const auto names = NamesOf(tree);
  std::string path;
  for (const auto& root : tree.Roots()) path += (path.empty() ? "" : ":") + root;
  MeasureNames(state, [&] {
    kpathsea kpse = kpathsea_new();
    kpathsea_set_program_name(kpse, "/bin/sh", "searchpath-bench");
    for (const auto& name : names)
      std::free(kpathsea_path_search(kpse, path.c_str(), name.c_str(), 0));
    kpathsea_finish(kpse);
  });
}

/// Folders of programs: the deepest folders of the tree, whose files may be executed.
struct Programs {
  std::vector<std::string> folders;
  std::vector<std::string> names;

  explicit Programs(const HeaderTree& tree) {
    for (const auto& root : tree.Roots()) {
      for (std::size_t part = 0; part < kFoldersInARoot; ++part) {
        folders.push_back(root + "/part_" + std::to_string(part) + "/detail");
        for (const auto& file : std::filesystem::directory_iterator(folders.back())) {
          chmod(file.path().c_str(), 0755);
        }
      }
    }
    for (const auto& name : NamesOf(tree)) names.push_back(name.substr(name.rfind('/') + 1));
  }
};

void CommandsFloor(benchmark::State& state) {
  const Programs programs(TreeOf(state));
  MeasureNames(state, [&] {
    for (const auto& name : programs.names) AskSystem(programs.folders, name);
  });
}

void CommandsOfEnvironment(benchmark::State& state) {
  const Programs programs(TreeOf(state));
  host::EnvironmentOptions options{.folders = {}, .rules = host::kProgramRules};
  for (const auto& folder : programs.folders) options.folders.push_back(TextFromBytes(folder));
  std::vector<ustring> names;
  for (const auto& name : programs.names) names.push_back(TextFromBytes(name));
  MeasureNames(state, [&] {
    const host::Environment environment(options);
    for (const auto& name : names) benchmark::DoNotOptimize(environment.Find({.name = name}));
  });
}

/// In a shell that runs already.
void CommandsOfDash(benchmark::State& state) {
  const HeaderTree& tree = TreeOf(state);
  const Programs programs(tree);
  const std::string script = tree.Roots().front() + "/script";
  std::ofstream lines(script);
  lines << "PATH=";
  for (const auto& folder : programs.folders) lines << folder << ':';
  lines << "/\necho ready\n";
  for (const auto& name : programs.names) lines << "command -v " << name << " >/dev/null\n";
  lines << "echo done\n";
  lines.close();
  for (auto _ : state) {
    std::array<char, 16> line{};
    FILE* const shell = popen(("exec dash " + script).c_str(), "r");
    bool isDone = std::fgets(line.data(), line.size(), shell) != nullptr;
    const double time =
        Seconds([&] { isDone = isDone && std::fgets(line.data(), line.size(), shell) != nullptr; });
    pclose(shell);
    if (!isDone) return state.SkipWithError("dash ends early");
    state.SetIterationTime(time / kNames);
  }
}

void Cases(benchmark::internal::Benchmark* bench) {
  bench->Arg(5)->Arg(50)->UseManualTime()->Iterations(10);
}
BENCHMARK(HeadersFloor)->Name("headers:floor")->Apply(Cases);
BENCHMARK_CAPTURE(OfEnvironment, include, host::kIncludeRules)
    ->Name("headers:environment")
    ->Apply(Cases);
BENCHMARK(HeadersOfCompiler)->Name("headers:gcc")->Apply(Cases);
BENCHMARK(HeadersOfKpathsea)->Name("headers:kpathsea")->Apply(Cases);
BENCHMARK(CommandsFloor)->Name("commands:floor")->Apply(Cases);
BENCHMARK(CommandsOfEnvironment)->Name("commands:environment")->Apply(Cases);
BENCHMARK(CommandsOfDash)->Name("commands:dash")->Apply(Cases);

}  // namespace
}  // namespace searchpath_bench
