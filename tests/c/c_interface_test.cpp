#include "searchpath/c/searchpath.h"
#include "support/temporary_tree.h"

#include <gtest/gtest.h>

#include <poll.h>

#include <memory>

namespace Corvane::PathManagement {
namespace {

std::string Shown(searchpath_text text) {
  EXPECT_EQ(text.bytes[text.size], '\0');
  return {text.bytes, text.size};
}

std::string OrNone(searchpath_text path) { return path.bytes == nullptr ? "none" : Shown(path); }

struct CInterfaceTest : testing::Test {
  CInterfaceTest() {
    tree.Files({"a/\xFF.zt", "b/\xFF.zt", "b/private/\xFF.zt", "b/Other.zt"});
    Open(nullptr);
  }
  ~CInterfaceTest() override { searchpath_environment_free(environment); }

  void Open(const char* rules) {
    const std::string first = tree.Path("a");
    const std::string second = tree.Path("b");
    const char* const folders[] = {first.c_str(), second.c_str()};
    searchpath_environment_free(environment);
    EXPECT_EQ(searchpath_environment_open(folders, 2, 0, rules, &environment, &error),
              SEARCHPATH_OK);
  }

  std::string Find(const searchpath_lookup& lookup) {
    searchpath_files* files = nullptr;
    const searchpath_status status = searchpath_find(environment, &lookup, &files, &error);
    if (status != SEARCHPATH_OK) {
      EXPECT_EQ(files, nullptr);
      return std::to_string(status) + ": " + error.message;
    }
    const std::string found =
        searchpath_files_count(files) == 0 ? "" : Shown(searchpath_files_path(files, 0));
    searchpath_files_free(files);
    return found;
  }

  /// Whether the watch has nothing more to report. What others do in the folders above the tree makes it
  /// readable, too.
  bool ComesToRest(const searchpath_watch* watch) {
    for (int round = 0; round < 100; ++round) {
      pollfd waiting = {searchpath_watch_descriptor(watch), POLLIN, 0};
      if (poll(&waiting, 1, 0) == 0) return true;
      searchpath_environment* now = nullptr;
      EXPECT_EQ(searchpath_watch_environment(watch, &now, &error), SEARCHPATH_OK);
      searchpath_environment_free(now);
    }
    return false;
  }

  test::TemporaryTree tree;
  searchpath_environment* environment = nullptr;
  searchpath_error error = {};
  const char* const extensions[2] = {"zt", nullptr};
};

TEST_F(CInterfaceTest, FindsFilesByBytesAndGivesErrorsAsValues) {
  const std::string b = tree.Path("b");
  const std::string none = tree.Path("none");
  EXPECT_EQ(Find({"\xFF", extensions, 1, nullptr, 0}), tree.Path("a/\xFF.zt"));
  EXPECT_EQ(Find({"\xFF.zt", nullptr, 0, b.c_str(), 0}), tree.Path("b/private/\xFF.zt"));
  EXPECT_EQ(Find({"other.zt", nullptr, 0, nullptr, 1}), tree.Path("b/Other.zt"));
  EXPECT_EQ(Find({"other.zt", nullptr, 0, nullptr, 0}), "");
  EXPECT_EQ(Find({"f", extensions, 2, nullptr, 0}), "1: a text is null");
  EXPECT_EQ(Find({nullptr, nullptr, 0, nullptr, 0}), "1: no name is given");
  EXPECT_EQ(Find({"f", nullptr, 0, none.c_str(), 0}), "2: no such folder");
  searchpath_environment* unmade = environment;
  EXPECT_EQ(searchpath_environment_open(nullptr, 0, 0, "martian", &unmade, &error),
            SEARCHPATH_INVALID);
  EXPECT_EQ(unmade, nullptr);
  EXPECT_EQ(searchpath_environment_open(nullptr, 0, 0, nullptr, nullptr, nullptr),
            SEARCHPATH_INVALID);
  EXPECT_EQ(searchpath_version(), SEARCHPATH_C_VERSION);
  searchpath_files_free(nullptr);
}

TEST_F(CInterfaceTest, ExplainsAndTellsWhatIsHidden) {
  const searchpath_lookup lookup = {"\xFF", extensions, 1, nullptr, 0};
  searchpath_explanation* explanation = nullptr;
  ASSERT_EQ(searchpath_explain(environment, &lookup, &explanation, &error), SEARCHPATH_OK);
  EXPECT_EQ(Shown(searchpath_explanation_rule(explanation)),
            "the first folder on the path that holds it");
  EXPECT_EQ(searchpath_files_count(searchpath_explanation_answer(explanation)), 2U);
  ASSERT_EQ(searchpath_explanation_count(explanation), 2U);
  EXPECT_EQ(Shown(searchpath_explanation_outcome(explanation, 1)), "hidden by an earlier folder");
  EXPECT_EQ(Shown(searchpath_explanation_folder(explanation, 1)), tree.Path("b"));
  EXPECT_EQ(Shown(searchpath_explanation_origin(explanation, 1)), tree.Path("b"));
  EXPECT_EQ(Shown(searchpath_files_path(searchpath_explanation_files(explanation, 1), 0)),
            tree.Path("b/\xFF.zt"));
  const std::string start = "{\"name\":\"\uFFFD\",\"nameBytes\":\"/w==\",\"path\":\"" +
                            tree.Path("a/\uFFFD.zt\",\"pathBytes\":");
  EXPECT_TRUE(Shown(searchpath_explanation_json(explanation)).starts_with(start));
  searchpath_explanation_free(explanation);

  searchpath_shadows* shadows = nullptr;
  ASSERT_EQ(searchpath_find_shadows(environment, &lookup, &shadows, &error), SEARCHPATH_OK);
  ASSERT_EQ(searchpath_shadows_count(shadows), 1U);
  EXPECT_EQ(Shown(searchpath_shadows_name(shadows, 0)), "\xFF");
  EXPECT_EQ(searchpath_files_count(searchpath_shadows_files(shadows, 0)), 2U);
  EXPECT_EQ(Shown(searchpath_shadows_kind(shadows, 0, 0)), "");
  EXPECT_EQ(Shown(searchpath_shadows_kind(shadows, 0, 1)), "identical");
  searchpath_shadows_free(shadows);

  tree.File("a/other.zt");
  Open(nullptr);
  for (const int ignoresCase : {0, 1}) {
    const searchpath_lookup any = {"", nullptr, 0, nullptr, ignoresCase};
    ASSERT_EQ(searchpath_find_shadows(environment, &any, &shadows, &error), SEARCHPATH_OK);
    EXPECT_EQ(searchpath_shadows_count(shadows), ignoresCase == 0 ? 1U : 2U);
    searchpath_shadows_free(shadows);
  }
}

TEST_F(CInterfaceTest, AWatchBecomesReadableAndHasThePathAsItIsByAnyRules) {
  struct Row {
    const char* rules;
    const char* name;
    const char* change;
    const char* found;
  };
  for (const auto& [rules, name, change, found] : std::initializer_list<Row>{
           {nullptr, "shape/new.zt", "mkdir b/@shape; touch b/@shape/new.zt", "b/@shape/new.zt"},
           {"plain", "in/plan.zt", "mkdir b/in; touch b/in/plan.zt", "b/in/plan.zt"},
           {"program", "Other.zt", "chmod +x b/Other.zt", "b/Other.zt"}}) {
    SCOPED_TRACE(name);
    Open(rules);
    searchpath_watch* watch = nullptr;
    ASSERT_EQ(searchpath_watch_open(environment, &watch, &error), SEARCHPATH_OK);
    pollfd waiting = {searchpath_watch_descriptor(watch), POLLIN, 0};
    EXPECT_TRUE(ComesToRest(watch));
    EXPECT_EQ(Find({name, nullptr, 0, nullptr, 0}), "");
    tree.Do(change);
    EXPECT_EQ(poll(&waiting, 1, 60'000), 1);
    searchpath_environment_free(environment);
    ASSERT_EQ(searchpath_watch_environment(watch, &environment, &error), SEARCHPATH_OK);
    EXPECT_TRUE(ComesToRest(watch));
    EXPECT_EQ(Find({name, nullptr, 0, nullptr, 0}), tree.Path(found));
    searchpath_watch_free(watch);
  }
}

TEST_F(CInterfaceTest, AWatchHasFoldersOutsideThePathAsTheyAre) {
  tree.Folder("own");
  Open("include");
  searchpath_watch* watch = nullptr;
  ASSERT_EQ(searchpath_watch_open(environment, &watch, &error), SEARCHPATH_OK);
  const std::string own = tree.Path("own");
  const searchpath_lookup lookup = {"new.zt", nullptr, 0, own.c_str(), 0};
  for (const char* found : {"", "own/new.zt"}) {
    searchpath_environment_free(environment);
    ASSERT_EQ(searchpath_watch_environment(watch, &environment, &error), SEARCHPATH_OK);
    for (int question = 0; question < 40; ++question) {
      EXPECT_EQ(Find(lookup), *found == '\0' ? "" : tree.Path(found));
    }
    tree.File("own/new.zt");
  }
  searchpath_watch_free(watch);
}

TEST_F(CInterfaceTest, AReceiptSaysWhichAnswersHaveChanged) {
  const std::string file = tree.Path("names.receipt");
  const searchpath_lookup lookups[] = {{"Other.zt", nullptr, 0, nullptr, 0},
                                       {"new", extensions, 1, nullptr, 0}};
  searchpath_receipt* receipt = nullptr;
  searchpath_answers* answers = nullptr;
  searchpath_changes* changes = nullptr;
  const auto load = [&] {
    searchpath_receipt_free(receipt);
    return searchpath_receipt_load(file.c_str(), &receipt, &error);
  };
  const auto verified = [&] {
    std::string said;
    searchpath_changes_free(changes);
    EXPECT_EQ(searchpath_receipt_verify(receipt, &changes, &error), SEARCHPATH_OK);
    for (std::size_t at = 0; at < searchpath_changes_count(changes); ++at) {
      said += Shown(searchpath_changes_name(changes, at)) + ": " +
              OrNone(searchpath_changes_before(changes, at)) + " -> " +
              OrNone(searchpath_changes_after(changes, at)) + '\n';
    }
    return said;
  };
  EXPECT_EQ(load(), SEARCHPATH_FILE);
  EXPECT_EQ(receipt, nullptr);
  EXPECT_EQ(searchpath_find_with_receipt(environment, lookups, 2, &receipt, &error), SEARCHPATH_OK);
  EXPECT_EQ(searchpath_receipt_save(receipt, tree.Path("none/r").c_str(), &error),
            SEARCHPATH_SYSTEM);
  EXPECT_EQ(searchpath_receipt_save(receipt, nullptr, nullptr), SEARCHPATH_INVALID);
  EXPECT_EQ(searchpath_receipt_save(receipt, file.c_str(), &error), SEARCHPATH_OK);
  ASSERT_EQ(load(), SEARCHPATH_OK);
  ASSERT_EQ(searchpath_receipt_answers(receipt, &answers, &error), SEARCHPATH_OK);
  ASSERT_EQ(searchpath_answers_count(answers), 2U);
  EXPECT_EQ(OrNone(searchpath_answers_path(answers, 0)), tree.Path("b/Other.zt"));
  EXPECT_EQ(OrNone(searchpath_answers_path(answers, 1)), "none");
  EXPECT_EQ(Shown(searchpath_answers_name(answers, 1)), "new");
  EXPECT_EQ(verified(), "");
  tree.Do("rm b/Other.zt; touch b/new.zt");
  EXPECT_EQ(verified(), "Other.zt: " + tree.Path("b/Other.zt") + " -> none\nnew: none -> " +
                            tree.Path("b/new.zt") + '\n');
  searchpath_receipt_free(receipt);
  ASSERT_EQ(searchpath_changes_renew(changes, &receipt, &error), SEARCHPATH_OK);
  EXPECT_EQ(verified(), "");
  searchpath_changes_free(changes);
  searchpath_answers_free(answers);
  searchpath_receipt_free(receipt);
}

}  // namespace
}  // namespace Corvane::PathManagement
