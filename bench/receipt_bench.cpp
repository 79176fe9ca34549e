// Answers with a receipt, and whether they still hold: 100,000 answers on folders of 100 files, cached by
// the kernel, that have not changed for a while.

#include "bench_tree.h"
#include "searchpath/host/receipt.h"
#include "searchpath/model/byte_text.h"

#include <sys/stat.h>

#include <benchmark/benchmark.h>
#include <chrono>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace searchpath_bench {
namespace {

using namespace Corvane::PathManagement;

constexpr std::size_t kAnswers = 100'000;

host::EnvironmentOptions OptionsOf(const BenchTree& tree) {
  host::EnvironmentOptions options;
  for (const auto& folder : tree.Folders()) options.folders.push_back(TextFromBytes(folder));
  return options;
}

std::vector<host::Lookup> LookupsOf(const BenchTree& tree) {
  std::vector<host::Lookup> lookups;
  for (auto& name : tree.Questions(kAnswers)) lookups.push_back({.name = std::move(name)});
  return lookups;
}

/// Makes all folders so old that a receipt is certain of them.
void Age(const BenchTree& tree) {
  const auto before = std::filesystem::file_time_type::clock::now() - std::chrono::minutes(1);
  for (const auto& item : std::filesystem::recursive_directory_iterator(tree.Root())) {
    if (item.is_directory()) std::filesystem::last_write_time(item.path(), before);
  }
  // The kernel's clock for files must move on: what changed within its last step is not trusted.
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
}

/// The floor: an environment, and all answers.
void Find(benchmark::State& state) {
  const BenchTree& tree = BenchTree::Of(state);
  const auto lookups = LookupsOf(tree);
  const auto options = OptionsOf(tree);
  for (auto _ : state) {
    const host::Environment environment(options);
    for (const auto& lookup : lookups) benchmark::DoNotOptimize(environment.Find(lookup));
  }
}
BENCHMARK(Find)->Name("receipt_write:floor")->Apply(FolderCounts);

/// The same with a receipt that is written, into memory: what a disk takes to make a file depends on how many
/// others came and went before.
void Write(benchmark::State& state) {
  const BenchTree& tree = BenchTree::Of(state);
  const auto lookups = LookupsOf(tree);
  const auto options = OptionsOf(tree);
  for (auto _ : state) {
    std::ostringstream file;
    host::Environment(options).FindWithReceipt(lookups).Write(file);
    benchmark::DoNotOptimize(file);
  }
}
BENCHMARK(Write)->Name("receipt_write:write")->Apply(FolderCounts);

/// The floor: one question to the disk for each folder.
void AskFolders(benchmark::State& state) {
  const BenchTree& tree = BenchTree::Of(state);
  for (auto _ : state) {
    for (const auto& folder : tree.Folders()) {
      struct stat status = {};
      benchmark::DoNotOptimize(stat(folder.c_str(), &status));
    }
  }
}
BENCHMARK(AskFolders)->Name("receipt_verify:floor")->Apply(FolderCounts);

/// Reading a receipt and finding that nothing has changed.
void Verify(benchmark::State& state) {
  const BenchTree& tree = BenchTree::Of(state);
  Age(tree);
  const fl::filesystem::path file(TextFromBytes(tree.Root() + "/receipt"));
  host::Environment(OptionsOf(tree)).FindWithReceipt(LookupsOf(tree)).Save(file);
  for (auto _ : state) {
    if (!host::Receipt::Load(file).IsFresh()) throw std::runtime_error("not fresh");
  }
}
BENCHMARK(Verify)->Name("receipt_verify:verify")->Apply(FolderCounts);

}  // namespace
}  // namespace searchpath_bench
