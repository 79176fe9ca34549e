// N folders added to a path of N others, and taken off again.

#include "searchpath/utilities/path_editing.h"

#include <boost/unordered/unordered_flat_set.hpp>

#include <benchmark/benchmark.h>
#include <string>

namespace {

using namespace Corvane::PathManagement;
using Folders = std::vector<AbsoluteIRI>;

/// Holds a list and nothing else; what it is given it has to walk.
class ListManager : public IMainSearchPathManager {
 public:
  void SetFolderIRIs(const AbsoluteIRIRange& folders, Notification&) override {
    Folders list;
    for (const AbsoluteIRI& folder : folders) list.push_back(folder);
    path = std::make_shared<const Folders>(std::move(list));
  }
  std::shared_ptr<const std::vector<ComponentIdentifier>> GetPackagesOnPath() const override {
    return nullptr;
  }
  std::shared_ptr<const Folders> GetFolderIRIs() const override { return path; }

  std::shared_ptr<const Folders> path;
};

/// The folders with the numbers from `begin` to `end`, each an IRI of its own.
Folders MakeFolders(std::int64_t begin, std::int64_t end) {
  Folders folders;
  for (std::int64_t number = begin; number < end; ++number) {
    ustring text = u"file:///usr/share/environment/toolbox/folder";
    for (const char digit : std::to_string(number)) text += static_cast<char16_t>(digit);
    folders.emplace_back(text);
  }
  return folders;
}

struct HeldHash {
  using is_avalanching = void;
  std::size_t operator()(std::uint64_t hash) const noexcept { return hash; }
};
using HashSet = boost::unordered_flat_set<std::uint64_t, HeldHash>;

Notification Add(const AbsoluteIRIRange& folders, IMainSearchPathManager& manager) {
  return AddIRIsToZentraPath(folders, manager, Position::Begin);
}

// The floors: one set of held hashes, trusted to be unique, and what the interface costs: a walk
// over the range that comes in, one over the range that goes out, the new list.

Notification AddFloor(const AbsoluteIRIRange& folders, IMainSearchPathManager& manager) {
  Notification notification;
  const auto current = manager.GetFolderIRIs();
  HashSet added;
  Folders list;
  for (const AbsoluteIRI& folder : folders) {
    if (added.insert(folder.hashValue()).second) list.push_back(folder);
  }
  list.reserve(current->size() + added.size());
  for (const AbsoluteIRI& folder : *current) {
    if (!added.contains(folder.hashValue())) list.push_back(folder);
  }
  manager.SetFolderIRIs(list, notification);
  return notification;
}

Notification RemoveFloor(const AbsoluteIRIRange& folders, IMainSearchPathManager& manager) {
  Notification notification;
  const auto current = manager.GetFolderIRIs();
  HashSet removed;
  for (const AbsoluteIRI& folder : folders) removed.insert(folder.hashValue());
  Folders list;
  for (const AbsoluteIRI& folder : *current) {
    if (!removed.contains(folder.hashValue())) list.push_back(folder);
  }
  manager.SetFolderIRIs(list, notification);
  return notification;
}

/// `edit` with N folders, on a path of N others and, when `areOnPath`, these as well.
template <class Edit>
void Run(benchmark::State& state, const Edit& edit, bool areOnPath) {
  const std::int64_t count = state.range(0);
  const Folders folders = MakeFolders(0, count);
  const auto path = std::make_shared<const Folders>(MakeFolders(areOnPath ? 0 : count, 2 * count));
  ListManager manager;
  for (auto _ : state) {
    manager.path = path;
    benchmark::DoNotOptimize(edit(folders, manager));
  }
  state.SetItemsProcessed(state.iterations() * count);
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(Run, add_floor, AddFloor, false)->Name("add_folders:floor")->Apply(Sizes);
BENCHMARK_CAPTURE(Run, add, Add, false)->Name("add_folders:searchpath")->Apply(Sizes);
BENCHMARK_CAPTURE(Run, remove_floor, RemoveFloor, true)->Name("remove_folders:floor")->Apply(Sizes);
BENCHMARK_CAPTURE(Run, remove, RemoveIRIsFromZentraPath, true)
    ->Name("remove_folders:searchpath")
    ->Apply(Sizes);

}  // namespace
