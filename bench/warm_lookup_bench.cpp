// A plain name on a path of N folders x 100 files, warm, hits everywhere and one miss in five.

#include "bench_tree.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/model/search_target.h"
#include "searchpath/utilities/file_lookup.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <fstream>
#include <kpathsea/kpathsea.h>
#include <thread>

namespace searchpath_bench {
namespace {

using namespace Corvane::PathManagement;

constexpr std::size_t kQuestions = 1 << 14;

void Sizes(benchmark::internal::Benchmark* bench) { bench->Arg(10)->Arg(1000)->Arg(5000); }

std::vector<detail::SearchTarget> Targets(const BenchTree& tree) {
  std::vector<detail::SearchTarget> targets;
  for (const auto& name : tree.Questions(kQuestions)) targets.emplace_back(name);
  return targets;
}

void WriteNameDatabase(const BenchTree& tree) {
  std::ofstream database(tree.Root() + "/ls-R");
  database << "% ls-R -- maintained by the benchmark; do not change.\n";
  for (std::size_t folder = 0; folder < tree.Folders().size(); ++folder) {
    database << "\n." << tree.Folders()[folder].substr(tree.Root().size()) << ":\n";
    for (std::size_t file = 0; file < kFilesInAFolder; ++file) {
      database << BenchTree::FileName(folder, file) << "\n";
    }
  }
}

/// The floor: one flat hash from name to position, and the library's own result type.
void Floor(benchmark::State& state) {
  const BenchTree& tree = BenchTree::Of(static_cast<std::size_t>(state.range(0)));
  const auto path = tree.MakePath();
  const auto entries = path->GetMainEntries();
  std::vector<FoundItem> items;
  boost::unordered_flat_map<ustring, std::uint32_t, std::hash<ustring>> positions;
  for (const auto& entry : *entries) {
    const auto files = entry->GetItems();
    for (const auto& file : *files) {
      positions.emplace(file->GetName() + file->GetExtension(),
                        static_cast<std::uint32_t>(items.size()));
      items.emplace_back(file, entry);
    }
  }
  std::thread([] {}).join();  // counts of owners are atomic from the first thread on
  const auto targets = Targets(tree);
  std::size_t at = 0;
  for (auto _ : state) {
    boost::optional<FoundItem> found;
    const auto position = positions.find(targets[at++ % kQuestions].GetName());
    if (position != positions.end()) found = items[position->second];
    benchmark::DoNotOptimize(found);
  }
}
BENCHMARK(Floor)->Name("warm_lookup:floor")->Apply(Sizes);

/// The whole question: ordinary folders and method entries.
void WarmLookup(benchmark::State& state, FilenameMatchingPolicy policy) {
  const BenchTree& tree = BenchTree::Of(static_cast<std::size_t>(state.range(0)));
  const auto path = tree.MakePath();
  const auto targets = Targets(tree);
  for (const auto& target : targets) {
    benchmark::DoNotOptimize(FindFirstFileVisibleOnPath(*path, target, policy));
  }
  std::size_t at = 0;
  for (auto _ : state) {
    auto found = FindFirstFileVisibleOnPath(*path, targets[at++ % kQuestions], policy);
    benchmark::DoNotOptimize(found);
  }
}
BENCHMARK_CAPTURE(WarmLookup, "", FilenameMatchingPolicy::FileSystemDefault)
    ->Name("warm_lookup:file_system")
    ->Apply(Sizes);
BENCHMARK_CAPTURE(WarmLookup, "", FilenameMatchingPolicy::IgnoreCase)
    ->Name("warm_lookup:ignore_case")
    ->Apply(Sizes);

/// A peer: the library behind the file look-up of a typesetting system, with its database of names over
/// one recursive root, written here as the text file that it reads.
void Kpathsea(benchmark::State& state) {
  const BenchTree& tree = BenchTree::Of(static_cast<std::size_t>(state.range(0)));
  WriteNameDatabase(tree);
  setenv("TEXMFDBS", tree.Root().c_str(), 1);
  kpathsea kpse = kpathsea_new();
  kpathsea_set_program_name(kpse, "/bin/sh", "searchpath-bench");
  std::vector<std::string> names;
  for (const auto& name : tree.Questions(kQuestions)) names.push_back(BytesFromText(name).value());
  const std::string path = "!!" + tree.Root() + "//";
  std::free(kpathsea_path_search(kpse, path.c_str(), "reads-the-database", 0));
  std::size_t at = 0;
  for (auto _ : state) {
    char* const found =
        kpathsea_path_search(kpse, path.c_str(), names[at++ % kQuestions].c_str(), 0);
    benchmark::DoNotOptimize(found);
    std::free(found);
  }
  kpathsea_finish(kpse);
}
BENCHMARK(Kpathsea)->Name("warm_lookup:kpathsea")->Apply(Sizes);

}  // namespace
}  // namespace searchpath_bench
