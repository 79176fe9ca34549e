#ifndef SEARCHPATH_TESTS_SUPPORT_FOLDER_CONTENTS_H
#define SEARCHPATH_TESTS_SUPPORT_FOLDER_CONTENTS_H

#include "support/shown.h"

#include <set>

// The folders of a path, main and special ones, and the files in them, by their names in a tree.
namespace Corvane::PathManagement::test {

using Contents = std::set<std::string>;

inline Contents ContentsOf(const IPath& path, const TemporaryTree& tree) {
  Contents all;
  path.ForEachEntry(kAllKindsAndResourcesScope, [&](const auto& folder) {
    const auto items = folder->GetItems();
    const std::string name = Shown(std::vector{folder}, tree) + '/';
    all.insert(name);
    for (const auto& item : *items) all.insert(name + BytesFromText(Shown(*item)).value());
    return false;
  });
  return all;
}

/// The same for what is on the disk, slow and obvious.
inline Contents ContentsOf(const std::vector<std::string>& folders, const TemporaryTree& tree) {
  Contents all;
  for (const auto& folder : folders) {
    std::error_code gone;
    all.insert(folder + '/');
    for (const auto& item : std::filesystem::directory_iterator(tree.Path(folder), gone)) {
      const std::string name = item.path().filename();
      if (!item.is_directory()) all.insert(folder + '/' + name);
      if (!item.is_directory() || name.find_first_of("+@p") != 0) continue;
      all.merge(ContentsOf(std::vector{folder + '/' + name}, tree));
    }
  }
  return all;
}

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_SUPPORT_FOLDER_CONTENTS_H
