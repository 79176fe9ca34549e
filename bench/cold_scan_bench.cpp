// From folders on disk to the first answer: 5,000 folders x 100 files, names cached by the kernel.

#include "bench_tree.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/utilities/file_lookup.h"

#include <benchmark/benchmark.h>
#include <filesystem>
#include <set>

namespace searchpath_bench {
namespace {

using namespace Corvane::PathManagement;

constexpr auto kPolicy = FilenameMatchingPolicy::FileSystemDefault;

/// The floor: a bare loop of directory reads.
void Floor(benchmark::State& state) {
  const BenchTree& tree = BenchTree::Of(state);
  for (auto _ : state) benchmark::DoNotOptimize(ReadBare(tree.Folders()));
}
BENCHMARK(Floor)->Name("cold_scan:floor")->Apply(FolderCounts);

/// A directory iterator and a set a folder.
void IteratorAndSets(benchmark::State& state) {
  const BenchTree& tree = BenchTree::Of(state);
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
BENCHMARK(IteratorAndSets)->Name("cold_scan:iterator_and_sets")->Apply(FolderCounts);

/// A program that asks one name, which is in the last folder: no index is built.
void OneQuestion(benchmark::State& state) {
  const BenchTree& tree = BenchTree::Of(state);
  const detail::SearchTarget last(TextFromBytes(BenchTree::FileName(tree.Folders().size() - 1, 0)));
  for (auto _ : state) {
    const auto path = tree.MakePath();
    benchmark::DoNotOptimize(FindFirstFileVisibleOnPath(*path, last, kPolicy));
  }
}
BENCHMARK(OneQuestion)->Name("cold_scan:one_question")->Apply(FolderCounts);

/// A program that goes on asking: the index is built at its ninth question.
void NineQuestions(benchmark::State& state) {
  const BenchTree& tree = BenchTree::Of(state);
  const detail::SearchTarget last(TextFromBytes(BenchTree::FileName(tree.Folders().size() - 1, 0)));
  for (auto _ : state) {
    const auto path = tree.MakePath();
    for (int question = 0; question < 9; ++question) {
      benchmark::DoNotOptimize(FindFirstFileVisibleOnPath(*path, last, kPolicy));
    }
  }
}
BENCHMARK(NineQuestions)->Name("cold_scan:with_index")->Apply(FolderCounts);

}  // namespace
}  // namespace searchpath_bench
