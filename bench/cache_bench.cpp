// From a cache on disk to the first answer, and to the thousandth: 5,000 folders x 100 files, names
// and the cache file cached by the kernel. The first question is for a name in the last folder, so
// every folder is asked whether it is still fresh.

#include "bench_tree.h"
#include "searchpath/host/environment.h"
#include "searchpath/host/listing_file.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/platform/iri_text.h"
#include "searchpath/utilities/file_lookup.h"

#include <benchmark/benchmark.h>
#include <chrono>
#include <filesystem>
#include <map>
#include <stdexcept>

namespace searchpath_bench {
namespace {

using namespace Corvane::PathManagement;

constexpr auto kPolicy = FilenameMatchingPolicy::FileSystemDefault;

/// A tree that has not changed for a while, and its cache.
class CachedTree {
 public:
  explicit CachedTree(std::size_t folderCount)
      : tree(BenchTree::Of(folderCount)), cacheFile(TextFromBytes(tree.Root() + "/cache")) {
    const auto before = std::filesystem::file_time_type::clock::now() - std::chrono::minutes(1);
    for (const auto& item : std::filesystem::recursive_directory_iterator(tree.Root())) {
      if (item.is_directory()) std::filesystem::last_write_time(item.path(), before);
    }
    host::SaveListing(cacheFile, tree.MakePath()->GetMainFolders());
    for (const auto& folder : host::LoadListing(cacheFile).GetFolders()) {
      if (folder->GetFreshness() != host::Freshness::Fresh) throw std::runtime_error("not fresh");
    }
  }

  [[nodiscard]] static const CachedTree& Of(const benchmark::State& state) {
    static std::map<std::size_t, CachedTree> trees;
    const auto size = static_cast<std::size_t>(state.range(0));
    return trees.try_emplace(size, size).first->second;
  }

  [[nodiscard]] const std::vector<std::string>& Folders() const { return tree.Folders(); }
  [[nodiscard]] host::PathEntryFactory Load(
      host::ListingUse use = host::ListingUse::WhileFresh) const {
    return host::LoadListing(cacheFile, use);
  }
  [[nodiscard]] std::shared_ptr<const host::FolderPath> LoadPath() const {
    return std::make_shared<const host::FolderPath>(Load().GetFolders());
  }
  [[nodiscard]] std::shared_ptr<const host::FolderPath> ScanPath() const { return tree.MakePath(); }
  [[nodiscard]] std::vector<std::u16string> Questions(std::size_t count) const {
    return tree.Questions(count);
  }

 private:
  const BenchTree& tree;
  fl::filesystem::path cacheFile;
};

/// The floor: a bare loop of directory reads.
void Floor(benchmark::State& state) {
  const CachedTree& tree = CachedTree::Of(state);
  for (auto _ : state) benchmark::DoNotOptimize(ReadBare(tree.Folders()));
}
BENCHMARK(Floor)->Name("cache:floor")->Apply(FolderCounts);

/// Reading and verifying the file, and an entry for each folder; nothing is asked.
void Load(benchmark::State& state) {
  const CachedTree& tree = CachedTree::Of(state);
  for (auto _ : state) benchmark::DoNotOptimize(tree.Load());
}
BENCHMARK(Load)->Name("cache:load")->Apply(FolderCounts);

void AskLast(const CachedTree& tree, const host::FolderPath& path) {
  const detail::SearchTarget last(TextFromBytes(BenchTree::FileName(tree.Folders().size() - 1, 0)));
  if (!FindFirstFileVisibleOnPath(path, last, kPolicy)) throw std::runtime_error("not found");
}

void FirstAnswer(benchmark::State& state) {
  const CachedTree& tree = CachedTree::Of(state);
  for (auto _ : state) AskLast(tree, *tree.LoadPath());
}
BENCHMARK(FirstAnswer)->Name("cache:first_answer")->Apply(FolderCounts);

/// The same for a program that has an `Environment`; as saved, the disk is not asked at all.
void FirstAnswerOfEnvironment(benchmark::State& state, host::ListingUse use) {
  const CachedTree& tree = CachedTree::Of(state);
  const std::u16string last = TextFromBytes(BenchTree::FileName(tree.Folders().size() - 1, 0));
  for (auto _ : state) {
    const host::Environment environment(tree.Load(use));
    if (!environment.Find({.name = last})) throw std::runtime_error("not found");
  }
}
BENCHMARK_CAPTURE(FirstAnswerOfEnvironment, verified, host::ListingUse::WhileFresh)
    ->Name("cache:environment_verified")
    ->Apply(FolderCounts);
BENCHMARK_CAPTURE(FirstAnswerOfEnvironment, saved, host::ListingUse::AsSaved)
    ->Name("cache:environment_as_saved")
    ->Apply(FolderCounts);

void FirstAnswerOfScan(benchmark::State& state) {
  const CachedTree& tree = CachedTree::Of(state);
  for (auto _ : state) AskLast(tree, *tree.ScanPath());
}
BENCHMARK(FirstAnswerOfScan)->Name("cache:first_answer_of_scan")->Apply(FolderCounts);

void AskThousand(const CachedTree& tree, const host::FolderPath& path) {
  static const std::vector<std::u16string> questions = tree.Questions(1000);
  for (const auto& question : questions) {
    benchmark::DoNotOptimize(
        FindFirstFileVisibleOnPath(path, detail::SearchTarget(question), kPolicy));
  }
}

void ThousandAnswers(benchmark::State& state) {
  const CachedTree& tree = CachedTree::Of(state);
  for (auto _ : state) AskThousand(tree, *tree.LoadPath());
}
BENCHMARK(ThousandAnswers)->Name("cache:thousand_answers")->Apply(FolderCounts);

void ThousandAnswersOfScan(benchmark::State& state) {
  const CachedTree& tree = CachedTree::Of(state);
  for (auto _ : state) AskThousand(tree, *tree.ScanPath());
}
BENCHMARK(ThousandAnswersOfScan)->Name("cache:thousand_answers_of_scan")->Apply(FolderCounts);

}  // namespace
}  // namespace searchpath_bench
