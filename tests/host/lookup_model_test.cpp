#include "support/setting.h"
#include "support/shown.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <random>
#include <set>

// Look-ups on random trees against a plain restatement of the rules: the first folder wins, "@name"
// folders join for the name they are called, private folders come first for the folder above them, a
// folder that comes again is dropped, a hidden one is not there. Shadows are the names that, so asked,
// mean several files.

namespace Corvane::PathManagement::host {
namespace {

using test::Shown;
using test::TemporaryTree;
using Names = std::vector<std::string>;

const Names kFiles = {"f",    "F",   "g",        "f.zt",        "F.zt",        "f.ZT",
                      "g.zt", "f.y", "\xC3\xA9", "\xC3\x89.zt", "\xC3\xA9.zt", "f.\xE2\x84\xAA"};

/// Knows the capitals that occur here: also an E with an accent, and the sign for kelvin, which is a
/// k and two bytes longer.
std::string Lower(std::string text) {
  const std::pair<const char*, const char*> capitals[] = {
      {"F", "f"}, {"ZT", "zt"}, {"\xC3\x89", "\xC3\xA9"}, {"\xE2\x84\xAA", "k"}};
  for (const auto& [capital, small] : capitals) {
    const auto at = text.find(capital);
    if (at != std::string::npos) text.replace(at, std::strlen(capital), small);
  }
  return text;
}

bool Contains(const Names& names, const std::string& name) {
  return std::ranges::find(names, name) != names.end();
}

/// Main folders "a", "b", … with their files and those of the special folders directly below them;
/// "link" leads to "a".
struct Model {
  std::map<std::string, std::set<std::string>> files;  // by folder: "a", "a/@f", "a/private", …
  Names given;
  Names without;
  bool keepDuplicates = false;

  static std::string Target(const std::string& folder) { return folder == "link" ? "a" : folder; }

  [[nodiscard]] Names Path() const {
    Names path, seen;
    for (const auto& folder : given) {
      if (keepDuplicates || !Contains(seen, Target(folder))) path.push_back(folder);
      seen.push_back(Target(folder));
    }
    return path;
  }

  [[nodiscard]] bool IsHidden(const std::string& top, const std::string& below) const {
    return Contains(without, Target(top)) || Contains(without, Target(top) + below);
  }

  void AddFrom(const std::string& top, const std::string& below, const std::string& name,
               const Names& extensions, bool ignoreCase, Names& found) const {
    const auto held = files.find(Target(top) + below);
    if (IsHidden(top, below) || held == files.end()) return;
    Names here;
    for (const auto& extension : extensions.empty() ? Names{""} : extensions) {
      const auto wanted = name + extension;
      if (held->second.contains(wanted) && !Contains(here, wanted)) here.push_back(wanted);
      for (const auto& file : held->second) {
        const bool isMeant = ignoreCase && Lower(file) == Lower(wanted);
        if (isMeant && !Contains(here, file)) here.push_back(file);
      }
    }
    for (const auto& file : here) found.push_back(top + below + "/" + file);
  }

  [[nodiscard]] Names All(const std::string& asker, const std::string& name,
                          const Names& extensions, bool ignoreCase) const {
    Names all;
    const auto add = [&](const std::string& top, const std::string& below) {
      AddFrom(top, below, name, extensions, ignoreCase, all);
    };
    const auto entry = std::ranges::find(given, Target(asker), Target);
    if (entry != given.end()) add(*entry, "/private");
    for (const auto& folder : Path()) {
      add(folder, "");
      add(folder, "/@" + name);
    }
    return all;
  }
};

std::string Joined(const Names& names) {
  std::string list;
  for (const auto& name : names) list += (list.empty() ? "" : " ") + name;
  return list;
}

class LookupModelTest : public testing::Test {
 protected:
  [[nodiscard]] std::size_t Below(std::size_t limit) { return random() % limit; }
  [[nodiscard]] std::string AnyOf(const Names& names) { return names[Below(names.size())]; }
  [[nodiscard]] Names SomeOf(const Names& names, std::size_t most) {
    Names some(Below(most + 1));
    std::generate(some.begin(), some.end(), [&] { return AnyOf(names); });
    return some;
  }

  [[nodiscard]] Model MakeTree(const TemporaryTree& tree) {
    Model model;
    for (const char* folder : {"a", "b", "c"}) {
      for (const char* below : {"", "/@f", "/@g", "/private", "/plain", "/resources"}) {
        for (const auto& file : SomeOf(kFiles, 3)) {
          tree.File(std::string(folder) + below + "/" + file);
          model.files[std::string(folder) + below].insert(file);
        }
      }
    }
    tree.Link("a", "link");
    model.given = SomeOf({"a", "b", "c", "link", "absent"}, 5);
    model.without = SomeOf({"a", "b", "a/private", "b/@f", "c/@g", "absent"}, 1);
    model.keepDuplicates = Below(3) == 0;
    return model;
  }

  void Ask(const TemporaryTree& tree, const Environment& environment, const Model& model) {
    const std::string name =
        AnyOf({"f", "F", "g", "f.zt", "h", "\xC3\x89", std::string("f\0\0", 3)});
    const Names extensions = name == "f.zt" ? Names() : SomeOf({".zt", ".y", ".ZT", ".k"}, 3);
    const bool ignoreCase = Below(2) == 0;
    const std::string asker = AnyOf({"a", "b", "link", ""});
    Lookup lookup{.name = TextFromBytes(name)};
    for (const auto& extension : extensions) lookup.extensions.push_back(TextFromBytes(extension));
    if (!asker.empty()) lookup.fromFolder = tree.Text(asker);
    if (ignoreCase) lookup.policy = FilenameMatchingPolicy::IgnoreCase;
    if (!ignoreCase && Below(2) == 0) lookup.policy = FilenameMatchingPolicy::CaseSensitive;

    const Names expected = model.All(asker, name, extensions, ignoreCase);
    const auto all = environment.FindAll(lookup);
    ASSERT_EQ(Shown(all, tree), Joined(expected))
        << name << " " << testing::PrintToString(extensions) << ignoreCase << " from " << asker;
    const auto first = environment.Find(lookup);
    ASSERT_TRUE(first ? *first == all.at(0) : all.empty());
    CheckExplanation(environment.Explain(lookup), all);
    for (const ustring& text : {ustring(lookup.name), u"b/" + lookup.name, ustring(u"@f/f")}) {
      ASSERT_TRUE(environment.Find(text) == environment.Find(Lookup{.name = text})) << name;
    }
  }

  static void CheckExplanation(const Explanation& explanation, const std::vector<FoundItem>& all) {
    ASSERT_TRUE(explanation.files == all);
    ASSERT_EQ(explanation.rule == DecidingRule::NothingFound, all.empty());
    std::size_t files = 0;
    std::size_t deciders = 0;
    for (const auto& asked : explanation.asked) {
      using enum FolderOutcome;
      const bool decides = asked.outcome == HoldsIt || asked.outcome == MethodEntry;
      ASSERT_EQ(decides, !all.empty() && asked.folder == all.front().GetPathEntry());
      ASSERT_EQ(asked.outcome >= OtherCaseOnly, asked.files.empty());
      files += asked.files.size();
      deciders += decides ? 1 : 0;
    }
    ASSERT_EQ(files, all.size());
    ASSERT_EQ(deciders, all.empty() ? 0U : 1U);
  }

  void CheckShadows(const TemporaryTree& tree, const Environment& environment, const Model& model) {
    const Names extensions = SomeOf({".zt", ".y", ".ZT", ".k"}, 2);
    const bool ignoreCase = Below(2) == 0;
    ShadowLookup lookup;
    for (const auto& extension : extensions) lookup.extensions.push_back(TextFromBytes(extension));
    if (ignoreCase) lookup.policy = FilenameMatchingPolicy::IgnoreCase;
    std::map<std::string, Names> reported;
    for (const auto& shadow : environment.FindShadows(lookup).shadows) {
      const std::string name = BytesFromText(shadow.name).value();
      Names& files = reported[name];
      files = {Shown(std::vector{shadow.winner}, tree)};
      for (const auto& hidden : shadow.hidden)
        files.push_back(Shown(std::vector{hidden.file}, tree));
      ASSERT_EQ(Joined(files), Joined(model.All("", name, extensions, ignoreCase))) << name;
      ASSERT_GT(files.size(), 1U);
      if (ignoreCase && extensions.empty()) {
        ASSERT_EQ(name, LeastSpelling(files, name));
      }
    }
    const Names stems = {"f", "F", "g", "h", "\xC3\x89", "\xC3\xA9"};
    for (const auto& name : extensions.empty() ? kFiles : stems) {
      const Names all = model.All("", name, extensions, ignoreCase);
      if (all.size() < 2) continue;
      // One name stands for those that are the same when case is ignored.
      const bool isReported = std::ranges::any_of(reported, [&](const auto& shadow) {
        return ignoreCase
                   ? std::ranges::all_of(
                         all, [&](const auto& file) { return Contains(shadow.second, file); })
                   : shadow.first == name;
      });
      ASSERT_TRUE(isReported) << name << testing::PrintToString(extensions) << ignoreCase;
    }
  }

  /// Of the names of `files`, those in the folder of the first; `name` when a method entry, which is
  /// asked for under its own spelling, is among the folders.
  static std::string LeastSpelling(const Names& files, const std::string& name) {
    const std::string folder = files.front().substr(0, files.front().find('/') + 1);
    Names spellings;
    for (const auto& file : files) {
      if (file.find('@') != std::string::npos) return name;
      if (file.starts_with(folder)) spellings.push_back(file.substr(folder.size()));
    }
    return std::ranges::min(spellings);
  }

  static constexpr std::uint64_t kSeed = 20261121;
  std::mt19937_64 random{kSeed};
};

// SEARCHPATH_TREES says how many trees; for very many, TMPDIR best is a file system in memory.
TEST_F(LookupModelTest, RandomTreesAnswerAsTheRulesSay) {
  const std::size_t trees = test::Setting("SEARCHPATH_TREES", 60);
  for (std::size_t round = 0; round < trees && !HasFatalFailure(); ++round) {
    SCOPED_TRACE("seed " + std::to_string(kSeed) + ", tree " + std::to_string(round));
    const TemporaryTree tree;
    for (const char* folder : {"a", "b", "c"}) tree.Folder(folder);
    const Model model = MakeTree(tree);
    EnvironmentOptions options{.folders = {}, .keepDuplicates = model.keepDuplicates};
    for (const auto& folder : model.given) options.folders.push_back(tree.Text(folder));
    for (const auto& folder : model.without) options.without.push_back(tree.Text(folder));
    SCOPED_TRACE(Joined(model.given) + " without " + Joined(model.without));
    const Environment environment(options);
    for (int question = 0; question < 30 && !HasFatalFailure(); ++question) {
      Ask(tree, environment, model);
      if (question % 10 == 5) CheckShadows(tree, environment, model);
    }
  }
}

}  // namespace
}  // namespace Corvane::PathManagement::host
