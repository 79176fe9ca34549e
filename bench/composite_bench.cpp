// A path of P parts, each of which has no answer.

#include "searchpath/utilities/concatenated_path.h"

#include <benchmark/benchmark.h>

namespace {

using namespace Corvane::PathManagement;
using Entries = std::vector<std::shared_ptr<const IPathEntry>>;

/// A path that finds nothing.
class DecliningPath : public IPath {
 public:
  std::shared_ptr<const Entries> GetMainEntries() const override { return nullptr; }
  Entries GetMethodEntries() const override { return {}; }
  Entries GetMethodEntriesByName(SearchScope, const ustring&,
                                 FilenameMatchingPolicy) const override {
    return {};
  }
  Entries GetPartiallyMatchingEntries(SearchScope, const ustring&,
                                      FilenameMatchingPolicy) const override {
    return {};
  }
  std::shared_ptr<const IPathEntry> GetMainEntryForEntry(const IPathEntry&) const override {
    return nullptr;
  }
  std::shared_ptr<const IPathEntry> GetParentEntryForEntry(const IPathEntry&) const override {
    return nullptr;
  }
  std::shared_ptr<const IPathEntry> GetPathEntryFromAbsoluteIRI(
      const CanonicalAbsoluteIRI&) const override {
    return nullptr;
  }
  std::shared_ptr<const IPathEntry> GetPathEntryFromAbsoluteIRI(
      const AbsoluteIRI&, FilenameMatchingPolicy) const override {
    return nullptr;
  }
  boost::optional<FoundItem> FindFirstInScope(SearchScope, const detail::SearchTarget&,
                                              FilenameMatchingPolicy) const override {
    return boost::none;
  }
  std::vector<FoundItem> FindAllInScope(SearchScope, const detail::SearchTarget&,
                                        FilenameMatchingPolicy) const override {
    return {};
  }
  bool ForEachEntry(SearchScope, const PathEntryVisitor&) const override { return false; }
  bool ConcurrentForEachEntry(SearchScope, const PathEntryVisitor&) const override { return false; }
  bool FirstEntryIsBeforeSecondOnPath(const IPathEntry&, const IPathEntry&) const override {
    return false;
  }
  bool IsEntryOnPath(const IPathEntry&) const override { return false; }
};

std::vector<std::shared_ptr<const IPath>> MakeParts(const benchmark::State& state) {
  std::vector<std::shared_ptr<const IPath>> parts(static_cast<std::size_t>(state.range(0)));
  for (auto& part : parts) part = std::make_shared<const DecliningPath>();
  return parts;
}

constexpr std::uint32_t kKind = 0;

/// The floor: one virtual call a part.
void Floor(benchmark::State& state) {
  const auto parts = MakeParts(state);
  const detail::SearchTarget target(u"name");
  for (auto _ : state) {
    for (const auto& part : parts) {
      benchmark::DoNotOptimize(
          part->FindFirstInScope({&kKind, 1}, target, FilenameMatchingPolicy::CaseSensitive));
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Floor)->Name("declining_parts:floor")->RangeMultiplier(10)->Range(10, 100000);

void Concatenated(benchmark::State& state) {
  const ConcatenatedPath path(MakeParts(state));
  const detail::SearchTarget target(u"name");
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        path.FindFirstInScope({&kKind, 1}, target, FilenameMatchingPolicy::CaseSensitive));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Concatenated)
    ->Name("declining_parts:concatenated")
    ->RangeMultiplier(10)
    ->Range(10, 100000);

}  // namespace
