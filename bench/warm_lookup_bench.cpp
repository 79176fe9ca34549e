// A plain name on a path of N folders x 100 files, warm: hits everywhere and one miss in five; the
// hits and the misses alone; and the same with three extensions to try. The text of the name is at
// hand; what a question needs beside it is made in the loop.

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
#include <random>
#include <thread>

namespace searchpath_bench {
namespace {

using namespace Corvane::PathManagement;

constexpr std::size_t kQuestions = 1 << 14;

void Sizes(benchmark::internal::Benchmark* bench) {
  bench->Arg(10)->Arg(100)->Arg(1000)->Arg(5000);
}

enum class Kind : std::uint8_t { Mixed, Hits, Misses, Extensions };

/// What is asked for, as text.
struct Questions {
  std::vector<ustring> names;
  std::vector<ustring> extensions = {};
};

Questions MakeQuestions(const BenchTree& tree, Kind kind) {
  Questions questions = {.names = tree.Questions(kQuestions)};
  if (kind == Kind::Extensions) questions.extensions = {u".zt", u".x", u".y"};
  for (ustring& name : questions.names) {
    const bool isMiss = name.ends_with(u'y');
    if (kind == Kind::Hits && isMiss) name.pop_back();
    if (kind == Kind::Misses && !isMiss) name.push_back(u'y');
    if (kind == Kind::Extensions) name.erase(name.find(u'.'), 2);
  }
  return questions;
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
  const auto [names, extensions] = MakeQuestions(tree, kind);
  std::size_t at = 0;
  ustring joined;
  for (auto _ : state) {
    boost::optional<FoundItem> found;
    const ustring& name = names[at++ % kQuestions];
    auto first = static_cast<std::uint32_t>(items.size());
    const auto ask = [&](const ustring& file) {
      const auto position = positions.find(file);
      if (position != positions.end()) first = std::min(first, position->second);
    };
    for (const auto& extension : extensions) ask(joined.assign(name).append(extension));
    if (extensions.empty()) ask(name);
    if (first < items.size()) found = items[first];
    benchmark::DoNotOptimize(found);
  }
}

/// Calls ask(name) for every name once, so that all is warm, and then in the loop.
template <class AskName>
void Ask(benchmark::State& state, const std::vector<ustring>& names, const AskName& ask) {
  for (const ustring& name : names) benchmark::DoNotOptimize(ask(name));
  std::size_t at = 0;
  for (auto _ : state) {
    auto found = ask(names[at++ % kQuestions]);
    benchmark::DoNotOptimize(found);
  }
}

/// Ordinary folders and method entries, on any path.
void AskPath(benchmark::State& state, Kind kind, const IPath& path, FilenameMatchingPolicy policy) {
  const auto [names, extensions] = MakeQuestions(BenchTree::Of(state), kind);
  if (extensions.empty()) {
    Ask(state, names, [&](const ustring& name) {
      return FindFirstFileVisibleOnPath(path, detail::SearchTarget(name), policy);
    });
  } else {
    Ask(state, names, [&, &tried = extensions](const ustring& name) {
      return FindFirstFileVisibleOnPath(path, {name, tried}, policy);
    });
  }
}

void WarmPath(benchmark::State& state, Kind kind, FilenameMatchingPolicy policy) {
  AskPath(state, kind, *BenchTree::Of(state).MakePath(), policy);
}

std::unique_ptr<host::Environment> MakeEnvironment(const BenchTree& tree, bool hides) {
  host::EnvironmentOptions options;
  for (const auto& folder : tree.Folders()) options.folders.push_back(TextFromBytes(folder));
  if (hides) options.without.push_back(options.folders.back());
  return std::make_unique<host::Environment>(options);
}

/// The question of most programs.
void WarmEnvironment(benchmark::State& state, Kind kind) {
  const auto environment = MakeEnvironment(BenchTree::Of(state), false);
  const auto [names, extensions] = MakeQuestions(BenchTree::Of(state), kind);
  Ask(state, names, [&, &tried = extensions](const ustring& name) {
    return environment->Find({.name = name, .extensions = tried});
  });
}

/// The same where the text of a name is all there is.
void WarmNames(benchmark::State& state, Kind kind) {
  const auto environment = MakeEnvironment(BenchTree::Of(state), false);
  Ask(state, MakeQuestions(BenchTree::Of(state), kind).names,
      [&](const ustring& name) { return environment->Find(name); });
}

/// The same on a path.
void WarmNamesOnPath(benchmark::State& state, Kind kind) {
  const auto path = BenchTree::Of(state).MakePath();
  Ask(state, MakeQuestions(BenchTree::Of(state), kind).names, [&](const ustring& name) {
    return FindFirstFileVisibleOnPath(*path, name, FilenameMatchingPolicy::FileSystemDefault);
  });
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
    benchmark::RegisterBenchmark((row + ":environment").c_str(), WarmEnvironment, kind)
        ->Apply(Sizes);
    if (kind != Kind::Extensions) {
      benchmark::RegisterBenchmark((row + ":name").c_str(), WarmNames, kind)->Apply(Sizes);
      benchmark::RegisterBenchmark((row + ":name_on_path").c_str(), WarmNamesOnPath, kind)
          ->Apply(Sizes);
    }
    for (const auto& [name, policy] : policies) {
      benchmark::RegisterBenchmark((row + ":" + name).c_str(), WarmPath, kind, policy)
          ->Apply(Sizes);
    }
  }
  return true;
}();

/// On the path of an environment, which drops repeats, without and with a hidden folder.
void WarmComposite(benchmark::State& state, bool hides) {
  const auto environment = MakeEnvironment(BenchTree::Of(state), hides);
  AskPath(state, Kind::Mixed, *environment->GetPath(), FilenameMatchingPolicy::FileSystemDefault);
}
BENCHMARK_CAPTURE(WarmComposite, "", false)->Name("warm_lookup:composite")->Apply(Sizes);
BENCHMARK_CAPTURE(WarmComposite, "", true)->Name("warm_lookup:hiding")->Apply(Sizes);

/// Partial pathnames beside the plain names of the same files.
void WarmPartial(benchmark::State& state, bool isPartial) {
  const BenchTree& tree = BenchTree::Of(state);
  const auto path = tree.MakePath();
  std::vector<ustring> names;
  std::mt19937_64 random(20260301);
  while (names.size() < kQuestions) {
    const std::size_t folder = random() % tree.Folders().size();
    const std::string& location = tree.Folders()[folder];
    const std::string file = BenchTree::FileName(folder, random() % kFilesInAFolder);
    names.push_back(
        TextFromBytes(isPartial ? location.substr(location.rfind('/') + 1) + '/' + file : file));
  }
  Ask(state, names, [&](const ustring& name) {
    return FindFirstFileVisibleOnPath(*path, detail::SearchTarget(name),
                                      FilenameMatchingPolicy::FileSystemDefault);
  });
}
BENCHMARK_CAPTURE(WarmPartial, "", false)->Name("warm_partial:floor")->Apply(Sizes);
BENCHMARK_CAPTURE(WarmPartial, "", true)->Name("warm_partial:file_system")->Apply(Sizes);

/// A peer: a flat set of names for each folder, asked one after the other.
void SetPerFolder(benchmark::State& state) {
  const BenchTree& tree = BenchTree::Of(state);
  const auto path = tree.MakePath();
  const auto entries = path->GetMainEntries();
  using Files =
      boost::unordered_flat_map<ustring, std::shared_ptr<const PathItem>, std::hash<ustring>>;
  std::vector<Files> folders;
  for (const auto& entry : *entries) {
    const auto items = entry->GetItems();
    Files& files = folders.emplace_back();
    for (const auto& item : *items) files.emplace(item->GetName() + item->GetExtension(), item);
  }
  std::thread([] {}).join();  // counts of owners are atomic from the first thread on
  Ask(state, MakeQuestions(tree, Kind::Mixed).names, [&](const ustring& name) {
    boost::optional<FoundItem> found;
    for (std::size_t folder = 0; folder < folders.size() && !found; ++folder) {
      const auto file = folders[folder].find(name);
      if (file != folders[folder].end()) found.emplace(file->second, (*entries)[folder]);
    }
    return found;
  });
}
BENCHMARK(SetPerFolder)->Name("warm_lookup:set_per_folder")->Apply(Sizes);

/// A peer: the library behind the file look-up of a typesetting system, with its database of names
/// over one recursive root, written here as the text file that it reads.
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
