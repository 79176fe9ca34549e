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
#include <vector>

namespace Corvane::PathManagement::test {

/// A fresh folder on the real disk, removed with all that is in it. Names in it are bytes.
class TemporaryTree {
 public:
  explicit TemporaryTree(
      const std::filesystem::path& below = std::filesystem::temp_directory_path()) {
    std::string pattern = below / "searchpath-test-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
    root = std::filesystem::canonical(pattern);
  }
  TemporaryTree(const TemporaryTree&) = delete;
  TemporaryTree& operator=(const TemporaryTree&) = delete;
  ~TemporaryTree() {
    std::error_code ignored;
    std::filesystem::remove_all(root, ignored);
  }

  /// Where `name` stands, or the tree itself.
  std::string Path(const std::string& name = "") const {
    return name.empty() ? root.string() : root.string() + "/" + name;
  }
  ustring Text(const std::string& name = "") const { return TextFromBytes(Path(name)); }
  AbsoluteIRI IRI(const std::string& name = "") const {
    return foundation::storage::vfs::toAbsoluteIRI(u"file", Text(name));
  }

  void Folder(const std::string& name) const { std::filesystem::create_directories(Path(name)); }

  /// Makes a file, or gives it another content, and the folders above it.
  void File(const std::string& name, const std::string& content = "") const {
    MakeAbove(name);
    if (!(std::ofstream(Path(name)) << content)) throw std::runtime_error("cannot make " + name);
  }
  void Files(const std::vector<std::string>& names) const {
    for (const std::string& name : names) File(name);
  }
  /// The bytes of a file; none of what is no file.
  std::string Content(const std::string& name) const {
    std::ifstream file(Path(name));
    return {std::istreambuf_iterator<char>(file), {}};
  }
  /// Runs `commands` of the shell here.
  void Do(const std::string& commands) const {
    if (std::system(("cd " + Path() + " && { " + commands + "; }").c_str()) != 0) {
      throw std::runtime_error("failed: " + commands);
    }
  }
  /// Makes a link that holds `target` as it stands.
  void Link(const std::string& target, const std::string& name) const {
    MakeAbove(name);
    std::filesystem::create_symlink(target, Path(name));
  }

 private:
  void MakeAbove(const std::string& name) const {
    std::filesystem::create_directories(std::filesystem::path(Path(name)).parent_path());
  }

  std::filesystem::path root;
};

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_SUPPORT_TEMPORARY_TREE_H
