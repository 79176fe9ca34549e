#include "diff/longest_common_subsequence.h"

#include "support/setting.h"
#include "support/textbook_subsequence.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>

namespace Corvane::PathManagement::test {
namespace {

using Element = std::shared_ptr<const char>;
using Sequence = std::vector<Element>;

Sequence Compute(const Sequence& first, const Sequence& second) {
  return LongestCommonSubsequence<Element, Sequence>::Compute(first, second);
}

/// The letters of the result, where the sequences hold an object for each letter.
std::string Compute(const std::string& first, const std::string& second) {
  static const std::string objects(128, ' ');
  const auto sequence = [](const std::string& letters) {
    Sequence made;
    for (const char letter : letters)
      made.emplace_back(Element(), &objects[static_cast<std::size_t>(letter)]);
    return made;
  };
  const Sequence found = Compute(sequence(first), sequence(second));
  EXPECT_EQ(found.capacity(), found.size());
  std::string letters;
  for (const Element& element : found) {
    letters += static_cast<char>(element.get() - objects.data());
  }
  return letters;
}

TEST(LongestCommonSubsequenceTest, FollowsTheRulesForTies) {
  const std::string rows[][3] = {{"", "", ""},          {"", "abc", ""},     {"abc", "", ""},
                                 {"abc", "abc", "abc"}, {"abc", "cba", "c"}, {"abc", "def", ""},
                                 {"aa", "a", "a"},      {"aba", "aa", "aa"}, {"abcd", "cdab", "cd"},
                                 {"usvs", "vus", "us"}, {"uvs", "vus", "vs"}};
  for (const auto& [first, second, expected] : rows) {
    EXPECT_EQ(Compute(first, second), expected) << first << "|" << second;
  }
}

TEST(LongestCommonSubsequenceTest, TellsObjectsApartByAddress) {
  const Element one = std::make_shared<const char>('a'), twin = std::make_shared<const char>('a');
  EXPECT_EQ(Compute({one}, {twin}), Sequence());
  EXPECT_EQ(Compute({nullptr, one, nullptr}, {one, nullptr, twin}), (Sequence{one, nullptr}));
}

TEST(LongestCommonSubsequenceTest, IsTheTextbooksForRandomPairs) {
  std::mt19937 random(20260210);
  for (std::size_t round = 0; round < RandomCases(1'000'000); ++round) {
    const std::size_t scale = round % 1000 == 0 ? 100 : 10;
    const std::size_t letterCount = 1 + random() % scale / 2;
    const auto letter = [&] { return static_cast<char>('A' + random() % letterCount); };
    std::string texts[2];
    for (std::string& text : texts) {
      for (std::size_t left = random() % scale; left > 0; --left) text += letter();
    }
    auto& [first, second] = texts;
    if (round % 2 == 0) {  // the same but for a few letters
      second = first;
      for (int edit = 0; edit < 2; ++edit)
        second.insert(random() % (second.size() + 1), 1, letter());
      second.erase(random() % second.size(), random() % 3);
    }
    ASSERT_EQ(Compute(first, second), TextbookSubsequence(first, second)) << first << "|" << second;
  }
}

}  // namespace
}  // namespace Corvane::PathManagement::test
