// A plain name on a path of N folders x 100 files, warm: hits everywhere and one miss in five; the
// hits and the misses alone; and the same with three extensions to try.

#include "bench_tree.h"
#include "searchpath/host/environment.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/model/search_target.h"
#include "searchpath/utilities/file_lookup.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <algorithm>
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

enum class Kind : std::uint8_t { Mixed, Hits, Misses, Extensions };

std::vector<detail::SearchTarget> Targets(const BenchTree& tree, Kind kind) {
  std::vector<detail::SearchTarget> targets;
  for (auto name : tree.Questions(kQuestions)) {
    const bool isMiss = name.ends_with(u'y');
    if (kind == Kind::Hits && isMiss) name.pop_back();
    if (kind == Kind::Misses && !isMiss) name.push_back(u'y');
    if (kind == Kind::Extensions) {
      targets.emplace_back(name.erase(name.find(u'.'), 2),
                           std::vector<ustring>{u".zt", u".x", u".y"});
    } else {
      targets.emplace_back(name);
    }
  }
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
void Floor(benchmark::State& state, Kind kind) {
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
  const auto targets = Targets(tree, kind);
  std::size_t at = 0;
  ustring joined;
  for (auto _ : state) {
    boost::optional<FoundItem> found;
    const auto& target = targets[at++ % kQuestions];
    auto first = static_cast<std::uint32_t>(items.size());
    const auto ask = [&](const ustring& name) {
      const auto position = positions.find(name);
      if (position != positions.end()) first = std::min(first, position->second);
    };
    if (kind == Kind::Extensions) {
      for (const auto& extension : target.GetExtensions()) {
        ask(joined.assign(target.GetName()).append(extension));
      }
    } else {
      ask(target.GetName());
    }
    if (first < items.size()) found = items[first];
    benchmark::DoNotOptimize(found);
  }
}

/// The whole question: ordinary folders and method entries.
void Ask(benchmark::State& state, const std::vector<detail::SearchTarget>& targets,
         const IPath& path, FilenameMatchingPolicy policy) {
  for (const auto& target : targets) {
    benchmark::DoNotOptimize(FindFirstFileVisibleOnPath(path, target, policy));
  }
  std::size_t at = 0;
  for (auto _ : state) {
    auto found = FindFirstFileVisibleOnPath(path, targets[at++ % kQuestions], policy);
    benchmark::DoNotOptimize(found);
  }
}

void WarmLookup(benchmark::State& state, Kind kind, FilenameMatchingPolicy policy) {
  const BenchTree& tree = BenchTree::Of(static_cast<std::size_t>(state.range(0)));
  Ask(state, Targets(tree, kind), *tree.MakePath(), policy);
}

[[maybe_unused]] const bool kRowsAreThere = [] {
  using enum FilenameMatchingPolicy;
  const std::pair<std::string, Kind> rows[] = {{"warm_lookup", Kind::Mixed},
                                               {"warm_hits", Kind::Hits},
                                               {"warm_misses", Kind::Misses},
                                               {"warm_extensions", Kind::Extensions}};
  const std::pair<const char*, FilenameMatchingPolicy> policies[] = {
      {"file_system", FileSystemDefault},
      {"case_sensitive", CaseSensitive},
      {"ignore_case", IgnoreCase}};
  for (const auto& [row, kind] : rows) {
    benchmark::RegisterBenchmark((row + ":floor").c_str(), Floor, kind)->Apply(Sizes);
    for (const auto& [name, policy] : policies) {
      benchmark::RegisterBenchmark((row + ":" + name).c_str(), WarmLookup, kind, policy)
          ->Apply(Sizes);
    }
  }
  return true;
}();

/// The same on the path of an environment, which drops repeats, without and with a hidden folder.
void WarmEnvironment(benchmark::State& state, bool hides) {
  const BenchTree& tree = BenchTree::Of(static_cast<std::size_t>(state.range(0)));
  host::EnvironmentOptions options;
  for (const auto& folder : tree.Folders()) options.folders.push_back(TextFromBytes(folder));
  if (hides) options.without.push_back(options.folders.back());
  const host::Environment environment(options);
  Ask(state, Targets(tree, Kind::Mixed), *environment.GetPath(),
      FilenameMatchingPolicy::FileSystemDefault);
}
BENCHMARK_CAPTURE(WarmEnvironment, "", false)->Name("warm_lookup:environment")->Apply(Sizes);
BENCHMARK_CAPTURE(WarmEnvironment, "", true)->Name("warm_lookup:hiding")->Apply(Sizes);

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
  // The very first search of all never asks the database; the second reads it.
  for (const char* const absent : {"first", "reads-the-database"}) {
    std::free(kpathsea_path_search(kpse, path.c_str(), absent, 0));
  }
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
