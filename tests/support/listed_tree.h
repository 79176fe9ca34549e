#ifndef SEARCHPATH_TESTS_SUPPORT_LISTED_TREE_H
#define SEARCHPATH_TESTS_SUPPORT_LISTED_TREE_H

#include "searchpath/host/folder_path.h"
#include "searchpath/utilities/listed_path.h"
#include "support/temporary_tree.h"

#include <random>
#include <set>

namespace Corvane::PathManagement::test {

/// Random folders "a", "b" and "c" with special folders of all kinds below them, on disk and as a
/// listing of the same names at the same locations.
class ListedTree {
 public:
  explicit ListedTree(std::uint64_t seed, bool hasOrdinaryFoldersBelow = true)
      : random(seed), hasOrdinaryBelow(hasOrdinaryFoldersBelow) {
    for (const char* name : {"a", "b", "@c"}) {
      folders.push_back(Make(name, 0));
      onDisk.push_back(host::FolderEntry::Create(tree.IRI(name)));
    }
    std::shuffle(folders.front().files.begin(), folders.front().files.end(), random);
  }

  [[nodiscard]] std::size_t Below(std::size_t limit) { return random() % limit; }
  template <class List>
  [[nodiscard]] typename List::value_type AnyOf(const List& list) {
    return list[Below(list.size())];
  }

  const TemporaryTree tree;
  std::vector<ListedFolder> folders;
  host::FolderEntries onDisk;  // the same

 private:
  ListedFolder Make(const std::string& name, std::size_t depth) {
    static const std::vector<std::string> files = {"f",
                                                   "F",
                                                   "f.zt",
                                                   "F.zt",
                                                   "f.ZT",
                                                   "g.zt",
                                                   ".zt",
                                                   "f.y",
                                                   "f.\xC3\xA9",
                                                   "f.\xC3\x89",
                                                   "f.\xE2\x84\xAA",
                                                   "\xFF.zt",
                                                   "\xF0\x9F\x98\x80",
                                                   "\xEF\xBF\xBD"};
    static const std::vector<std::string> below = {
        "private", "resources", "+f", "+g", "@f", "@F", "@f.zt", "plain", "@\xC3\xA9"};
    tree.Folder(name);
    ListedFolder folder{tree.IRI(name)};
    for (const std::string& file : files) {
      if (Below(2) != 0) continue;
      tree.File(name + "/" + file);
      folder.files.push_back(TextFromBytes(file));
    }
    for (const std::string& other : below) {
      if (other == "plain" && !hasOrdinaryBelow) continue;
      if (depth < 3 && Below(5) == 0) folder.folders.push_back(Make(name + "/" + other, depth + 1));
    }
    std::shuffle(folder.folders.begin(), folder.folders.end(), random);
    return folder;
  }

  std::mt19937_64 random;
  bool hasOrdinaryBelow;
};

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_SUPPORT_LISTED_TREE_H
