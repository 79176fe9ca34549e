#include "searchpath/host/name_pattern.h"

#include "searchpath/host/environment.h"
#include "support/setting.h"
#include "support/temporary_tree.h"

#include <gtest/gtest.h>

#include <fnmatch.h>
#include <map>
#include <random>

namespace Corvane::PathManagement {
namespace {

using host::Environment;
using host::NamePattern;
using test::TemporaryTree;

constexpr std::uint64_t kSeed = 20261122;

// A text of up to `most` parts, each of which is taken at random.
std::string TextOf(const std::vector<std::string>& parts, std::size_t most,
                   std::mt19937_64& random) {
  std::string text;
  for (std::size_t left = random() % (most + 1); left > 0; --left) {
    text += parts[random() % parts.size()];
  }
  return text;
}

// The system's function takes characters that are not ASCII for characters or for bytes, as it likes:
// it is asked with two others in their place, which come in the same order.
std::string InAscii(const std::string& text) {
  std::string ascii;
  for (const char byte : text) {
    if (byte == '\xC3') ascii += '{';
    if (byte == '\xF0') ascii += '|';
    if (static_cast<unsigned char>(byte) < 0x80) ascii += byte;
  }
  return ascii;
}

// SEARCHPATH_PATTERNS says how many patterns.
TEST(NamePatternTest, MatchesWhatTheSystemMatches) {
  std::mt19937_64 random(kSeed);
  const std::size_t patterns = test::Setting("SEARCHPATH_PATTERNS", test::RandomCases(8000));
  std::size_t matched = 0;
  for (std::size_t i = 0; i < patterns; ++i) {
    const std::string pattern = TextOf({"*",
                                        "*",
                                        "?",
                                        "a",
                                        "b",
                                        ".",
                                        "-",
                                        "!",
                                        "]",
                                        "\\",
                                        "[",
                                        "[a",
                                        "[!a]",
                                        "[^b]",
                                        "[a-c]",
                                        "[]a]",
                                        "[!]]",
                                        "[a-]",
                                        "[b\\]-]",
                                        "[c-a]",
                                        "[[:digit:]b]",
                                        "[![:alpha:]]",
                                        "[\xC3\xA9-z]",
                                        "\xC3\xA9",
                                        "\xF0\x9F\x98\x80"},
                                       5, random);
    const NamePattern compiled(pattern);
    for (int j = 0; j < 8; ++j) {
      const std::string name = TextOf({"a", "b", "c", "ab", ".", "-", "!", "]", "[", "[a", "\\",
                                       "1", "\xC3\xA9", "\xF0\x9F\x98\x80"},
                                      5, random);
      const int expected = fnmatch(InAscii(pattern).c_str(), InAscii(name).c_str(), 0);
      ASSERT_TRUE(expected == 0 || expected == FNM_NOMATCH);
      ASSERT_EQ(compiled.Matches(name), expected == 0) << pattern << " and " << name;
      matched += expected == 0;
    }
  }
  EXPECT_GT(matched, patterns / 4);
}

TEST(NamePatternTest, EveryNameThatAFolderCanHoldMatches) {
  const auto ignoreCase = FilenameMatchingPolicy::IgnoreCase;
  const auto asItIs = FilenameMatchingPolicy::CaseSensitive;
  struct Row {
    const char* pattern;
    const char* name;
    FilenameMatchingPolicy policy;
    bool matches;
  };
  for (const Row& row : std::vector<Row>{
           {"?", "\xFF", asItIs, true},  // a byte that is not UTF-8
           {"\xFF*", "\xFF\xFE", asItIs, true},
           {"[\xFF]", "\xFE", asItIs, false},
           {"?\xA9", "\xC3\xA9", asItIs, false},  // half a character
           {"a*", "A\n", asItIs, false},
           {"a*", "A\n", ignoreCase, true},
           {"[A-C]\xC3\x89", "b\xC3\xA9", ignoreCase, true},
           {"[[:UPPER:]]", "A", ignoreCase, false},
           {"[[:lower:]]", "A", ignoreCase, true},
           {"*a*a*a*a*a*a*a*a*a*a*a*a*b", "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa",
            asItIs, false},  // at once
           {"", "", asItIs, true}}) {
    EXPECT_EQ(NamePattern(row.pattern, row.policy).Matches(row.name), row.matches)
        << row.pattern << " and " << row.name;
  }
}

// The answers to the names in `folders` that match, by asking for each name alone.
std::map<ustring, std::vector<FoundItem>> AskForEach(const Environment& environment,
                                                     const std::string& prefix,
                                                     const PathEntries& folders,
                                                     const host::Lookup& lookup) {
  std::map<ustring, std::vector<FoundItem>> answers;
  const NamePattern pattern(ustring(lookup.name.substr(prefix.size())), lookup.policy);
  for (const auto& folder : folders) {
    const auto items = folder->GetItems();
    for (const auto& item : *items) {
      const ustring file = item->GetName() + item->GetExtension();
      if (!pattern.Matches(BytesFromText(file).value())) continue;
      host::Lookup each = lookup;
      each.name = TextFromBytes(prefix) + file;
      auto files = environment.FindAll(each);
      if (!files.empty()) answers.emplace(each.name, std::move(files));
    }
  }
  return answers;
}

class MatchingTest : public testing::Test {
 protected:
  void SetUp() override {
    tree.Files({"a/plot.zt", "a/axes.zt", "a/.hid", "a/private/plot.zt", "a/private/own.zt",
                "a/+geo/area.zt", "a/+geo/arc.c", "b/plot.zt", "b/Plot.c", "b/sub/area.zt",
                "b/sub/x.zt", "b/run", "c/plot.zt"});
    tree.Do("chmod +x b/run; ln -s b d; ln -s none b/dangling.zt");
  }

  [[nodiscard]] host::EnvironmentOptions Options(const host::LookupRules& rules) const {
    return {.folders = {tree.Path("a"), tree.Path("d"), tree.Path("b"), tree.Path("c")},
            .without = {tree.Path("c")},
            .rules = rules};
  }

  // Each name of the answer, and how many files it has.
  static std::string Show(const std::vector<host::MatchingName>& names) {
    std::string shown;
    for (const auto& [name, files] : names) {
      shown += BytesFromText(name).value() + ':' + std::to_string(files.size()) + ' ';
    }
    return shown;
  }

  const TemporaryTree tree;
};

TEST_F(MatchingTest, EachNameHasTheAnswerThatItHasAlone) {
  for (const auto& [rulesName, rules] : host::kNamedRules) {
    const Environment environment(Options(rules));
    for (const std::string pattern : {"*", "p*", "*.zt", "?[!l]*", "none*", "geo/*", "sub/a*"}) {
      const std::size_t separator = pattern.find('/') + 1;
      const std::string prefix = pattern.substr(0, separator);
      PathEntries folders;
      environment.GetPath()->ForEachEntry(kAllKindsScope, [&](const auto& entry) {
        folders.push_back(entry);
        return false;
      });
      for (const char* below : {"sub", "+geo", "private"}) {
        for (const char* above : {"a/", "b/"}) {
          folders.push_back(host::FolderEntry::Create(tree.IRI(above + std::string(below))));
        }
      }
      std::vector<host::Lookup> lookups = {{.name = pattern}, {.name = pattern}};
      lookups[1].fromFolder = tree.Path("a");
      if (!rules.foldersHaveMeaning) lookups[1].afterFolder = tree.Path("a");
      for (const host::Lookup& lookup : lookups) {
        const auto expected = AskForEach(environment, prefix, folders, lookup);
        const auto matching = environment.FindMatching(lookup);
        EXPECT_EQ(matching.size(), expected.size())
            << rulesName << ' ' << pattern << ": " << Show(matching);
        for (const auto& [name, files] : matching) {
          const auto alone = expected.find(name);
          ASSERT_NE(alone, expected.end()) << rulesName << ' ' << pattern << ": " << Show(matching);
          ASSERT_EQ(files.size(), alone->second.size());
          for (std::size_t at = 0; at < files.size(); ++at) {
            EXPECT_EQ(host::GetNativePath(files[at]), host::GetNativePath(alone->second[at]));
          }
        }
      }
    }
  }
}

TEST_F(MatchingTest, NamesComeInTheOrderOfThePathAndOfTheirBytes) {
  const Environment environment(Options({}));
  using enum FilenameMatchingPolicy;
  EXPECT_EQ(Show(environment.FindMatching({.name = "*"})),
            ".hid:1 axes.zt:1 plot.zt:2 Plot.c:1 run:1 ");
  EXPECT_EQ(Show(environment.FindMatching({.name = "*o*", .fromFolder = tree.Path("a")})),
            "own.zt:1 plot.zt:3 Plot.c:1 ");
  EXPECT_EQ(Show(environment.FindMatching({.name = "*", .extensions = {"c", "zt"}})),
            "axes.zt:1 plot.zt:2 Plot.c:1 ");
  EXPECT_EQ(Show(environment.FindMatching({.name = "PLOT.*", .policy = IgnoreCase})),
            "plot.zt:2 Plot.c:1 ");
  EXPECT_EQ(Show(environment.FindMatching({.name = "geo/*"})), "geo/arc.c:1 geo/area.zt:1 ");
  EXPECT_THROW(static_cast<void>(environment.FindMatching({.name = "g*/*"})),
               std::invalid_argument);
  const Environment programs(Options(*host::FindRules("program")));
  EXPECT_EQ(Show(programs.FindMatching({.name = "*"})), "run:2 ");  // repeats count
  tree.File("b/PLOT.ZT");
  EXPECT_EQ(Show(Environment(Options({})).FindMatching({.name = "*.zt", .policy = IgnoreCase})),
            "axes.zt:1 plot.zt:3 ");
}

}  // namespace
}  // namespace Corvane::PathManagement
