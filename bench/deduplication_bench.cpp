// The main entries of N folders in random order, three in ten of them repeats, which are entries of
// their own and know the folder by an IRI of their own; and a partial pathname on a path of folders.

#include "bench_tree.h"
#include "searchpath/utilities/deduplicated_path.h"
#include "searchpath/utilities/partial_pathname.h"

#include <boost/unordered/unordered_flat_set.hpp>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <random>
#include <thread>

namespace searchpath_bench {
namespace {

using namespace Corvane::PathManagement;
using Entries = std::vector<std::shared_ptr<const IPathEntry>>;

/// An entry that does nothing but know where it is.
class BareEntry : public IPathEntry {
 public:
  explicit BareEntry(const AbsoluteIRI& location) : iri(location, u"") {}

  PathEntryType GetPathEntryType() const override { return PathEntryType::Ordinary; }
  std::shared_ptr<const std::vector<std::shared_ptr<const PathItem>>> GetItems() const override {
    return nullptr;
  }
  CanonicalAbsoluteIRI GetCanonicalAbsoluteIRI() const override { return iri; }
  AbsoluteIRI GetAbsoluteIRI() const override { return iri; }
  std::shared_ptr<const IPathEntry> GetSingleSubfolderEntryA() const override { return nullptr; }
  std::shared_ptr<const IPathEntry> GetSingleSubfolderEntryB() const override { return nullptr; }
  std::shared_ptr<const Entries> GetSubfolderEntriesA() const override { return nullptr; }
  std::shared_ptr<const Entries> GetSubfolderEntriesB() const override { return nullptr; }
  std::shared_ptr<const Entries> GetSubfolderEntriesC() const override { return nullptr; }
  std::shared_ptr<const PathItem> FindItem(const detail::SearchTarget&,
                                           FilenameMatchingPolicy) const override {
    return nullptr;
  }
  std::vector<std::shared_ptr<const PathItem>> FindItems(const detail::SearchTarget&,
                                                         FilenameMatchingPolicy) const override {
    return {};
  }
  bool ForEachEntryInScope(SearchScope, const PathEntryVisitor&) const override { return false; }
  bool ConcurrentForEachEntryInScope(SearchScope, const PathEntryVisitor&) const override {
    return false;
  }
  std::shared_ptr<std::function<bool(const ustring&, const ustring&)>> GetFilenameComparator(
      FilenameMatchingPolicy) const override {
    return nullptr;
  }

 private:
  CanonicalAbsoluteIRI iri;
};

/// A path of nothing but main entries.
class ListPath : public ConcatenatedPath {
 public:
  explicit ListPath(Entries&& list)
      : ConcatenatedPath({}), entries(std::make_shared<const Entries>(std::move(list))) {}

  std::shared_ptr<const Entries> GetMainEntries() const override { return entries; }

 private:
  std::shared_ptr<const Entries> entries;
};

/// The folders of `state`'s size, in an order that no cache foresees.
std::shared_ptr<const IPath> MakePart(const benchmark::State& state) {
  std::thread([] {}).join();  // counts of owners are atomic from the first thread on
  const auto count = static_cast<std::size_t>(state.range(0));
  std::mt19937_64 random(20241122);
  Entries entries;
  for (std::size_t at = 0; at < count; ++at) {
    const std::string number = std::to_string(at % 10 < 7 ? at : random() % at / 10 * 10);
    const std::string folder = "file:///home/someone/projects/library/folder" + number;
    const AbsoluteIRI location(ustring(folder.begin(), folder.end()));
    entries.push_back(std::make_shared<const BareEntry>(location));
  }
  std::ranges::shuffle(entries, random);
  return std::make_shared<const ListPath>(std::move(entries));
}

void Sizes(benchmark::internal::Benchmark* bench) { bench->Arg(10000)->Arg(100000)->Arg(1000000); }

/// The floor: a flat table of the hashes that the IRIs hold, which trusts that no two are equal, and
/// what the interface asks of everyone: a call for the IRI, and a list of owners as the answer.
void Floor(benchmark::State& state) {
  struct HeldHash {
    using is_avalanching = void;
    std::size_t operator()(std::uint64_t hash) const noexcept { return hash; }
  };
  const auto part = MakePart(state);
  for (auto _ : state) {
    const auto entries = part->GetMainEntries();
    boost::unordered_flat_set<std::uint64_t, HeldHash> seen;
    seen.reserve(entries->size());
    Entries kept;
    kept.reserve(entries->size());
    for (const auto& entry : *entries) {
      if (seen.insert(entry->GetCanonicalAbsoluteIRI().hashValue()).second) kept.push_back(entry);
    }
    benchmark::DoNotOptimize(kept);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Floor)->Name("deduplication:floor")->Apply(Sizes);

void Deduplicated(benchmark::State& state) {
  const auto part = MakePart(state);
  for (auto _ : state) {
    const DeduplicatedPath path({part});
    benchmark::DoNotOptimize(path.GetMainEntries());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Deduplicated)->Name("deduplication:main_entries")->Apply(Sizes);

/// The floor: the end of each location compared as text.
void PartialFloor(benchmark::State& state) {
  const auto path = BenchTree::Of(static_cast<std::size_t>(state.range(0))).MakePath();
  const auto entries = path->GetMainEntries();
  for (auto _ : state) {
    Entries matches;
    for (const auto& entry : *entries) {
      const CanonicalAbsoluteIRI iri = entry->GetCanonicalAbsoluteIRI();
      if (iri.toStringView().ends_with(u"/folder00100")) matches.push_back(entry);
    }
    benchmark::DoNotOptimize(matches);
  }
}
BENCHMARK(PartialFloor)->Name("partial_matching:floor")->Arg(5000);

/// The library's own comparison, entry by entry.
void PartialEach(benchmark::State& state) {
  const auto path = BenchTree::Of(static_cast<std::size_t>(state.range(0))).MakePath();
  const auto entries = path->GetMainEntries();
  const auto partial = SplitPartialPathname(u"folder00100");
  for (auto _ : state) {
    Entries matches;
    for (const auto& entry : *entries) {
      if (DoesPartialPathnameMatchPathEntryIRI(partial, entry,
                                               FilenameMatchingPolicy::FileSystemDefault)) {
        matches.push_back(entry);
      }
    }
    benchmark::DoNotOptimize(matches);
  }
}
BENCHMARK(PartialEach)->Name("partial_matching:each_entry")->Arg(5000);

/// The whole question.
void PartialDeduplicated(benchmark::State& state) {
  const DeduplicatedPath path({BenchTree::Of(static_cast<std::size_t>(state.range(0))).MakePath()});
  const std::uint32_t ordinary = 0;
  const auto ask = [&] {
    return path.GetPartiallyMatchingEntries({&ordinary, 1}, u"folder00100",
                                            FilenameMatchingPolicy::FileSystemDefault);
  };
  benchmark::DoNotOptimize(ask());  // lists the folders
  for (auto _ : state) benchmark::DoNotOptimize(ask());
}
BENCHMARK(PartialDeduplicated)->Name("partial_matching:deduplicated")->Arg(5000);

}  // namespace
}  // namespace searchpath_bench
