#include "rules/other_programs.h"
#include "rules/random_tree.h"
#include "support/setting.h"

#include <algorithm>
#include <latch>
#include <thread>

namespace Corvane::PathManagement::host {
namespace {

using test::Names;
using test::RandomTree;
using test::TreeStyle;

constexpr std::size_t kRounds = 20;  // many more than the questions that are asked of the disk

Environment Open(const Names& parts, const LookupRules& rules) {
  EnvironmentOptions options{.folders = {}, .rules = rules};
  for (const std::string& part : parts) options.folders.push_back(TextFromBytes(part));
  return Environment(options);
}

std::string AnswerOf(const Environment& environment, const std::string& name) {
  const auto found = environment.Find({.name = TextFromBytes(name)});
  return found ? BytesFromText(GetNativePath(*found)).value() : "";
}

/// What a name means to each of as many environments that have not been asked before.
Names FirstAnswers(const Names& parts, const LookupRules& rules, const Names& names) {
  Names answers;
  for (const std::string& name : names) answers.push_back(AnswerOf(Open(parts, rules), name));
  return answers;
}

struct SnapshotTest : testing::Test {
  /// Calls check(tree, parts, rules, names) with as many trees of files, and their rules.
  template <class Check>
  static void WithTrees(std::size_t count, const Check& check) {
    test::RunUnprivileged([&] {
      for (std::size_t number = 0; number < test::RandomCases(count); ++number) {
        for (const NamedRules& named : kNamedRules) {
          if (named.rules.foldersHaveMeaning) continue;
          const TreeStyle& style = named.rules == kProgramRules ? test::kPrograms : test::kHeaders;
          RandomTree tree(number, style);
          const Names parts = tree.Parts();
          SCOPED_TRACE(named.name + (" tree " + std::to_string(number)) + " path " +
                       testing::PrintToString(parts));
          check(tree, parts, named.rules, style.questions);
          if (HasFailure()) return;
        }
      }
    });
  }

  static void CheckAllAnswers(const Environment& environment, const std::string& name) {
    const std::size_t stem = std::min(name.rfind('.'), name.size());
    const ustring text = TextFromBytes(name);
    for (const Lookup& lookup :
         {Lookup{.name = text},
          Lookup{.name = TextFromBytes(name.substr(0, stem)), .extensions = {u".c", u".h", u""}}}) {
      const auto all = environment.FindAll(lookup);
      const auto first = environment.Find(lookup);
      EXPECT_TRUE(first ? !all.empty() && *first == all.front() : all.empty()) << name;
      EXPECT_TRUE(environment.Explain(lookup).files == all) << name;
    }
  }
};

TEST_F(SnapshotTest, WarmAnswersAreThoseOfFirstQuestions) {
  WithTrees(30, [](RandomTree& tree, const Names& parts, const auto& rules, const Names& names) {
    const Names expected = FirstAnswers(parts, rules, names);
    const Environment environment = Open(parts, rules);
    for (std::size_t question = 0; question < kRounds * names.size(); ++question) {
      const std::size_t name = tree.Below(names.size());
      ASSERT_EQ(AnswerOf(environment, names[name]), expected[name])
          << names[name] << " question " << question;
      if (question % 10 == 5) CheckAllAnswers(environment, names[name]);
    }
  });
}

TEST_F(SnapshotTest, WhatWasAnsweredStaysAnsweredWhenTheDiskHasChanged) {
  WithTrees(20, [](RandomTree& tree, const Names& parts, const auto& rules, const Names& names) {
    const Environment environment = Open(parts, rules);
    const Names asked(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(tree.Below(9)));
    for (std::size_t round = 1 + tree.Below(4); round > 1; --round) {  // listed or not
      for (const std::string& name : asked) static_cast<void>(AnswerOf(environment, name));
    }
    Names expected;
    for (const std::string& name : asked) expected.push_back(AnswerOf(environment, name));
    for (char folder = 'a'; folder <= 'z'; ++folder) {  // many more than were asked so far
      static_cast<void>(AnswerOf(environment, std::string(1, folder) + "/none"));
    }
    tree.Renew();
    for (std::size_t round = 0; round < kRounds; ++round) {
      for (std::size_t name = 0; name < asked.size(); ++name) {
        ASSERT_EQ(AnswerOf(environment, asked[name]), expected[name]) << asked[name];
      }
    }
  });
}

TEST_F(SnapshotTest, ThreadsGetTheSameAnswers) {
  WithTrees(10, [](RandomTree& tree, const Names& parts, const auto& rules, const Names& names) {
    const Names expected = FirstAnswers(parts, rules, names);
    const Environment environment = Open(parts, rules);
    constexpr std::size_t kThreads = 4;
    std::vector<Names> answers(kThreads, Names(names.size()));
    std::latch start(kThreads);
    {
      std::vector<std::jthread> threads;
      for (std::size_t thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread, shift = tree.Below(names.size())] {
          start.arrive_and_wait();
          for (std::size_t question = 0; question < 3 * names.size(); ++question) {
            const std::size_t name = (question + shift) % names.size();
            answers[thread][name] = AnswerOf(environment, names[name]);
          }
        });
      }
    }
    for (const Names& ofThread : answers) ASSERT_EQ(ofThread, expected);
  });
}

}  // namespace
}  // namespace Corvane::PathManagement::host
