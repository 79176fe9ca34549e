#ifndef SEARCHPATH_TESTS_RULES_RANDOM_TREE_H
#define SEARCHPATH_TESTS_RULES_RANDOM_TREE_H

#include "searchpath/host/environment.h"
#include "searchpath/host/native_location.h"
#include "support/temporary_tree.h"

#include <sys/stat.h>
#include <unistd.h>

#include <random>

namespace Corvane::PathManagement::test {

using Names = std::vector<std::string>;

inline constexpr std::uint64_t kTreeSeed = 20261122;

/// What a `RandomTree` is made of.
struct TreeStyle {
  Names files;      // names of what stands in a folder
  Names questions;  // names that are asked for
  std::string content;
  std::vector<mode_t> modes;  // of files
  std::string special;        // a link to it, or a pipe when it is "", stands for all other types
};

/// Scripts that print their own path when they are started, also when they cannot be read.
inline const TreeStyle kPrograms = {
    {"a", "b", "c", "d e", "-x", "\xC3\xA9"},
    {"a", "b", "c", "d e", "-x", "\xC3\xA9", "none", "p/a", "./a", "q/b", "sub/a", "./p/c",
     "../tree/r/a", "p//a", "p/.", ".", "..", "p/sub/", "s/sub/deep/b"},
    "#!/bin/echo\n",
    {0755, 0755, 0755, 0644, 0111, 0100, 0001, 0000, 0010, 0744, 0700, 0555, 0666},
    ""};

inline const TreeStyle kHeaders = {
    {"a.h", "b.h", "c.h", "a.c"},
    {"a.h", "b.h", "c.h", "sub/a.h", "sub/c.h", "sub/deep/b.h", "./a.h", "sub/../b.h", "../p/a.h",
     "none.h", "sub", "sub//a.h", "sub/./b.h", "a.h/b.h"},
    "int x;\n",
    {0644, 0644, 0644, 0644, 0644, 0644, 0644, 0644, 0644, 0000, 0222},
    "/dev/null"};

/// Folders "p" to "s", and some below them, with files, folders and links of the same few names. They
/// stand in the working folder of this process.
class RandomTree {
 public:
  RandomTree(std::uint64_t number, const TreeStyle& treeStyle, bool makesLoops = true)
      : random(kTreeSeed + number), style(treeStyle), hasLoops(makesLoops) {
    tree.Folder("tree/src");
    tree.Folder("tree/start");  // on no path
    tree.Folder("tree/end");
    if (chdir(Path().c_str()) != 0) throw std::runtime_error("cannot work in " + Path());
    Fill("p");
    for (const std::string folder : {"q", "r", "s"}) {
      const std::string earlier(
          1, static_cast<char>(folder[0] - 1 -
                               static_cast<int>(Below(static_cast<std::size_t>(folder[0] - 'p')))));
      const std::size_t kind = Below(100);
      if (kind < 78) Fill(folder);
      if (kind >= 78 && kind < 84) tree.File("tree/" + folder);
      if (kind >= 84 && kind < 94) tree.Link(earlier, "tree/" + folder);
    }
    for (const std::string& file : style.files) {
      if (Below(3) == 0) Make(file);
      if (Below(3) == 0) Make("src/" + file);
    }
    for (const std::string folder : {"p", "q", "r", "s", "p/sub", "q/sub"}) {
      if (Below(6) == 0) Lock(folder, Any(std::vector<mode_t>{0711, 0444, 0000, 0111, 0333}));
    }
  }
  RandomTree(const RandomTree&) = delete;
  RandomTree& operator=(const RandomTree&) = delete;
  ~RandomTree() { Unlock(); }

  /// Removes all that is there, and makes what was not.
  void Renew() {
    Unlock();
    for (const std::string folder : {"p", "q", "r", "s", "src"}) {
      std::filesystem::remove_all(folder);
      for (const std::string& file : style.files) {
        for (const std::string below : {"/", "/sub/", "/sub/deep/"}) {
          if (Below(2) == 0) tree.File("tree/" + folder + below + file, style.content);
        }
      }
    }
  }

  [[nodiscard]] std::size_t Below(std::size_t limit) { return random() % limit; }
  template <class List>
  [[nodiscard]] typename List::value_type Any(const List& list) {
    return list[Below(list.size())];
  }

  [[nodiscard]] const TemporaryTree& GetScratch() const { return tree; }
  [[nodiscard]] std::string Path(const std::string& name = "") const {
    return tree.Path("tree" + (name.empty() ? "" : "/" + name));
  }

  /// Parts of a path. At most one empty part stands at its end, so that all agree what it means.
  [[nodiscard]] Names Parts() {
    Names parts(1 + Below(6));
    for (std::string& part : parts) {
      part = Any(Names{Path("p"), Path("q"), Path("r"), Path("s"), "p", "q", "./r", "", ".",
                       Path("none"), "p/../q", "~", Path("p/"), "p/sub", Path("/s"), "src"});
    }
    while (parts.size() > 1 && parts.back().empty() && parts[parts.size() - 2].empty()) {
      parts.pop_back();
    }
    return parts;
  }

 private:
  void Fill(const std::string& folder) {
    tree.Folder("tree/" + folder);
    for (const std::string& file : style.files) {
      if (Below(2) == 0) Make(folder + "/" + file);
    }
    const bool isDeep = folder.find("deep") != folder.npos;
    if (!isDeep && Below(2) == 0) Fill(folder + (folder.size() == 1 ? "/sub" : "/deep"));
  }

  void Make(const std::string& name) {
    const std::size_t kind = Below(100);
    if (kind < 60) {
      tree.File("tree/" + name, style.content);
      chmod(Path(name).c_str(), Any(style.modes));
    } else if (kind < 70) {
      tree.Folder("tree/" + name);
      if (Below(2) == 0) Lock(name, 0000);
    } else if (kind < 80) {
      tree.Link(kind < 75 ? "nowhere" : Path("none"), "tree/" + name);
    } else if (kind < 95) {
      const std::string folder = hasLoops ? Any(Names{"p", "q", "r"}) : "src";
      const std::string target = Path(folder + "/" + Any(style.files));
      if (hasLoops || !name.starts_with("src")) tree.Link(target, "tree/" + name);
    } else if (!style.special.empty()) {
      tree.Link(style.special, "tree/" + name);
    } else {
      mkfifo(Path(name).c_str(), 0755);
    }
  }

  /// Whoever is not root can remove what is in a folder only with rights to it.
  void Unlock() {
    for (auto folder = locked.rbegin(); folder != locked.rend(); ++folder) {
      chmod(Path(*folder).c_str(), 0755);
    }
    locked.clear();
  }

  void Lock(const std::string& folder, mode_t mode) {
    struct stat status = {};
    if (lstat(Path(folder).c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return;
    chmod(Path(folder).c_str(), mode);
    locked.push_back(folder);
  }

  std::mt19937_64 random;
  const TreeStyle& style;
  const bool hasLoops;
  Names locked;
  const TemporaryTree tree;
};

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_RULES_RANDOM_TREE_H
