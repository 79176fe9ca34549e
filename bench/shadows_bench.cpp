// Every name that hides a file: 5,000 folders x 100 files, in fresh environments; names cached by the
// kernel.

#include "bench_tree.h"
#include "searchpath/host/environment.h"
#include "searchpath/model/byte_text.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <dirent.h>

#include <benchmark/benchmark.h>
#include <functional>

namespace searchpath_bench {
namespace {

using namespace Corvane::PathManagement;

/// The floor: a bare loop of directory reads, and one hash map that counts the names.
void Floor(benchmark::State& state) {
  const BenchTree& tree = BenchTree::Of(state);
  for (auto _ : state) {
    boost::unordered_flat_map<std::string, std::size_t, std::hash<std::string>> counts;
    for (const auto& folder : tree.Folders()) {
      DIR* const directory = opendir(folder.c_str());
      while (const dirent* item = readdir(directory)) {
        if (item->d_type == DT_REG) ++counts[item->d_name];
      }
      closedir(directory);
    }
    benchmark::DoNotOptimize(counts);
  }
}
BENCHMARK(Floor)->Name("shadows:floor")->Apply(FolderCounts);

void FindShadows(benchmark::State& state, std::size_t times, FilenameMatchingPolicy policy) {
  const BenchTree& tree = BenchTree::Of(state);
  host::EnvironmentOptions options{.folders = {}, .keepDuplicates = true};
  for (std::size_t time = 0; time < times; ++time) {
    for (const auto& folder : tree.Folders()) options.folders.push_back(TextFromBytes(folder));
  }
  for (auto _ : state) {
    const host::Environment environment(options);
    const auto report = environment.FindShadows({.policy = policy});
    if (report.shadows.empty() != (times == 1)) state.SkipWithError("wrong shadows");
  }
}
BENCHMARK_CAPTURE(FindShadows, "", 1, FilenameMatchingPolicy::CaseSensitive)
    ->Name("shadows:none")
    ->Apply(FolderCounts);
BENCHMARK_CAPTURE(FindShadows, "", 1, FilenameMatchingPolicy::IgnoreCase)
    ->Name("shadows:none_ignoring_case")
    ->Apply(FolderCounts);
/// Each folder is on the path twice: every name hides a file, which is the same one.
BENCHMARK_CAPTURE(FindShadows, "", 2, FilenameMatchingPolicy::CaseSensitive)
    ->Name("shadows:every_name")
    ->Apply(FolderCounts);

}  // namespace
}  // namespace searchpath_bench
