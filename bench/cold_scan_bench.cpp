// From folders on disk to the first answer: 5,000 folders x 100 files, names cached by the kernel.

#include "bench_tree.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/utilities/file_lookup.h"

#include <dirent.h>

#include <benchmark/benchmark.h>
#include <filesystem>
#include <set>

namespace searchpath_bench {
namespace {

using namespace Corvane::PathManagement;

constexpr auto kPolicy = FilenameMatchingPolicy::FileSystemDefault;

const BenchTree& TreeOf(const benchmark::State& state) {
  return BenchTree::Of(static_cast<std::size_t>(state.range(0)));
}

void Sizes(benchmark::internal::Benchmark* bench) {
  bench->Arg(1000)
      ->Arg(5000)
      ->Unit(benchmark::kMillisecond)
      ->MeasureProcessCPUTime()
      ->UseRealTime();
}

/// The floor: a bare loop of directory reads.
void Floor(benchmark::State& state) {
  const BenchTree& tree = TreeOf(state);
  for (auto _ : state) {
    std::size_t count = 0;
    for (const auto& folder : tree.Folders()) {
      DIR* const directory = opendir(folder.c_str());
      while (readdir(directory) != nullptr) ++count;
      closedir(directory);
    }
    benchmark::DoNotOptimize(count);
  }
}
BENCHMARK(Floor)->Name("cold_scan:floor")->Apply(Sizes);

/// A directory iterator and a set a folder.
void IteratorAndSets(benchmark::State& state) {
  const BenchTree& tree = TreeOf(state);
  for (auto _ : state) {
    std::vector<std::set<std::string>> sets;
    for (const auto& folder : tree.Folders()) {
      auto& names = sets.emplace_back();
      for (const auto& item : std::filesystem::directory_iterator(folder)) {
        names.insert(item.path().filename().native());
      }
    }
    benchmark::DoNotOptimize(sets);
  }
}
BENCHMARK(IteratorAndSets)->Name("cold_scan:iterator_and_sets")->Apply(Sizes);

/// A program that asks one name, which is in the last folder: no index is built.
void OneQuestion(benchmark::State& state) {
  const BenchTree& tree = TreeOf(state);
  const detail::SearchTarget last(TextFromBytes(BenchTree::FileName(tree.Folders().size() - 1, 0)));
  for (auto _ : state) {
    const auto path = tree.MakePath();
    benchmark::DoNotOptimize(FindFirstFileVisibleOnPath(*path, last, kPolicy));
  }
}
BENCHMARK(OneQuestion)->Name("cold_scan:one_question")->Apply(Sizes);

/// A program that goes on asking: the index is built at its second question.
void TwoQuestions(benchmark::State& state) {
  const BenchTree& tree = TreeOf(state);
  const detail::SearchTarget last(TextFromBytes(BenchTree::FileName(tree.Folders().size() - 1, 0)));
  for (auto _ : state) {
    const auto path = tree.MakePath();
    benchmark::DoNotOptimize(FindFirstFileVisibleOnPath(*path, last, kPolicy));
    benchmark::DoNotOptimize(FindFirstFileVisibleOnPath(*path, last, kPolicy));
  }
}
BENCHMARK(TwoQuestions)->Name("cold_scan:with_index")->Apply(Sizes);

}  // namespace
}  // namespace searchpath_bench
