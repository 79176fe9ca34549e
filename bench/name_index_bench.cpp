// The table of the names of a path, alone and in memory: N names in folders of 100. The floor is a
// ready flat hash map with the same keys and hash, and the same list of the files of one name.

#include "host/names/name_index.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <benchmark/benchmark.h>
#include <cstring>
#include <map>
#include <random>
#include <string>

namespace {

using namespace Corvane::PathManagement;
using host::NameBlock;
using host::NameIndex;
using host::NameKey;

constexpr std::size_t kFilesInAFolder = 100;
constexpr std::size_t kQuestions = 1 << 16;

std::string NameOf(std::size_t number) { return "fn_" + std::to_string(number) + "_name.x"; }

using Folders = std::vector<NameBlock>;

/// The folders of N names, made once a run.
const Folders& FoldersOf(const benchmark::State& state) {
  static std::map<std::int64_t, Folders> made;
  Folders& folders = made[state.range(0)];
  if (!folders.empty()) return folders;
  folders.resize(static_cast<std::size_t>(state.range(0)) / kFilesInAFolder);
  for (std::size_t name = 0; name < folders.size() * kFilesInAFolder; ++name) {
    folders[name / kFilesInAFolder].Add(NameOf(name));
  }
  return folders;
}

NameIndex MakeIndex(const Folders& folders) {
  std::vector<const NameBlock*> blocks;
  for (const NameBlock& folder : folders) blocks.push_back(&folder);
  return {blocks, FilenameMatchingPolicy::CaseSensitive};
}

class FlatMap {
 public:
  struct Place {
    std::uint32_t folder;
    std::uint32_t record;
  };

  explicit FlatMap(const Folders& folders) {
    const std::size_t count = folders.size() * kFilesInAFolder;
    next.resize(count);
    places.reserve(count);
    auto record = static_cast<std::uint32_t>(count);
    for (auto folder = static_cast<std::uint32_t>(folders.size()); folder-- > 0;) {
      for (std::size_t file = folders[folder].size(); file-- > 0;) {
        const auto [place, isNew] =
            places.try_emplace(folders[folder][file].data(), Place{folder, --record});
        next[record] = isNew ? ~std::uint32_t{0} : place->second.record;
        place->second = {folder, record};
      }
    }
  }

  [[nodiscard]] Place Find(const NameKey& name) const {
    const auto found = places.find(name);
    return found == places.end() ? Place{0, ~std::uint32_t{0}} : found->second;
  }

 private:
  struct Hash {
    using is_avalanching = void;
    using is_transparent = void;
    std::size_t operator()(const NameKey& name) const { return name.Hash(); }
    std::size_t operator()(const char* name) const {
      NameKey key;
      key.Set(std::string_view(name));
      return key.Hash();
    }
  };
  struct Equal {
    using is_transparent = void;
    bool operator()(const NameKey& name, const char* known) const { return name.Is(known); }
    bool operator()(const char* left, const char* right) const {
      return std::strcmp(left, right) == 0;
    }
  };

  boost::unordered_flat_map<const char*, Place, Hash, Equal> places;
  std::vector<std::uint32_t> next;  // of the same name
};

void BuildFlatMap(benchmark::State& state) {
  const Folders& folders = FoldersOf(state);
  for (auto _ : state) benchmark::DoNotOptimize(FlatMap(folders));
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BuildIndex(benchmark::State& state) {
  const Folders& folders = FoldersOf(state);
  for (auto _ : state) benchmark::DoNotOptimize(MakeIndex(folders));
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

enum class Kind : std::uint8_t { Hits, Misses, Mixed };

template <class Find>
void Ask(benchmark::State& state, Kind kind, const Find& find) {
  std::mt19937_64 random(20260501);
  std::vector<std::u16string> names;
  while (names.size() < kQuestions) {
    const bool isMiss = kind == Kind::Misses || (kind == Kind::Mixed && names.size() % 5 == 0);
    const auto name = NameOf(random() % static_cast<std::uint64_t>(state.range(0)));
    names.emplace_back(name.begin(), name.end());
    if (isMiss) names.back().push_back(u'y');
  }
  std::size_t at = 0;
  for (auto _ : state) {
    NameKey key;
    benchmark::DoNotOptimize(key.Set(std::u16string_view(names[at++ % kQuestions])));
    benchmark::DoNotOptimize(find(key));
  }
}

void FindInFlatMap(benchmark::State& state, Kind kind) {
  const FlatMap map(FoldersOf(state));
  Ask(state, kind, [&map](const NameKey& key) { return map.Find(key); });
}

void FindInIndex(benchmark::State& state, Kind kind) {
  const NameIndex index = MakeIndex(FoldersOf(state));
  Ask(state, kind, [&index](const NameKey& key) { return index.Find(key); });
}

void Sizes(benchmark::internal::Benchmark* bench) {
  bench->Arg(1000)->Arg(100000)->Arg(500000)->Arg(10000000);
}
void BuildSizes(benchmark::internal::Benchmark* bench) {
  Sizes(bench);
  bench->Arg(1000000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(BuildFlatMap)->Name("index_build:floor")->Apply(BuildSizes);
BENCHMARK(BuildIndex)->Name("index_build:searchpath")->Apply(BuildSizes);
BENCHMARK_CAPTURE(FindInFlatMap, "", Kind::Hits)->Name("index_hits:floor")->Apply(Sizes);
BENCHMARK_CAPTURE(FindInIndex, "", Kind::Hits)->Name("index_hits:searchpath")->Apply(Sizes);
BENCHMARK_CAPTURE(FindInFlatMap, "", Kind::Misses)->Name("index_misses:floor")->Apply(Sizes);
BENCHMARK_CAPTURE(FindInIndex, "", Kind::Misses)->Name("index_misses:searchpath")->Apply(Sizes);
BENCHMARK_CAPTURE(FindInFlatMap, "", Kind::Mixed)->Name("index_mixed:floor")->Apply(Sizes);
BENCHMARK_CAPTURE(FindInIndex, "", Kind::Mixed)->Name("index_mixed:searchpath")->Apply(Sizes);

}  // namespace
