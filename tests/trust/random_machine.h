#ifndef SEARCHPATH_TESTS_TRUST_RANDOM_MACHINE_H
#define SEARCHPATH_TESTS_TRUST_RANDOM_MACHINE_H

#include "searchpath/host/environment.h"
#include "trust/other_users.h"
#include "trust/thing.h"

#include <filesystem>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace Corvane::PathManagement::test {

/// Folders, files and links below "/", and a path through them. The same seed makes the same.
class RandomMachine {
 public:
  std::vector<Thing> things;         // each behind the folder that it is in
  std::vector<std::string> missing;  // paths without links at which nothing stands
  std::vector<std::string> parts;    // of the path
  std::string workingFolder;
  std::size_t rules;  // which of kNamedRules

  explicit RandomMachine(std::size_t seed) : random(seed) {
    rules = Below(host::kNamedRules.size());
    MakeFolders();
    for (std::size_t count = Below(3); count > 0; --count) MakeLink();
    for (std::size_t count = 2 + Below(6); count > 0; --count) MakeFile();
    for (std::size_t count = 1 + Below(3); count > 0; --count) parts.push_back(MakePart());
    workingFolder = AnyFolder();
  }

  /// Puts everything on the disk, instead of what was there.
  void Build() const {
    for (const auto& entry : std::filesystem::directory_iterator("/")) {
      if (entry.path() != "/etc" && entry.path() != "/proc") remove_all(entry.path());
    }
    for (const Thing& thing : things) Make(thing);
    Make({Thing::Type::Folder, "/lair", "", 0, 0, 01777});
    Make({Thing::Type::Folder, "/work", "", kEve, kEvesGroup, 0755});
  }

  [[nodiscard]] host::EnvironmentOptions Options() const {
    host::EnvironmentOptions options;
    for (const std::string& part : parts) options.folders.push_back(TextFromBytes(part));
    options.rules = host::kNamedRules.at(rules).rules;
    return options;
  }

  [[nodiscard]] std::string Shown() const {
    std::string shown = host::kNamedRules.at(rules).name + std::string(" path");
    for (const std::string& part : parts) shown += " '" + part + '\'';
    shown += " from " + workingFolder + '\n';
    for (const Thing& thing : things) {
      const std::string mode = std::to_string(thing.mode >> 9) +
                               std::to_string(thing.mode >> 6 & 7) +
                               std::to_string(thing.mode >> 3 & 7) + std::to_string(thing.mode & 7);
      shown += mode + ' ' + std::to_string(thing.owner) + ':' + std::to_string(thing.group) + ' ' +
               thing.path + (thing.type == Thing::Type::Folder ? "/" : "") +
               (thing.target.empty() ? "" : " -> " + thing.target) +
               (thing.list.empty() ? "" : " with a list") + '\n';
    }
    return shown;
  }

 private:
  std::size_t Below(std::size_t end) { return random() % end; }
  bool OneIn(std::size_t count) { return Below(count) == 0; }
  template <class Value>
  Value Any(const std::vector<Value>& values) {
    return values[Below(values.size())];
  }

  std::string AnyFolder() {
    std::vector<std::string> folders;
    for (const Thing& thing : things) {
      if (thing.type == Thing::Type::Folder) folders.push_back(thing.path);
    }
    return Any(folders);
  }

  /// Rights as they are found, with some that are careless.
  void GiveRights(Thing& thing) {
    const bool isFolder = thing.type == Thing::Type::Folder;
    thing.owner = OneIn(4) ? Any<uid_t>({kOwner, kEve, kMallory, kStranger}) : 0;
    thing.group = OneIn(2) ? Any<gid_t>({kOwnersGroup, kEvesGroup, kBothGroup, kNobodysGroup}) : 0;
    thing.mode = isFolder || OneIn(2) ? 0755 : 0644;
    if (OneIn(3)) {
      thing.mode = Any<mode_t>({0777, 0775, 0770, 0750, 0711, 0733, 0707, 0772, 0730, 0700, 0664,
                                0666, 0642, 0620, static_cast<mode_t>(Below(01000))});
      if (isFolder && OneIn(3)) thing.mode |= S_ISVTX;
    }
    if (thing.type != Thing::Type::Link && OneIn(6)) thing.list = AnyList();
  }

  std::string AnyList() {
    const auto rights = [&] { return static_cast<unsigned>(OneIn(2) ? 7 : Below(8)); };
    std::vector<ListEntry> entries = {{ACL_USER_OBJ, 7}};
    for (const uid_t user : {kOwner, kEve, kMallory}) {
      if (OneIn(3)) entries.push_back({ACL_USER, rights(), user});
    }
    entries.push_back({ACL_GROUP_OBJ, static_cast<unsigned>(Below(8))});
    for (const gid_t group : {kOwnersGroup, kEvesGroup, kBothGroup}) {
      if (OneIn(3)) entries.push_back({ACL_GROUP, rights(), group});
    }
    entries.push_back({ACL_MASK, rights()});
    entries.push_back({ACL_OTHER, OneIn(4) ? rights() : 5});
    return ListBytes(entries);
  }

  std::string NewName(const std::string& letter) { return letter + std::to_string(things.size()); }

  void MakeFolders() {
    for (std::size_t count = 3 + Below(5); count > 0; --count) {
      const std::string in = things.empty() || OneIn(3) ? "" : AnyFolder();
      std::string name = NewName(OneIn(8) ? "+d" : OneIn(8) ? "@d" : "d");
      if (OneIn(8)) name = OneIn(2) ? "private" : "resources";
      const std::string path = in + '/' + name;
      const auto isThis = [&](const Thing& thing) { return thing.path == path; };
      if (std::any_of(things.begin(), things.end(), isThis)) continue;
      GiveRights(things.emplace_back(Thing{Thing::Type::Folder, path, ""}));
    }
  }

  void MakeLink() {
    const std::string in = AnyFolder();
    std::string target = OneIn(2) ? Any(things).path : AnyMissing();
    if (OneIn(3)) {
      target = std::filesystem::path(target).lexically_relative(in).string();
    }
    Add({Thing::Type::Link, in + '/' + (OneIn(2) ? "f" + std::to_string(Below(3)) : NewName("l")),
         target});
  }

  void MakeFile() { Add({Thing::Type::File, AnyFolder() + "/f" + std::to_string(Below(3)), ""}); }

  void Add(Thing thing) {
    for (const Thing& known : things) {
      if (known.path == thing.path) return;
    }
    GiveRights(thing);
    // Systems may refuse to follow a link of somebody else in a folder like /tmp.
    if (thing.type == Thing::Type::Link && IsLikeTmp(thing.path)) return;
    things.push_back(std::move(thing));
  }

  [[nodiscard]] bool IsLikeTmp(const std::string& path) const {
    for (const Thing& thing : things) {
      if (thing.path == path.substr(0, path.rfind('/'))) return (thing.mode & S_ISVTX) != 0;
    }
    return false;
  }

  std::string AnyMissing() {
    missing.push_back(AnyFolder() + (OneIn(2) ? "/none" : "/none/deep"));
    return missing.back();
  }

  std::string MakePart() {
    switch (Below(10)) {
      case 0:
        return AnyMissing();
      case 1:
        return Any<std::string>({"", ".", "rel", "rel/deep"});
      case 2: {
        const std::string folder = AnyFolder();
        return IsLikeTmp(folder) ? folder : folder + "/.." + folder.substr(folder.rfind('/'));
      }
      case 3:
      case 4:
        return Any(things).path;
      default:
        return AnyFolder();
    }
  }

  std::mt19937_64 random;
};

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_TRUST_RANDOM_MACHINE_H
