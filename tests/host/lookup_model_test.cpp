#include "support/setting.h"
#include "support/shown.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>

// Look-ups on random trees against a plain restatement of the rules: the first folder wins, "@name"
// folders join for the name they are called, private folders come first for the folder above them.

namespace Corvane::PathManagement::host {
namespace {

using test::Shown;
using test::TemporaryTree;
using Names = std::vector<std::string>;

/// Main folders "a", "b", … with their files and those of the special folders directly below them.
struct Model {
  std::map<std::string, std::set<std::string>> files;  // by folder: "a", "a/@f", "a/private", …
  Names path;

  void AddFrom(const std::string& folder, const std::string& name, const Names& extensions,
               bool ignoreCase, Names& found) const {
    const auto lower = [](std::string text) {
      for (char& letter : text) letter = static_cast<char>(std::tolower(letter));
      return text;
    };
    const auto add = [&](const std::string& file) {
      if (std::ranges::find(found, folder + "/" + file) == found.end()) {
        found.push_back(folder + "/" + file);
      }
    };
    const auto held = files.find(folder);
    if (held == files.end()) return;
    for (const auto& extension : extensions.empty() ? Names{""} : extensions) {
      if (held->second.contains(name + extension)) add(name + extension);
      for (const auto& file : held->second) {
        if (ignoreCase && lower(file) == lower(name + extension)) add(file);
      }
    }
  }

  [[nodiscard]] Names All(const std::string& asker, const std::string& name,
                          const Names& extensions, bool ignoreCase) const {
    Names all;
    const auto add = [&](const std::string& folder) {
      AddFrom(folder, name, extensions, ignoreCase, all);
    };
    if (std::ranges::find(path, asker) != path.end()) add(asker + "/private");
    for (const auto& folder : path) {
      add(folder);
      add(folder + "/@" + name);
    }
    return all;
  }
};

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
        for (const auto& file : SomeOf({"f", "F", "g", "f.x", "F.x", "f.X", "g.x", "f.y"}, 3)) {
          tree.File(std::string(folder) + below + "/" + file);
          model.files[std::string(folder) + below].insert(file);
        }
      }
    }
    // No folder twice: the model knows no second look at one.
    Names folders = {"a", "b", "c", "absent"};
    std::ranges::shuffle(folders, random);
    model.path = Names(folders.begin(), folders.begin() + static_cast<std::ptrdiff_t>(Below(5)));
    return model;
  }

  void Ask(const TemporaryTree& tree, const Environment& environment, const Model& model) {
    const std::string name = AnyOf({"f", "F", "g", "f.x", "h"});
    const Names extensions = name == "f.x" ? Names() : SomeOf({".x", ".y", ".X", ".z"}, 3);
    const bool ignoreCase = Below(2) == 0;
    const std::string asker = AnyOf({"a", "b", "c", ""});
    Lookup lookup{.name = TextFromBytes(name)};
    for (const auto& extension : extensions) lookup.extensions.push_back(TextFromBytes(extension));
    if (!asker.empty()) lookup.fromFolder = tree.Text(asker);
    if (ignoreCase) lookup.policy = FilenameMatchingPolicy::IgnoreCase;
    if (!ignoreCase && Below(2) == 0) lookup.policy = FilenameMatchingPolicy::CaseSensitive;

    const Names expected = model.All(asker, name, extensions, ignoreCase);
    const auto all = environment.FindAll(lookup);
    std::string expectedList;
    for (const auto& file : expected) expectedList += (expectedList.empty() ? "" : " ") + file;
    ASSERT_EQ(Shown(all, tree), expectedList)
        << name << " " << testing::PrintToString(extensions) << ignoreCase << " from " << asker
        << " on " << testing::PrintToString(model.path);
    const auto first = environment.Find(lookup);
    ASSERT_TRUE(first ? *first == all.at(0) : all.empty());
    CheckExplanation(environment.Explain(lookup), all);
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
    std::vector<ustring> folders;
    for (const auto& folder : model.path) folders.push_back(tree.Text(folder));
    const Environment environment(folders);
    for (int question = 0; question < 30 && !HasFatalFailure(); ++question) {
      Ask(tree, environment, model);
    }
  }
}

}  // namespace
}  // namespace Corvane::PathManagement::host
