#ifndef SEARCHPATH_TESTS_TRUST_PLANTER_H
#define SEARCHPATH_TESTS_TRUST_PLANTER_H

#include "trust/random_machine.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace Corvane::PathManagement::test {

inline const std::string kPlanted = "planted";

/// What somebody tries on a file system. Knows nothing about which path is searched, or how.
class Planter {
 public:
  enum class Move {
    CreateIn,
    ReplaceByFolders,  // whatever stood below
    ReplaceByFiles,    // with files for all that is no folder, the deepest first
    ReplaceByFilesAboveFirst,
    ReplaceByFile,
    ReplaceByLink,
    Write,
    MakeFolder,
    MakeFile
  };

  explicit Planter(const RandomMachine& known) : machine(known) {}

  /// Tries a move as the present user. Returns whether it went well; `touched` says whether anything is
  /// other than before.
  bool Try(Move move, const std::string& path, bool& touched) {
    changed = false;
    OpenTheWay(path);
    const bool went = Do(move, path);
    touched = changed;
    return went;
  }

  /// Makes a file that gives itself away, and a special folder with one.
  bool CreateIn(const std::string& folder) {
    const bool hasFile = MakeFile(folder + "/probe");
    return MakeFolder(folder + "/+probe") ? MakeFile(folder + "/+probe/probe") || hasFile : hasFile;
  }

  void MakeAll(const std::string& folder) {
    for (std::size_t end = folder.find('/', 1); end != folder.npos;
         end = folder.find('/', end + 1)) {
      MakeFolder(folder.substr(0, end));
    }
    if (!folder.empty()) MakeFolder(folder);
    CreateIn(folder.empty() ? "." : folder);
  }

 private:
  bool Do(Move move, const std::string& path) {
    switch (move) {
      case Move::CreateIn:
        return CreateIn(path);
      case Move::Write:
        return Write(path);
      case Move::MakeFile:
        MakeAll(path.substr(0, path.rfind('/')));
        return MakeFile(path);
      case Move::MakeFolder:
        MakeAll(path);
        return changed;
      case Move::ReplaceByFile:
        return TakeAway(path) && MakeFile(path);
      case Move::ReplaceByFolders:
        return TakeAway(path) && Imitate(path, path, {});
      case Move::ReplaceByFiles:
        return TakeAway(path) && Imitate(path, path, Reversed(LeavesOf(path)));
      case Move::ReplaceByFilesAboveFirst:
        return TakeAway(path) && Imitate(path, path, LeavesOf(path));
      case Move::ReplaceByLink:
        break;
    }
    return ReplaceByLink(path);
  }

  /// Gives itself all rights to what it owns on the way.
  void OpenTheWay(const std::string& path) {
    for (std::size_t end = path.find('/', 1); end != path.npos; end = path.find('/', end + 1)) {
      Own(path.substr(0, end));
    }
    Own(path);
  }

  void Own(const std::string& path) {
    struct stat status = {};
    if (lstat(path.c_str(), &status) != 0 || S_ISLNK(status.st_mode)) return;
    if (status.st_uid != geteuid() || (status.st_mode & 0777) == 0777) return;
    if (chmod(path.c_str(), 0777) == 0) changed = true;
  }

  bool MakeFolder(const std::string& path) { return Changes(mkdir(path.c_str(), 0755)); }

  bool MakeFile(const std::string& path) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0755);
    return Changes(file) && Fill(file);
  }

  bool Write(const std::string& path) {
    const int file = open(path.c_str(), O_WRONLY | O_TRUNC | O_NOFOLLOW);
    return Changes(file) && Fill(file);
  }

  static bool Fill(int file) {
    const ssize_t size = write(file, kPlanted.data(), kPlanted.size());
    return close(file) == 0 && size == static_cast<ssize_t>(kPlanted.size());
  }

  bool TakeAway(const std::string& path) {
    return Changes(rename(path.c_str(), (path + ".away").c_str()));
  }

  static std::vector<std::string> Reversed(std::vector<std::string> texts) {
    std::reverse(texts.begin(), texts.end());
    return texts;
  }

  /// What is no folder below `path`, or need be none since a link leads there, in order.
  [[nodiscard]] std::vector<std::string> LeavesOf(const std::string& path) const {
    std::set<std::string> leaves(machine.missing.begin(), machine.missing.end());
    for (const Thing& thing : machine.things) {
      if (thing.type != Thing::Type::Folder) leaves.insert(thing.path);
      if (thing.type != Thing::Type::Link) continue;
      const std::filesystem::path in = std::filesystem::path(thing.path).parent_path();
      leaves.insert((in / thing.target).lexically_normal());
    }
    std::erase_if(leaves, [&](const auto& leaf) { return !leaf.starts_with(path + '/'); });
    return {leaves.begin(), leaves.end()};
  }

  /// Makes at `path` what there was below `from`: files for `leaves`, then folders, each with a probe.
  bool Imitate(const std::string& path, const std::string& from,
               const std::vector<std::string>& leaves) {
    if (!MakeFolder(path)) return false;
    const auto copyOf = [&](const std::string& other) { return path + other.substr(from.size()); };
    for (const std::string& leaf : leaves) {
      const std::string copy = copyOf(leaf);
      MakeAll(copy.substr(0, copy.rfind('/')));
      MakeFile(copy);
    }
    CreateIn(path);
    std::vector<std::string> others = machine.missing;
    for (const char* relative : {"/rel", "/rel/deep"}) {
      others.push_back(machine.workingFolder + relative);
    }
    for (const Thing& thing : machine.things) others.push_back(thing.path);
    for (const std::string& other : others) {
      if (other.starts_with(from + '/')) MakeAll(copyOf(other));
    }
    return true;
  }

  /// By a link to a folder beside which all other folders seem to stand, for paths with "..".
  bool ReplaceByLink(const std::string& path) {
    const std::string lair = "/lair/" + std::to_string(geteuid());
    if (!TakeAway(path)) return false;
    MakeFolder(lair);
    for (const Thing& thing : machine.things) {
      MakeAll(lair + thing.path.substr(thing.path.rfind('/')));
    }
    Imitate(lair + "/in", path, LeavesOf(path));
    return Changes(symlink((lair + "/in").c_str(), path.c_str()));
  }

  bool Changes(int result) {
    changed = changed || result >= 0;
    return result >= 0;
  }

  const RandomMachine& machine;
  bool changed = false;
};

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_TRUST_PLANTER_H
