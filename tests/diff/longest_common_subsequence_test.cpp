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
std::u16string Compute(const std::u16string& first, const std::u16string& second) {
  static const std::string objects(0x10000, ' ');
  const auto sequence = [](const std::u16string& letters) {
    Sequence made;
    for (const char16_t letter : letters) made.emplace_back(Element(), &objects[letter]);
    return made;
  };
  const Sequence found = Compute(sequence(first), sequence(second));
  EXPECT_EQ(found.capacity(), found.size());
  std::u16string letters;
  for (const Element& element : found) {
    letters += static_cast<char16_t>(element.get() - objects.data());
  }
  return letters;
}

TEST(LongestCommonSubsequenceTest, FollowsTheRulesForTies) {
  const std::u16string rows[][3] = {
      {u"", u"", u""},          {u"", u"abc", u""},     {u"abc", u"", u""},
      {u"abc", u"abc", u"abc"}, {u"abc", u"cba", u"c"}, {u"abc", u"def", u""},
      {u"aa", u"a", u"a"},      {u"aba", u"aa", u"aa"}, {u"abcd", u"cdab", u"cd"},
      {u"usvs", u"vus", u"us"}, {u"uvs", u"vus", u"vs"}};
  for (const auto& [first, second, expected] : rows) {
    EXPECT_EQ(Compute(first, second), expected);
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
    // Positions are kept in words of 64, and words of words: some sequences need three levels.
    const std::size_t scale = round % 50'000 == 0 ? 6000
                              : round % 2000 == 0 ? 600
                              : round % 1000 == 1 ? 100
                                                  : 10;
    const std::size_t letterCount = 1 + random() % scale / 2;
    const auto letter = [&] { return static_cast<char16_t>(u'A' + random() % letterCount); };
    std::u16string texts[2];
    for (std::u16string& text : texts) {
      for (std::size_t left = random() % scale; left > 0; --left) text += letter();
    }
    auto& [first, second] = texts;
    if (const auto kind = random() % 4; kind > 0) {  // the same but for a few letters, or turned
      second = first;
      if (kind == 1)
        std::ranges::rotate(
            second, second.begin() + static_cast<std::ptrdiff_t>(random() % (second.size() + 1)));
      for (int edit = 0; edit < 2; ++edit)
        second.insert(random() % (second.size() + 1), 1, letter());
      second.erase(random() % second.size(), random() % 3);
    }
    ASSERT_EQ(Compute(first, second), TextbookSubsequence(first, second)) << "round " << round;
  }
}

}  // namespace
}  // namespace Corvane::PathManagement::test
