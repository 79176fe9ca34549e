#include "searchpath/host/folder_entry.h"

#include "searchpath/host/folder_tree.h"
#include "support/temporary_tree.h"

#include <gtest/gtest.h>

#include <sys/fsuid.h>
#include <sys/stat.h>

#include <array>
#include <filesystem>
#include <optional>

namespace Corvane::PathManagement::host {
namespace {

using current_working_folder::AbsolutizeError;
using PathManagement::detail::SearchTarget;
using test::TemporaryTree;

std::vector<std::string> ItemNames(const IPathEntry& entry) {
  std::vector<std::string> names;
  const auto items = entry.GetItems();
  for (const auto& item : *items) {
    names.push_back(BytesFromText(item->GetName() + item->GetExtension()).value());
  }
  return names;
}

std::string NameOf(const IPathEntry& entry) {
  return BytesFromText(entry.GetAbsoluteIRI().getName()).value();
}

TEST(FolderEntryTest, ItemsAreRegularFilesAlsoThroughLinks) {
  const TemporaryTree tree;
  tree.File("lib/b.x");
  tree.File("lib/a");
  tree.Link("b.x", "lib/link.x");
  tree.Link("gone", "lib/dangling");
  tree.Folder("lib/folder");
  tree.Link("folder", "lib/folderlink");
  ASSERT_EQ(mkfifo(tree.Path("lib/fifo").c_str(), 0600), 0);
  EXPECT_EQ(ItemNames(*FolderEntry::Create(tree.IRI("lib"))),
            (std::vector<std::string>{"a", "b.x", "link.x"}));
}

TEST(FolderEntryTest, EveryNameOnDiskIsFoundByItsOwnText) {
  const TemporaryTree tree;
  const std::vector<std::string> names = {"a b",  "a\"b'", "a\nb",        "100%", "%2F",
                                          "\xFF", "\xC3",  "\xC3\xA9",    "#?",   "[x]",
                                          "...",  "~",     "\xED\xA0\x80"};
  for (const auto& name : names) tree.File("lib\xFF%41/" + name);
  const auto entry = FolderEntry::Create(tree.IRI("lib\xFF%41"));
  for (const auto& name : names) {
    const auto item =
        entry->FindItem(SearchTarget(TextFromBytes(name)), FilenameMatchingPolicy::CaseSensitive);
    ASSERT_NE(item, nullptr) << name;
    EXPECT_EQ(BytesFromText(item->GetName() + item->GetExtension()), name);
  }
  EXPECT_EQ(ItemNames(*entry).size(), names.size());
}

TEST(FolderEntryTest, AFolderIsListedAtItsFirstQuestionAndNeverAgain) {
  const TemporaryTree tree;
  tree.Folder("lib");
  const auto entry = FolderEntry::Create(tree.IRI("lib"));
  tree.File("lib/early");
  EXPECT_EQ(ItemNames(*entry), std::vector<std::string>{"early"});
  tree.File("lib/late");
  EXPECT_EQ(ItemNames(*entry), std::vector<std::string>{"early"});
  std::filesystem::remove_all(tree.Path("lib"));
  EXPECT_EQ(entry->GetItems()->at(0), entry->GetItems()->at(0)) << "one file, one object";
}

struct Match {
  const char16_t* name;
  std::vector<ustring> extensions;
  FilenameMatchingPolicy policy;
  std::vector<std::string> expected;
};

TEST(FolderEntryTest, FilesMatchByPolicyAndOrderOfExtensions) {
  constexpr auto exact = FilenameMatchingPolicy::CaseSensitive;
  constexpr auto ignore = FilenameMatchingPolicy::IgnoreCase;
  constexpr auto system = FilenameMatchingPolicy::FileSystemDefault;
  const TemporaryTree tree;
  for (const char* name : {"fn", "fn.x", "fn.y", "FN.X", "Fn.x",
                           "stra\xC3\x9F"
                           "e",
                           ".rc", "k"}) {
    tree.File(std::string("lib/") + name);
  }
  const std::vector<Match> rows = {
      {u"fn", {}, exact, {"fn"}},
      {u"fn", {u".y", u".x"}, exact, {"fn.y", "fn.x"}},
      {u"fn", {u".z"}, exact, {}},
      {u"FN.x", {}, system, {}},
      {u"Fn", {u".X"}, system, {}},
      {u"Fn", {u".x", u".X"}, ignore, {"Fn.x", "FN.X", "fn.x"}},
      {u"STRASSE",
       {},
       ignore,
       {"stra\xC3\x9F"
        "e"}},
      {u"\u212A", {}, ignore, {"k"}},  // the Kelvin sign folds to k
      {u"", {u".rc"}, exact, {".rc"}},
      {u"\xD800", {}, exact, {}},
      {u"\xD800", {}, ignore, {}},
  };
  const auto entry = FolderEntry::Create(tree.IRI("lib"));
  for (const auto& row : rows) {
    const SearchTarget target(row.name, row.extensions);
    std::vector<std::string> found;
    for (const auto& item : entry->FindItems(target, row.policy)) {
      found.push_back(BytesFromText(item->GetName() + item->GetExtension()).value());
    }
    SCOPED_TRACE(BytesFromText(row.name).value_or("(no text)"));
    EXPECT_EQ(found, row.expected);
    const auto first = entry->FindItem(target, row.policy);
    EXPECT_EQ(first == nullptr, row.expected.empty());
    if (first) {
      EXPECT_EQ(first, entry->FindItems(target, row.policy).front());
    }
  }
}

TEST(FolderEntryTest, LinksThatLeadBackUpAreCut) {
  const TemporaryTree tree;
  tree.File("lib/+a/fn.x");
  tree.Link(".", "lib/+self");
  tree.Link("../..", "lib/+a/+top");    // above lib: entered, and back to lib is cut
  tree.Link("../other", "lib/@other");  // elsewhere: followed
  tree.Link("../lib", "other/+back");   // from elsewhere back: cut
  const auto entry = FolderEntry::Create(tree.IRI("lib"));
  std::vector<std::string> visited;
  const std::array<std::uint32_t, 3> kinds = {0, 1, 2};
  entry->ForEachEntryInScope({kinds.data(), kinds.size()}, [&visited](const auto& below) {
    visited.push_back(NameOf(*below));
    return false;
  });
  EXPECT_EQ(visited, (std::vector<std::string>{"lib", "+a", "+top", "@other"}));
  const auto problems = entry->GetProblems();
  ASSERT_EQ(problems.size(), 1U);
  EXPECT_EQ(problems[0].folder, tree.Text("lib/+self"));
  EXPECT_EQ(problems[0].reason, AbsolutizeError::LinkLoop);
}

/// Asks the disk as an unprivileged user, also when the tests run as root.
class Unprivileged {
 public:
  Unprivileged() : before(static_cast<uid_t>(setfsuid(65534))) {}
  Unprivileged(const Unprivileged&) = delete;
  Unprivileged& operator=(const Unprivileged&) = delete;
  ~Unprivileged() { setfsuid(before); }

 private:
  uid_t before;
};

TEST(FolderEntryTest, FoldersThatCannotBeReadAreEmptyAndSayWhy) {
  const TemporaryTree tree;
  tree.File("file");
  tree.Link("nowhere", "broken");
  tree.Link("loop", "loop");
  tree.File("secret/fn");
  std::filesystem::permissions(tree.Path("secret"), std::filesystem::perms::owner_exec);
  const std::vector<std::pair<std::string, AbsolutizeError>> rows = {
      {"absent", AbsolutizeError::Absent},
      {"file", AbsolutizeError::NotAFolder},
      {"broken", AbsolutizeError::BrokenLink},
      {"loop", AbsolutizeError::LinkLoop},
      {std::string(300, 'n'), AbsolutizeError::NameTooLong},
      {"secret", AbsolutizeError::PermissionDenied},
  };
  for (const auto& [name, reason] : rows) {
    const auto entry = FolderEntry::Create(tree.IRI(name));
    std::optional<Unprivileged> user;
    if (name == "secret") user.emplace();
    const auto before = entry->GetProblems();
    EXPECT_TRUE(entry->GetItems()->empty()) << name;
    const auto after = entry->GetProblems();
    ASSERT_EQ(before.size(), 1U) << name;
    ASSERT_EQ(after.size(), 1U) << name;
    EXPECT_EQ(before[0].reason, reason) << name;
    EXPECT_EQ(after[0].reason, reason) << name;
    EXPECT_EQ(after[0].folder, tree.Text(name));
  }
  const auto foreign = FolderEntry::Create(AbsoluteIRI(u"http://host/lib"));
  EXPECT_TRUE(foreign->GetItems()->empty());
  EXPECT_EQ(foreign->GetProblems().at(0).reason, AbsolutizeError::InvalidText);
}

TEST(FolderTreeTest, EachOrdinaryFolderOccursOnceDepthFirst) {
  const TemporaryTree tree;
  for (const char* name : {"b/z", "b/a/deep", "+pkg/plain", ".git", "c"}) tree.Folder(name);
  tree.Link("..", "b/a/up");
  tree.Link("../c", "b/c-link");
  std::vector<std::string> names;
  for (const auto& entry : CreateFolderTree(tree.IRI())) {
    names.push_back(BytesFromText(entry->GetAbsoluteIRI().getPath()).value());
  }
  EXPECT_EQ(names, (std::vector<std::string>{tree.Path(), tree.Path(".git"), tree.Path("b"),
                                             tree.Path("b/a"), tree.Path("b/a/deep"),
                                             tree.Path("b/c-link"), tree.Path("b/z")}));
}

}  // namespace
}  // namespace Corvane::PathManagement::host
