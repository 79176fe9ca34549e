#ifndef SEARCHPATH_BENCH_HEADER_TREE_H
#define SEARCHPATH_BENCH_HEADER_TREE_H

#include "searchpath/host/environment.h"
#include "searchpath/model/byte_text.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace searchpath_bench {

using namespace Corvane::PathManagement;

/// Roots with empty headers below them, in folders "part_N/detail" of 10 each. Made once a run.
class HeaderTree {
 public:
  static constexpr std::size_t kInAFolder = 10;

  static const HeaderTree& Of(std::size_t roots, std::size_t foldersInARoot) {
    static std::map<std::pair<std::size_t, std::size_t>, HeaderTree> trees;
    return trees.try_emplace({roots, foldersInARoot}, roots, foldersInARoot).first->second;
  }

  HeaderTree(std::size_t rootCount, std::size_t folderCount) {
    top = std::filesystem::temp_directory_path() / "searchpath-bench-XXXXXX";
    if (mkdtemp(top.data()) == nullptr) throw std::runtime_error("no temporary folder");
    for (std::size_t root = 0; root < rootCount; ++root) {
      roots.push_back(top + "/root_" + std::to_string(root));
      for (std::size_t folder = 0; folder < folderCount; ++folder) {
        const std::string below = "part_" + std::to_string(folder) + "/detail/";
        std::filesystem::create_directories(roots.back() + "/" + below);
        for (std::size_t file = 0; file < kInAFolder; ++file) {
          names.push_back(below + "header_" + std::to_string(names.size()) + ".h");
          if (!std::ofstream(roots.back() + "/" + names.back())) {
            throw std::runtime_error("cannot make " + names.back());
          }
        }
      }
    }
  }
  HeaderTree(const HeaderTree&) = delete;
  HeaderTree& operator=(const HeaderTree&) = delete;
  ~HeaderTree() {
    std::error_code ignored;
    std::filesystem::remove_all(top, ignored);
  }

  /// Native paths, in path order.
  [[nodiscard]] const std::vector<std::string>& Roots() const noexcept { return roots; }
  /// Of all headers, below their roots; all differ.
  [[nodiscard]] const std::vector<std::string>& Names() const noexcept { return names; }

  [[nodiscard]] host::EnvironmentOptions Options(
      const host::LookupRules& rules = host::kPlainRules) const {
    host::EnvironmentOptions options{.folders = {}, .rules = rules};
    for (const auto& root : roots) options.folders.push_back(TextFromBytes(root));
    return options;
  }

  /// Names to ask for, in random order; one in five is not there.
  [[nodiscard]] std::vector<host::Lookup> Questions(std::size_t count) const {
    std::mt19937_64 random(20261122);
    std::vector<host::Lookup> questions;
    for (std::size_t at = 0; at < count; ++at) {
      std::string name = names[random() % names.size()];
      if (at % 5 == 0) name += "y";
      questions.push_back({.name = TextFromBytes(name)});
    }
    return questions;
  }

 private:
  std::string top;
  std::vector<std::string> roots;
  std::vector<std::string> names;
};

}  // namespace searchpath_bench

#endif  // SEARCHPATH_BENCH_HEADER_TREE_H
