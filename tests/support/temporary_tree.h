#ifndef SEARCHPATH_TESTS_SUPPORT_TEMPORARY_TREE_H
#define SEARCHPATH_TESTS_SUPPORT_TEMPORARY_TREE_H

#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/platform/iri_text.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace Corvane::PathManagement::test {

/// A fresh folder on the real disk, removed with all that is in it. Names are bytes, relative to
/// it.
class TemporaryTree {
 public:
  TemporaryTree() {
    std::string pattern = std::filesystem::temp_directory_path() / "searchpath-test-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
    root = std::filesystem::canonical(pattern);
  }
  TemporaryTree(const TemporaryTree&) = delete;
  TemporaryTree& operator=(const TemporaryTree&) = delete;
  ~TemporaryTree() {
    std::error_code ignored;
    std::filesystem::remove_all(root, ignored);
  }

  /// The native path of `name`, or of the tree itself.
  [[nodiscard]] std::string Path(const std::string& name = "") const {
    return name.empty() ? root.string() : root.string() + "/" + name;
  }
  [[nodiscard]] ustring Text(const std::string& name = "") const {
    return TextFromBytes(Path(name));
  }
  [[nodiscard]] AbsoluteIRI IRI(const std::string& name = "") const {
    return foundation::storage::vfs::toAbsoluteIRI(u"file", Text(name));
  }

  void Folder(const std::string& name) const { std::filesystem::create_directories(Path(name)); }

  /// Makes a file and the folders above it.
  void File(const std::string& name, const std::string& content = "") const {
    std::filesystem::create_directories(std::filesystem::path(Path(name)).parent_path());
    if (!(std::ofstream(Path(name)) << content)) throw std::runtime_error("cannot write " + name);
  }

  /// Makes a link that holds `target` as it stands.
  void Link(const std::string& target, const std::string& name) const {
    std::filesystem::create_directories(std::filesystem::path(Path(name)).parent_path());
    std::filesystem::create_symlink(target, Path(name));
  }

 private:
  std::filesystem::path root;
};

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_SUPPORT_TEMPORARY_TREE_H
