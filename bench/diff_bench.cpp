// Two versions of a list of N entries: their longest common subsequence, and all that differs.

#include "diff/longest_common_subsequence.h"
#include "searchpath/utilities/path_entry_vector_differentiator.h"

#include <boost/unordered/unordered_flat_map.hpp>
#include <tbb/parallel_sort.h>

#include <sys/resource.h>

#include <benchmark/benchmark.h>
#include <cstdio>
#include <dtl/dtl.hpp>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdlib.h>
#include <utility>

namespace {

using namespace Corvane::PathManagement;
using Entry = std::shared_ptr<const IPathEntry>;
using Entries = std::vector<Entry>;

/// A folder with nothing in it.
class EmptyEntry : public IPathEntry {
 public:
  explicit EmptyEntry(const AbsoluteIRI& location) : iri(location) {}
  PathEntryType GetPathEntryType() const override { return PathEntryType::Ordinary; }
  std::shared_ptr<const std::vector<std::shared_ptr<const PathItem>>> GetItems() const override {
    return nullptr;
  }
  CanonicalAbsoluteIRI GetCanonicalAbsoluteIRI() const override { return {iri, u""}; }
  AbsoluteIRI GetAbsoluteIRI() const override { return iri; }
  Entry GetSingleSubfolderEntryA() const override { return nullptr; }
  Entry GetSingleSubfolderEntryB() const override { return nullptr; }
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
  AbsoluteIRI iri;
};

Entry MakeEntry(std::size_t number) {
  ustring location = u"file:///usr/share/environment/toolbox/folder";
  for (const char digit : std::to_string(number)) location += static_cast<char16_t>(digit);
  return std::make_shared<EmptyEntry>(AbsoluteIRI(location));
}

/// Two versions of a list.
struct Versions {
  Entries before;
  Entries after;
};
using Change = void (*)(Versions&, std::mt19937_64&);

Versions MakeVersions(const benchmark::State& state, Change change) {
  Versions versions;
  std::mt19937_64 random(20260201);
  for (std::size_t number = 0; number < static_cast<std::size_t>(state.range(0)); ++number) {
    versions.before.push_back(MakeEntry(number));
  }
  versions.after = versions.before;
  change(versions, random);
  return versions;
}

void Nothing(Versions&, std::mt19937_64&) {}

/// One entry in a hundred: in turn replaced by another object for the folder, by one for another
/// folder, exchanged with any other, and left out.
void Edit(Versions& versions, std::mt19937_64& random) {
  Entries& after = versions.after;
  const std::size_t size = after.size();
  for (std::size_t edit = 0; edit < size / 100; ++edit) {
    const std::size_t at = random() % size;
    if (edit % 4 == 0) after[at] = MakeEntry(at);
    if (edit % 4 == 1) after[at] = MakeEntry(size + edit);
    if (edit % 4 == 2) std::swap(after[at], after[random() % size]);
    if (edit % 4 == 3) after[at] = nullptr;
  }
  std::erase(after, nullptr);
}

void Shuffle(Versions& versions, std::mt19937_64& random) {
  std::shuffle(versions.after.begin(), versions.after.end(), random);
}

void Reverse(Versions& versions, std::mt19937_64&) {
  std::reverse(versions.after.begin(), versions.after.end());
}

/// Shuffled, and one entry in a hundred, in both lists, is one and the same object.
void Repeat(Versions& versions, std::mt19937_64& random) {
  for (std::size_t at = 0; at < versions.before.size(); at += 100) {
    versions.before[at] = versions.after[at] = versions.before[0];
  }
  std::shuffle(versions.before.begin(), versions.before.end(), random);
  std::shuffle(versions.after.begin(), versions.after.end(), random);
}

/// A pair of places of the same object.
struct Match {
  std::uint32_t first;
  std::uint32_t second;
};

/// All of them, in ascending order of the first place and descending order of the second.
std::vector<Match> FindMatches(const Versions& versions) {
  const Entries& after = versions.after;
  boost::unordered_flat_map<const IPathEntry*, std::uint32_t> last;  // places count from 1
  last.reserve(after.size());
  std::vector<std::uint32_t> previous(after.size() + 1);  // of the same object
  for (std::uint32_t place = 1; place <= after.size(); ++place) {
    previous[place] = std::exchange(last[after[place - 1].get()], place);
  }
  std::vector<Match> matches;
  matches.reserve(versions.before.size());
  for (std::uint32_t at = 0; at < versions.before.size(); ++at) {
    const auto found = last.find(versions.before[at].get());
    if (found == last.end()) continue;
    for (std::uint32_t place = found->second; place != 0; place = previous[place]) {
      matches.push_back({at, place});
    }
  }
  return matches;
}

/// A longest increasing subsequence of the places, and its elements copied.
Entries LongestIncreasing(const Entries& first, const std::vector<Match>& matches) {
  std::vector<std::uint32_t> ends, links, previous(matches.size());
  for (std::uint32_t match = 0; match < matches.size(); ++match) {
    const auto slot = std::lower_bound(ends.begin(), ends.end(), matches[match].second);
    const auto length = static_cast<std::size_t>(slot - ends.begin());
    if (length > 0) previous[match] = links[length - 1];
    if (slot == ends.end()) {
      ends.push_back(matches[match].second);
      links.push_back(match);
    } else {
      *slot = matches[match].second;
      links[length] = match;
    }
  }
  std::vector<std::uint32_t> indices(ends.size());
  std::uint32_t link = links.empty() ? 0 : links.back();
  for (std::size_t at = indices.size(); at-- > 0; link = previous[link]) {
    indices[at] = matches[link].first;
  }
  Entries result;
  result.reserve(indices.size());
  for (const std::uint32_t index : indices) result.push_back(first[index]);
  return result;
}

/// The floor: a table of the places, and a longest increasing subsequence of them.
void SubsequenceFloor(benchmark::State& state, Change change) {
  const Versions versions = MakeVersions(state, change);
  for (auto _ : state) {
    benchmark::DoNotOptimize(LongestIncreasing(versions.before, FindMatches(versions)));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

Entries Subsequence(const Versions& versions) {
  return LongestCommonSubsequence<Entry, Entries>::Compute(versions.before, versions.after);
}

void Subsequence(benchmark::State& state, Change change) {
  const Versions versions = MakeVersions(state, change);
  for (auto _ : state) benchmark::DoNotOptimize(Subsequence(versions));
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void DtlSubsequence(benchmark::State& state, Change change) {
  const Versions versions = MakeVersions(state, change);
  for (auto _ : state) {
    dtl::Diff<Entry, Entries> diff(versions.before, versions.after);
    diff.compose();
    benchmark::DoNotOptimize(diff.getLcsVec());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

double SecondsOfChildren() {
  rusage usage = {};
  getrusage(RUSAGE_CHILDREN, &usage);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// The program `diff` over a line for each entry, its process and all.
void LineDiff(benchmark::State& state, Change change) {
  const Versions versions = MakeVersions(state, change);
  std::string folder = (std::filesystem::temp_directory_path() / "diff_bench_XXXXXX").string();
  if (mkdtemp(folder.data()) == nullptr) return state.SkipWithError("no temporary folder");
  for (const bool isAfter : {false, true}) {
    std::ofstream file(folder + (isAfter ? "/after" : "/before"));
    for (const Entry& entry : isAfter ? versions.after : versions.before) file << entry << '\n';
  }
  const std::string command = "diff " + folder + "/before " + folder + "/after >" + folder + "/out";
  for (auto _ : state) {
    const double before = SecondsOfChildren();
    benchmark::DoNotOptimize(std::system(command.c_str()));
    state.SetIterationTime(SecondsOfChildren() - before);
  }
  std::filesystem::remove_all(folder);
}

/// The floor: the copying of the result.
void CopyFloor(benchmark::State& state) {
  const Versions versions = MakeVersions(state, Nothing);
  for (auto _ : state) benchmark::DoNotOptimize(Entries(versions.before));
}
BENCHMARK(CopyFloor)->Name("copy_identical:floor")->RangeMultiplier(10)->Range(1000, 1000000);
BENCHMARK_CAPTURE(Subsequence, copy, Nothing)
    ->Name("copy_identical:searchpath")
    ->RangeMultiplier(10)
    ->Range(1000, 1000000);

/// `these` without `others`, by address, each as often as it is there.
Entries Without(Entries these, Entries others) {
  Entries left;
  std::sort(these.begin(), these.end());
  std::sort(others.begin(), others.end());
  std::set_difference(these.begin(), these.end(), others.begin(), others.end(),
                      std::back_inserter(left));
  return left;
}

/// The floor: the subsequence, and sorts of what it leaves: by address, and by IRI what only one of
/// the lists holds.
void CompareFloor(benchmark::State& state, Change change) {
  const Versions versions = MakeVersions(state, change);
  std::mt19937_64 random(20260401);
  const Entries inPlace = Subsequence(versions);
  Entries beforeLeft = Without(versions.before, inPlace);
  Entries afterLeft = Without(versions.after, inPlace);
  const Entries beforeOnly = Without(beforeLeft, afterLeft);
  const Entries afterOnly = Without(afterLeft, beforeLeft);
  std::shuffle(beforeLeft.begin(), beforeLeft.end(), random);
  std::shuffle(afterLeft.begin(), afterLeft.end(), random);
  const auto byIRI = [](const Entry& left, const Entry& right) {
    return AbsoluteIRI(left->GetCanonicalAbsoluteIRI()) <
           AbsoluteIRI(right->GetCanonicalAbsoluteIRI());
  };
  for (auto _ : state) {
    benchmark::DoNotOptimize(Subsequence(versions));
    for (Entries list : {beforeLeft, afterLeft}) {
      tbb::parallel_sort(list);
      benchmark::DoNotOptimize(list);
    }
    for (Entries list : {beforeOnly, afterOnly}) {
      tbb::parallel_sort(list, byIRI);
      benchmark::DoNotOptimize(list);
    }
  }
}

void Compare(benchmark::State& state, Change change) {
  const Versions versions = MakeVersions(state, change);
  for (auto _ : state) {
    PathEntryVectorDifferentiator differentiator;
    differentiator.Compare(versions.before, versions.after,
                           PathEntryVectorDifferentiator::ComparisonFilter::TopLevelOnly);
    benchmark::DoNotOptimize(differentiator);
  }
}

struct Pattern {
  const char* name;
  Change change;
  std::int64_t largestForDtl;
  std::int64_t largestForLines;
};
constexpr Pattern kPatterns[] = {{"identical", Nothing, 1000000, 1000000},
                                 {"edited", Edit, 100000, 1000000},
                                 {"shuffled", Shuffle, 10000, 10000},
                                 {"reversed", Reverse, 10000, 10000},
                                 {"repeated", Repeat, 0, 10000}};

const bool kRegistered = [] {
  for (const Pattern& pattern : kPatterns) {
    const auto add = [&pattern](const char* row, auto run, std::int64_t smallest,
                                std::int64_t largest) {
      const auto colon = std::string_view(row).find(':');
      std::string name = row;
      name.insert(colon, std::string("_") + pattern.name);
      auto* const added = benchmark::RegisterBenchmark(name.c_str(), run, pattern.change);
      for (; smallest <= largest; smallest *= 10) added->Arg(smallest);
      return added;
    };
    const bool isRepeated = pattern.change == Repeat;
    add("subsequence:floor", SubsequenceFloor, 1000, isRepeated ? 100000 : 1000000);
    add("subsequence:searchpath", static_cast<void (*)(benchmark::State&, Change)>(Subsequence),
        1000, 1000000);
    if (pattern.largestForDtl > 0) {
      add("subsequence:dtl", DtlSubsequence, 1000, pattern.largestForDtl);
    }
    add("subsequence:line_diff", LineDiff, 1000, pattern.largestForLines)->UseManualTime();
    add("compare:floor", CompareFloor, 1000, 100000)->MeasureProcessCPUTime();
    add("compare:searchpath", Compare, 1000, 100000)->MeasureProcessCPUTime();
  }
  return true;
}();

}  // namespace
