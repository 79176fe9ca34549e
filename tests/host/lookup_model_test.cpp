#include "searchpath/host/environment.h"
#include "support/temporary_tree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>

// Look-ups on random trees against a plain restatement of the rules: the first folder wins, "@name"
// folders join for the name they are called, private folders come first for the folder above them.

namespace Corvane::PathManagement::host {
namespace {

using test::TemporaryTree;
using Names = std::vector<std::string>;

/// Main folders "a", "b", … with their files and those of the special folders directly below them.
struct Model {
  std::map<std::string, std::set<std::string>> files;  // by folder: "a", "a/@f", "a/private", …
  Names path;                                          // main folders, repeats included

  [[nodiscard]] Names In(const std::string& folder, const std::string& name,
                         const Names& extensions, bool ignoreCase) const {
    const auto lower = [](std::string text) {
      std::transform(text.begin(), text.end(), text.begin(),
                     [](char c) { return std::tolower(c); });
      return text;
    };
    Names found;
    const auto held = files.find(folder);
    for (const auto& extension : extensions.empty() ? Names{""} : extensions) {
      const std::string wanted = name + extension;
      if (held == files.end()) break;
      if (held->second.contains(wanted)) found.push_back(folder + "/" + wanted);
      for (const auto& file : held->second) {
        if (ignoreCase && file != wanted && lower(file) == lower(wanted)) {
          found.push_back(folder + "/" + file);
        }
      }
    }
    Names once;
    for (const auto& file : found) {
      if (std::find(once.begin(), once.end(), file) == once.end()) once.push_back(file);
    }
    return once;
  }

  [[nodiscard]] Names All(const std::string& asker, const std::string& name,
                          const Names& extensions, bool ignoreCase) const {
    Names all;
    const auto add = [&](const std::string& folder) {
      for (auto& file : In(folder, name, extensions, ignoreCase)) all.push_back(std::move(file));
    };
    const bool isOnPath = std::find(path.begin(), path.end(), asker) != path.end();
    if (isOnPath) add(asker + "/private");
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
    model.path = SomeOf({"a", "b", "c", "absent"}, 5);
    // The model knows no second look at a folder: its "@" folder stands behind its first one.
    std::set<std::string> seen;
    std::erase_if(model.path, [&seen](const auto& folder) { return !seen.insert(folder).second; });
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

    const Names expected = model.All(asker, name, extensions, ignoreCase);
    const auto all = environment.FindAll(lookup);
    Names found;
    for (const auto& file : all) {
      found.push_back(BytesFromText(GetNativePath(file)).value().substr(tree.Path().size() + 1));
    }
    ASSERT_EQ(found, expected) << name << " " << testing::PrintToString(extensions) << ignoreCase
                               << " from " << asker << " on " << testing::PrintToString(model.path);
    const auto first = environment.Find(lookup);
    ASSERT_EQ(first.has_value(), !all.empty());
    if (first) {
      ASSERT_TRUE(*first == all.front());
    }
    CheckExplanation(environment.Explain(lookup), all);
  }

  static void CheckExplanation(const Explanation& explanation, const std::vector<FoundItem>& all) {
    ASSERT_TRUE(explanation.files == all);
    ASSERT_EQ(explanation.rule == DecidingRule::NothingFound, all.empty());
    std::size_t files = 0;
    std::size_t deciders = 0;
    for (const auto& asked : explanation.asked) {
      const bool decides =
          asked.outcome == FolderOutcome::HoldsIt || asked.outcome == FolderOutcome::MethodEntry;
      ASSERT_EQ(decides, !all.empty() && asked.folder == all.front().GetPathEntry());
      ASSERT_EQ(asked.outcome >= FolderOutcome::OtherCaseOnly, asked.files.empty());
      files += asked.files.size();
      deciders += decides ? 1 : 0;
    }
    ASSERT_EQ(files, all.size());
    ASSERT_EQ(deciders, all.empty() ? 0U : 1U);
  }

  static constexpr std::uint64_t kSeed = 20261121;
  std::mt19937_64 random{kSeed};
};

TEST_F(LookupModelTest, RandomTreesAnswerAsTheRulesSay) {
  for (int round = 0; round < 60 && !HasFatalFailure(); ++round) {
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
