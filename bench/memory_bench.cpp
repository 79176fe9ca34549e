// The memory of a tree that is scanned and indexed, before its items are asked for, and then of
// each item. The floor is the bytes of its names as UTF-16; the times of this program mean nothing.

#include "bench_tree.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/utilities/file_lookup.h"

#include <benchmark/benchmark.h>
#include <malloc.h>

namespace searchpath_bench {
namespace {

using namespace Corvane::PathManagement;

double BytesInUse() {
  const auto info = mallinfo2();
  return static_cast<double>(info.uordblks + info.hblkhd);
}

void Memory(benchmark::State& state) {
  const BenchTree& tree = BenchTree::Of(static_cast<std::size_t>(state.range(0)));
  double nameBytes = 0;
  for (std::size_t folder = 0; folder < tree.Folders().size(); ++folder) {
    for (std::size_t file = 0; file < kFilesInAFolder; ++file) {
      nameBytes += static_cast<double>(2 * BenchTree::FileName(folder, file).size());
    }
  }
  const detail::SearchTarget absent(u"absent");
  double bytes = 0;
  for (auto _ : state) {
    const double before = BytesInUse();
    const auto path = tree.MakePath();
    for (int question = 0; question < 9; ++question) {  // the ninth builds the index
      benchmark::DoNotOptimize(
          FindFirstFileVisibleOnPath(*path, absent, FilenameMatchingPolicy::FileSystemDefault));
    }
    bytes = BytesInUse() - before;
    for (std::size_t folder = 0; folder < tree.Folders().size(); ++folder) {
      for (std::size_t file = 0; file < kFilesInAFolder; ++file) {
        const detail::SearchTarget target(TextFromBytes(BenchTree::FileName(folder, file)));
        benchmark::DoNotOptimize(
            FindFirstFileVisibleOnPath(*path, target, FilenameMatchingPolicy::FileSystemDefault));
      }
    }
    const auto items = static_cast<double>(tree.Folders().size() * kFilesInAFolder);
    state.counters["bytes_per_item"] = (BytesInUse() - before - bytes) / items;
  }
  state.counters["bytes"] = bytes;
  state.counters["bytes_per_byte_of_names"] = bytes / nameBytes;
}
BENCHMARK(Memory)->Name("memory:scanned_and_indexed")->Arg(100)->Arg(5000)->Iterations(1);

}  // namespace
}  // namespace searchpath_bench
