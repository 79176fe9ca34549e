// Relative names, "a/b/c.h", by the rules under which no folder has a meaning: warm, the first answer,
// and many names. Names are cached by the kernel.

#include "header_tree.h"
#include "searchpath/model/byte_text.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <dirent.h>
#include <sys/stat.h>

#include <benchmark/benchmark.h>
#include <thread>

namespace searchpath_bench {
namespace {

using namespace Corvane::PathManagement;

constexpr std::size_t kQuestions = 1 << 14;

/// Two probes: of a table of the relative folders, and of the table of the files in one.
class Tables {
 public:
  void Add(const ustring& name, FoundItem file) {
    const std::size_t split = name.rfind(u'/');
    folders[name.substr(0, split)].try_emplace(name.substr(split + 1), std::move(file));
  }
  [[nodiscard]] boost::optional<FoundItem> Find(std::u16string_view name) const {
    const std::size_t split = name.rfind(u'/');
    const auto folder = folders.find(name.substr(0, split));
    if (folder == folders.end()) return {};
    const auto file = folder->second.find(name.substr(split + 1));
    return file == folder->second.end() ? boost::optional<FoundItem>() : file->second;
  }

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view text) const noexcept {
      return std::hash<std::u16string_view>()(text);
    }
  };
  template <class Value>
  using Table = boost::unordered_flat_map<ustring, Value, Hash, std::equal_to<>>;
  Table<Table<FoundItem>> folders;
};

void WarmFloor(benchmark::State& state) {
  const HeaderTree& tree = HeaderTree::Of(static_cast<std::size_t>(state.range(0)), 4);
  const host::Environment environment(tree.Options());
  Tables tables;
  for (const auto& name : tree.Names()) {
    tables.Add(TextFromBytes(name), *environment.Find({.name = TextFromBytes(name)}));
  }
  const auto questions = tree.Questions(kQuestions);
  std::thread([] {}).join();  // counts of owners are atomic from the first thread on
  std::size_t at = 0;
  for (auto _ : state) {
    auto found = tables.Find(questions[at++ % kQuestions].name);
    benchmark::DoNotOptimize(found);
  }
}

void Warm(benchmark::State& state) {
  const HeaderTree& tree = HeaderTree::Of(static_cast<std::size_t>(state.range(0)), 4);
  const host::Environment environment(tree.Options());
  const auto questions = tree.Questions(kQuestions);
  for (const auto& question : questions) benchmark::DoNotOptimize(environment.Find(question));
  std::thread([] {}).join();
  std::size_t at = 0;
  for (auto _ : state) {
    auto found = environment.Find(questions[at++ % kQuestions]);
    benchmark::DoNotOptimize(found);
  }
}

void PathSizes(benchmark::internal::Benchmark* bench) {
  bench->Arg(1)->Arg(10)->Arg(100)->Arg(1000);
}
BENCHMARK(WarmFloor)->Name("rules_warm:floor")->Apply(PathSizes);
BENCHMARK(Warm)->Name("rules_warm:environment")->Apply(PathSizes);

/// The floor of a first answer in the last root: one question to the system for each.
void ColdFloor(benchmark::State& state) {
  const HeaderTree& tree = HeaderTree::Of(static_cast<std::size_t>(state.range(0)), 4);
  for (auto _ : state) {
    for (const auto& root : tree.Roots()) {
      struct stat status = {};
      benchmark::DoNotOptimize(stat((root + "/" + tree.Names().back()).c_str(), &status));
    }
  }
}
BENCHMARK(ColdFloor)->Name("rules_cold:floor")->Apply(PathSizes);

void Cold(benchmark::State& state) {
  const HeaderTree& tree = HeaderTree::Of(static_cast<std::size_t>(state.range(0)), 4);
  const host::Lookup last{.name = TextFromBytes(tree.Names().back())};
  const auto options = tree.Options();
  for (auto _ : state) {
    const host::Environment environment(options);
    if (!environment.Find(last)) state.SkipWithError("not found");
  }
}
BENCHMARK(Cold)->Name("rules_cold:environment")->Apply(PathSizes);

constexpr std::size_t kManyRoots = 5;
constexpr std::size_t kFoldersInARoot = 2000;

/// The floor of 100,000 names: a bare loop of directory reads, and the two probes for each name.
void ManyFloor(benchmark::State& state) {
  const HeaderTree& tree = HeaderTree::Of(kManyRoots, kFoldersInARoot);
  const auto questions = tree.Questions(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    Tables tables;
    for (const auto& root : tree.Roots()) {
      for (std::size_t folder = 0; folder < kFoldersInARoot; ++folder) {
        const std::string below = "part_" + std::to_string(folder) + "/detail/";
        DIR* const directory = opendir((root + "/" + below).c_str());
        while (const dirent* item = readdir(directory)) {
          tables.Add(TextFromBytes(below + item->d_name), FoundItem(nullptr, nullptr));
        }
        closedir(directory);
      }
    }
    for (const auto& question : questions) benchmark::DoNotOptimize(tables.Find(question.name));
  }
}

void Many(benchmark::State& state) {
  const HeaderTree& tree = HeaderTree::Of(kManyRoots, kFoldersInARoot);
  const auto questions = tree.Questions(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    const host::Environment environment(tree.Options());
    for (const auto& question : questions) benchmark::DoNotOptimize(environment.Find(question));
  }
}
BENCHMARK(ManyFloor)->Name("rules_many:floor")->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(Many)->Name("rules_many:environment")->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace searchpath_bench
