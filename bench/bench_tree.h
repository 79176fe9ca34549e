#ifndef SEARCHPATH_BENCH_BENCH_TREE_H
#define SEARCHPATH_BENCH_BENCH_TREE_H

#include "searchpath/host/folder_entry.h"
#include "searchpath/host/folder_path.h"

#include <benchmark/benchmark.h>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace searchpath_bench {

inline constexpr std::size_t kFilesInAFolder = 100;

/// Folders of 100 empty files each on the real disk, made once a run and removed at its end. Every
/// hundredth folder holds an "@" folder.
class BenchTree {
 public:
  /// The tree with `folderCount` folders.
  static const BenchTree& Of(std::size_t folderCount);

  /// The tree with as many as the size of the case.
  static const BenchTree& Of(const benchmark::State& state) {
    return Of(static_cast<std::size_t>(state.range(0)));
  }

  explicit BenchTree(std::size_t folderCount);
  BenchTree(const BenchTree&) = delete;
  BenchTree& operator=(const BenchTree&) = delete;
  ~BenchTree();

  [[nodiscard]] const std::string& Root() const noexcept { return root; }
  /// Native paths, in path order.
  [[nodiscard]] const std::vector<std::string>& Folders() const noexcept { return folders; }
  [[nodiscard]] std::shared_ptr<const Corvane::PathManagement::host::FolderPath> MakePath() const;

  /// The name of one file; all names differ.
  [[nodiscard]] static std::string FileName(std::size_t folder, std::size_t file);
  /// Names to ask for, from all over the path in random order; one in five is not there.
  [[nodiscard]] std::vector<std::u16string> Questions(std::size_t count) const;

 private:
  std::string root;
  std::vector<std::string> folders;
};

/// For rows that read folders: two sizes, timed with all threads.
void FolderCounts(benchmark::internal::Benchmark* bench);

/// A floor: a bare loop of directory reads; returns how many items there are.
std::size_t ReadBare(const std::vector<std::string>& folders);

}  // namespace searchpath_bench

#endif  // SEARCHPATH_BENCH_BENCH_TREE_H
