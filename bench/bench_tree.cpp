#include "bench_tree.h"

#include "searchpath/model/byte_text.h"
#include "searchpath/platform/iri_text.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <random>
#include <stdexcept>

namespace searchpath_bench {

namespace {

std::string Numbered(const char* prefix, std::size_t number) {
  std::string digits = std::to_string(number);
  return prefix + std::string(5 - digits.size(), '0') + digits;
}

}  // namespace

const BenchTree& BenchTree::Of(std::size_t folderCount) {
  static std::map<std::size_t, BenchTree> trees;
  return trees.try_emplace(folderCount, folderCount).first->second;
}

BenchTree::BenchTree(std::size_t folderCount) {
  root = std::filesystem::temp_directory_path() / "searchpath-bench-XXXXXX";
  if (mkdtemp(root.data()) == nullptr) throw std::runtime_error("no temporary folder");
  for (std::size_t folder = 0; folder < folderCount; ++folder) {
    folders.push_back(root + "/" + Numbered("folder", folder));
    mkdir(folders.back().c_str(), 0755);
    for (std::size_t file = 0; file < kFilesInAFolder; ++file) {
      const std::string path = folders.back() + "/" + FileName(folder, file);
      const int made = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
      if (made < 0) throw std::runtime_error("cannot make " + path);
      close(made);
    }
    if (folder % 100 == 0)
      mkdir((folders.back() + "/@" + Numbered("method", folder)).c_str(), 0755);
  }
}

BenchTree::~BenchTree() {
  std::error_code ignored;
  std::filesystem::remove_all(root, ignored);
}

std::shared_ptr<const Corvane::PathManagement::host::FolderPath> BenchTree::MakePath() const {
  using Corvane::PathManagement::TextFromBytes;
  using Corvane::PathManagement::host::FolderEntry;
  std::vector<std::shared_ptr<const FolderEntry>> entries;
  entries.reserve(folders.size());
  for (const auto& folder : folders) {
    entries.push_back(FolderEntry::Create(
        foundation::storage::vfs::toAbsoluteIRI(u"file", TextFromBytes(folder))));
  }
  return std::make_shared<const Corvane::PathManagement::host::FolderPath>(std::move(entries));
}

std::string BenchTree::FileName(std::size_t folder, std::size_t file) {
  return "fn_" + std::to_string(folder * kFilesInAFolder + file) + "_name.x";
}

std::vector<std::u16string> BenchTree::Questions(std::size_t count) const {
  std::mt19937_64 random(20240229);
  std::vector<std::u16string> names;
  for (std::size_t at = 0; at < count; ++at) {
    const std::size_t folder = random() % folders.size();
    std::string name = FileName(folder, random() % kFilesInAFolder);
    if (at % 5 == 0) name += "y";
    names.push_back(Corvane::PathManagement::TextFromBytes(name));
  }
  return names;
}

void FolderCounts(benchmark::internal::Benchmark* bench) {
  bench->Arg(100)
      ->Arg(1000)
      ->Arg(5000)
      ->Unit(benchmark::kMillisecond)
      ->MeasureProcessCPUTime()
      ->UseRealTime();
}

std::size_t ReadBare(const std::vector<std::string>& folders) {
  std::size_t count = 0;
  for (const auto& folder : folders) {
    DIR* const directory = opendir(folder.c_str());
    while (readdir(directory) != nullptr) ++count;
    closedir(directory);
  }
  return count;
}

}  // namespace searchpath_bench
