// A search-path string of N folders, taken apart.

#include "searchpath/utilities/path_strings.h"

#include <boost/tokenizer.hpp>

#include <benchmark/benchmark.h>

namespace {

using Corvane::PathManagement::ustring;

ustring MakePathString(const benchmark::State& state) {
  ustring text;
  for (std::int64_t folder = 0; folder < state.range(0); ++folder) {
    text += u"/usr/share/environment/toolbox/folder";
    for (const char digit : std::to_string(folder)) text += static_cast<char16_t>(digit);
    text += u':';
  }
  return text;
}

/// The floor: a scan for the separators into strings.
void Floor(benchmark::State& state) {
  const ustring text = MakePathString(state);
  for (auto _ : state) {
    std::vector<ustring> folders;
    std::size_t begin = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
      if (text[at] != u':' && text[at] != u';') continue;
      if (at > begin) folders.emplace_back(text, begin, at - begin);
      begin = at + 1;
    }
    if (begin < text.size()) folders.emplace_back(text, begin);
    benchmark::DoNotOptimize(folders);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Floor)->Name("split:floor")->Arg(100)->Arg(100000);

/// A tokenizer that makes a string of each token, and a vector of the strings.
void Tokenizer(benchmark::State& state) {
  using Separator = boost::char_separator<char16_t>;
  const ustring text = MakePathString(state);
  for (auto _ : state) {
    const boost::tokenizer<Separator, ustring::const_iterator, ustring> tokens(text,
                                                                               Separator(u";:"));
    std::vector<ustring> folders(tokens.begin(), tokens.end());
    benchmark::DoNotOptimize(folders);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Tokenizer)->Name("split:tokenizer")->Arg(100)->Arg(100000);

void Split(benchmark::State& state) {
  const ustring text = MakePathString(state);
  for (auto _ : state) {
    benchmark::DoNotOptimize(Corvane::PathManagement::SplitZentraPath(text));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Split)->Name("split:searchpath")->Arg(100)->Arg(100000);

}  // namespace
