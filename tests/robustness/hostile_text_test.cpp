#include "searchpath/host/environment.h"
#include "searchpath/host/explanation_json.h"
#include "searchpath/host/folder_list.h"
#include "searchpath/host/name_pattern.h"
#include "searchpath/host/native_location.h"
#include "searchpath/host/path_entry_factory.h"
#include "searchpath/host/receipt.h"
#include "searchpath/utilities/iri_conversion.h"
#include "searchpath/utilities/path_strings.h"
#include "support/temporary_tree.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <sstream>

// Texts that programs trip over, through every door by which a text comes in. The disk says what is right: a
// text finds the file whose name is these bytes, and nothing where there can be no such file.

namespace Corvane::PathManagement::host {
namespace {

using foundation::storage::vfs::InvalidIRIException;
using Bytes = std::optional<std::string>;

struct Row {
  ustring text;
  Bytes bytes;  // of a file name; empty when no file name has this text
};

/// The bytes are the text: ASCII, or a NUL in it.
Row Ascii(const std::string& bytes) { return {ustring(bytes.begin(), bytes.end()), bytes}; }

std::vector<Row> MakeRows() {
  using namespace std::string_literals;
  std::vector<Row> rows;
  for (const std::string& name : {"a b"s,
                                  " lead"s,
                                  "trail "s,
                                  "a\nb"s,
                                  "a\rb"s,
                                  "a\tb"s,
                                  "\a\b"s,
                                  "\x1b[31mred"s,
                                  "\x7f"s,
                                  "%41"s,
                                  "%2Fetc"s,
                                  "%00"s,
                                  "%"s,
                                  "%zz"s,
                                  "~"s,
                                  "~root"s,
                                  "$HOME"s,
                                  "`id`"s,
                                  "'; x"s,
                                  "\"q\""s,
                                  "*"s,
                                  "?"s,
                                  "[a]"s,
                                  "[!"s,
                                  "\\"s,
                                  "a\\n"s,
                                  "a:b"s,
                                  "a;b"s,
                                  "-rf"s,
                                  "--"s,
                                  ".hidden"s,
                                  "..."s,
                                  "a."s,
                                  "&amp;"s,
                                  "<b>"s,
                                  "{}"s,
                                  "#x"s,
                                  "a?b#c"s,
                                  "file:x"s,
                                  std::string(255, 'x'),
                                  std::string(256, 'x'),
                                  std::string(5000, 'x'),
                                  ""s,
                                  "."s,
                                  ".."s,
                                  "a\0b"s,
                                  "\0"s,
                                  "/"s,
                                  "a/"s,
                                  "a//b"s,
                                  "../.."s}) {
    rows.push_back(Ascii(name));
  }
  const std::vector<Row> wide = {{u"\u0301", "\xCC\x81"},
                                 {u"e\u0301", "e\xCC\x81"},
                                 {u"\u00E9", "\xC3\xA9"},
                                 {u"\u0130", "\xC4\xB0"},
                                 {u"\u00DF", "\xC3\x9F"},
                                 {u"\u0085", "\xC2\x85"},
                                 {u"\u2028", "\xE2\x80\xA8"},
                                 {u"\u202Etz.", "\xE2\x80\xAEtz."},
                                 {u"\uFEFF", "\xEF\xBB\xBF"},
                                 {u"\uFFFD", "\xEF\xBF\xBD"},
                                 {u"\uFFFE", "\xEF\xBF\xBE"},
                                 {u"\U0001F600", "\xF0\x9F\x98\x80"},
                                 {u"\U0010FFFF", "\xF4\x8F\xBF\xBF"},
                                 {u"\xDCFF", "\xFF"},
                                 {u"\xDCC0\xDCAF", "\xC0\xAF"},
                                 {u"\xDCED\xDCA0\xDC80", "\xED\xA0\x80"},
                                 {u"\xDCF4\xDC90\xDC80\xDC80", "\xF4\x90\x80\x80"},
                                 {u"\xDCE2\xDC82", "\xE2\x82"},
                                 {u"a\xDC80z", "a\x80z"},
                                 {u"plot\xD800", std::nullopt},
                                 {u"plot\xDBFFz", std::nullopt},
                                 {u"plot\xDC00", std::nullopt},
                                 {u"plot\xDFFF", std::nullopt},
                                 {u"plot\xD800\xD800", std::nullopt}};
  rows.insert(rows.end(), wide.begin(), wide.end());
  return rows;
}

bool HasNul(const Row& row) { return row.text.find(u'\0') != ustring::npos; }

/// Whether it is neither empty nor several names, nor one that stands for another folder.
bool IsName(const Row& row) {
  return !row.text.empty() && row.text.find_first_not_of(u'.') != ustring::npos &&
         row.text.find(u'/') == ustring::npos;
}

/// Whether the disk has something at these bytes below the tree.
bool Stands(const test::TemporaryTree& tree, const std::string& below) {
  return below.find('\0') == std::string::npos && access(tree.Path(below).c_str(), F_OK) == 0;
}

/// The native path of what was found; "" for nothing.
std::string PathOf(const boost::optional<FoundItem>& found) {
  return found ? BytesFromText(GetNativePath(*found)).value() : "";
}

/// A tree that has, for each row whose text the disk can hold, the file names/TEXT and folders/TEXT/plot.zt.
struct HostileTextTest : testing::Test {
  HostileTextTest() {
    tree.Files({"names/other", "folders/other"});
    std::size_t held = 0;
    for (const Row& row : rows) {
      const std::string name = row.bytes.value_or("");
      if (!IsName(row) || HasNul(row)) continue;
      std::ofstream file(tree.Path("names/" + name));
      if (file.is_open()) ++held;
      std::error_code ignored;
      std::filesystem::create_directory(tree.Path("folders/" + name), ignored);
      std::ofstream(tree.Path("folders/" + name + "/plot.zt"));
    }
    EXPECT_EQ(held, 58U);
    std::printf("%zu texts\n", rows.size());
  }

  [[nodiscard]] Environment Names(const LookupRules& rules = kPlainRules) const {
    return Environment(EnvironmentOptions{.folders = {tree.Text("names")}, .rules = rules});
  }
  /// The file that is to be found for the text of a row.
  [[nodiscard]] std::string FileOf(const Row& row) const {
    if (!row.bytes || HasNul(row)) return "";
    const std::string file = tree.Path("names/" + *row.bytes);
    std::error_code ignored;
    return std::filesystem::is_regular_file(file, ignored) ? file : "";
  }
  void ExpectFiles(const Environment& environment) const {
    for (const Row& row : rows) {
      EXPECT_EQ(PathOf(environment.Find({.name = row.text})), FileOf(row))
          << testing::PrintToString(row.text);
    }
  }

  const std::vector<Row> rows = MakeRows();
  const test::TemporaryTree tree;
};

TEST_F(HostileTextTest, BytesAndTextsAreEachOther) {
  for (const Row& row : rows) {
    EXPECT_EQ(BytesFromText(row.text), row.bytes) << testing::PrintToString(row.text);
    if (row.bytes) {
      EXPECT_EQ(TextFromBytes(*row.bytes), row.text);
    }
  }
}

TEST_F(HostileTextTest, NamesMeanTheFilesThatTheDiskHas) {
  for (const NamedRules& rules : kNamedRules) {
    if (rules.rules.files != LookupRules::Files::Regular) continue;  // these may not be executed
    SCOPED_TRACE(rules.name);
    ExpectFiles(Names(rules.rules));
    for (const Row& row : rows) {  // each the first question
      EXPECT_EQ(PathOf(Names(rules.rules).Find({.name = row.text})), FileOf(row))
          << testing::PrintToString(row.text);
    }
  }
}

TEST_F(HostileTextTest, FoldersArePutOnAPath) {
  for (const Row& row : rows) {
    const Environment environment(
        EnvironmentOptions{.folders = {tree.Text("folders/") + row.text}, .rules = kPlainRules});
    const bool isThere = row.bytes && Stands(tree, "folders/" + *row.bytes + "/plot.zt");
    EXPECT_EQ(!PathOf(environment.Find({.name = u"plot.zt"})).empty(), isThere)
        << testing::PrintToString(row.text);
  }
}

TEST_F(HostileTextTest, LocationsKeepTheTextOrNameIt) {
  for (const Row& row : rows) {
    const ustring path = u"/plot/" + row.text;
    SCOPED_TRACE(testing::PrintToString(path));
    try {
      const AbsoluteIRI location = foundation::storage::vfs::toAbsoluteIRI(u"file", path);
      EXPECT_TRUE(row.bytes && !HasNul(row));
      if (IsName(row)) {
        EXPECT_EQ(GetIRIFromString(location.toString()), location);
        EXPECT_EQ(GetStringFromIRI(location), path);
      }
    } catch (const InvalidIRIException& error) {
      EXPECT_TRUE(!row.bytes || HasNul(row));
      EXPECT_NE(std::string(error.what()).find("plot"), std::string::npos) << error.what();
    }
  }
}

TEST_F(HostileTextTest, ListFilesHoldThem) {
  for (const Row& row : rows) {
    if (!row.bytes) continue;
    std::vector<ustring> expected = {u"first"};
    if (row.text == u"a\nb") {
      expected.insert(expected.end(), {u"a", u"b"});
    } else if (!row.text.empty()) {
      expected.push_back(row.text);
    }
    std::istringstream list("first\n" + *row.bytes + "\n");
    EXPECT_EQ(ReadFolderList(list), expected) << testing::PrintToString(row.text);
  }
}

TEST_F(HostileTextTest, PathStringsAreCutAtSeparatorsAlone) {
  for (const Row& row : rows) {
    std::vector<ustring> expected = {u"x", u""};
    for (const char16_t unit : row.text) {
      if (unit == u':' || unit == u';') {
        expected.emplace_back();
      } else {
        expected.back() += unit;
      }
    }
    std::erase(expected, u"");
    expected.push_back(u"y");
    EXPECT_EQ(SplitZentraPath(u"x:" + row.text + u":y"), expected)
        << testing::PrintToString(row.text);
  }
}

TEST_F(HostileTextTest, EscapedPatternsMatchThemAlone) {
  for (const Row& row : rows) {
    if (!row.bytes) continue;
    ustring escaped;
    for (const char16_t unit : row.text) {
      if (unit < 0x80) escaped += u'\\';
      escaped += unit;
    }
    SCOPED_TRACE(testing::PrintToString(row.text));
    for (const ustring& pattern :
         {escaped, NamePattern::IsPattern(row.text) || row.text.find(u'\\') != ustring::npos
                       ? escaped
                       : row.text}) {
      EXPECT_TRUE(NamePattern(pattern).Matches(*row.bytes));
      EXPECT_FALSE(NamePattern(pattern).Matches(*row.bytes + 'x'));
      EXPECT_FALSE(NamePattern(pattern).Matches('x' + *row.bytes));
    }
  }
}

TEST_F(HostileTextTest, ReceiptsKeepThem) {
  std::vector<Lookup> lookups;
  for (const Row& row : rows) lookups.push_back({.name = row.text});
  std::erase_if(lookups, [](const Lookup& lookup) { return !BytesFromText(lookup.name); });
  std::stringstream file;
  Names().FindWithReceipt(lookups).Write(file);
  const Receipt read = Receipt::Read(file);
  ASSERT_EQ(read.GetCount(), lookups.size());
  std::size_t at = 0;
  for (const Row& row : rows) {
    if (!row.bytes) continue;
    EXPECT_EQ(read.GetName(at), row.text);
    const auto answer = read.GetAnswer(at++);
    EXPECT_EQ(answer ? PathOf(*answer) : "", FileOf(row)) << testing::PrintToString(row.text);
  }
}

TEST_F(HostileTextTest, CachesKeepThem) {
  std::stringstream file;
  PathEntryFactory({FolderEntry::Create(tree.IRI("names"))}).WriteEntries(file, tree.IRI());
  PathEntryFactory cache(ListingUse::AsSaved);
  cache.ReadEntries(file, tree.IRI());
  ExpectFiles(Environment(cache));
}

TEST_F(HostileTextTest, ExplanationsAreJsonThatHoldsThem) {
  const ustring bad = u"\xDC80\xDCC0\xDCE2\xDCED\xDCF4\xDCFF";
  for (const Row& row : rows) {
    if (!row.bytes) continue;
    const Explanation explanation = Names().Explain({.name = row.text});
    const auto json = nlohmann::json::parse(GetJson(*row.bytes, explanation));
    const bool isUtf8 = row.text.find_first_of(bad) == ustring::npos;
    EXPECT_EQ(json.contains("nameBytes"), !isUtf8) << json;
    EXPECT_EQ(json.at("name") == *row.bytes, isUtf8) << json;
  }
}

}  // namespace
}  // namespace Corvane::PathManagement::host
