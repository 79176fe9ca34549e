#include "support/shown.h"

#include <gtest/gtest.h>

#include <atomic>

namespace Corvane::PathManagement::host {
namespace {

using PathManagement::detail::SearchTarget;
using test::Shown;
using Entries = std::vector<std::shared_ptr<const IPathEntry>>;

constexpr auto kExact = FilenameMatchingPolicy::CaseSensitive;
constexpr auto kIgnore = FilenameMatchingPolicy::IgnoreCase;
constexpr std::uint32_t kKinds[] = {0, 1, 2, 3, 4, 5};
const SearchScope kMain(kKinds, 1), kAll(kKinds, 5), kAllAndResources(kKinds, 6);

/// Two folders on a path, "one" and "two", with special folders of every kind below them.
struct FolderPathTest : testing::Test {
  FolderPathTest() {
    tree.Files({"one/fn.x", "one/private/secret.x", "one/private/fn.x", "one/resources/data.x",
                "one/+pkg/fn.x", "one/+pkg/@cls/fn.x", "one/+pkg/+sub/deep.x", "one/@cls/method.x",
                "two/fn.x", "two/Method.X", "two/@cls/method.x", "two/+pkg/fn.x", "two/only.x"});
  }
  [[nodiscard]] Entries Visited(SearchScope scope) const {
    Entries entries;
    path.ForEachEntry(scope, [&](const auto& entry) { return entries.push_back(entry), false; });
    return entries;
  }
  [[nodiscard]] std::string At(const AbsoluteIRI& iri, FilenameMatchingPolicy policy) const {
    return Shown(Entries{path.GetPathEntryFromAbsoluteIRI(iri, policy)}, tree);
  }

  test::TemporaryTree tree;
  std::shared_ptr<const FolderEntry> one = FolderEntry::Create(tree.IRI("one"));
  std::shared_ptr<const FolderEntry> two = FolderEntry::Create(tree.IRI("two"));
  const FolderPath path{{one, two}};
};

TEST_F(FolderPathTest, TraversalsGoDepthFirstThroughTheScope) {
  const Entries all = Visited(kAllAndResources);
  EXPECT_EQ(Shown(all, tree),
            "one one/private one/resources one/+pkg one/+pkg/+sub one/+pkg/@cls one/@cls "
            "two two/+pkg two/@cls");
  EXPECT_EQ(Shown(Visited(kMain), tree), "one two");
  EXPECT_EQ(Shown(Visited({nullptr, 0}), tree), "");
  std::atomic<std::size_t> visits = 0;
  EXPECT_FALSE(
      path.ConcurrentForEachEntry(kAllAndResources, [&](const auto&) { return ++visits, false; }));
  EXPECT_EQ(visits, all.size());
  EXPECT_TRUE(path.ConcurrentForEachEntry(kMain, [](const auto&) { return true; }));
  EXPECT_THROW(path.ConcurrentForEachEntry(kMain, PathEntryVisitor()), std::bad_function_call);
  EXPECT_EQ(Shown(Entries{one->GetSingleSubfolderEntryA(), one->GetSingleSubfolderEntryB()}, tree),
            "one/private one/resources");
  EXPECT_EQ(Shown(*one->GetSubfolderEntriesA(), tree), "one/+pkg");
  EXPECT_EQ(Shown(*one->GetSubfolderEntriesB(), tree), "one/@cls");
}

struct Question {
  SearchScope scope;
  ustring name;
  FilenameMatchingPolicy policy;
  std::string expected;
};

TEST_F(FolderPathTest, NamesAndPartialPathnamesFindFilesInPathOrder) {
  const ustring full = tree.Text("one/private/fn.x");
  const std::vector<Question> rows = {
      {kMain, u"fn.x", kExact, "one/fn.x two/fn.x"},
      {kAll, u"only.x", kExact, "two/only.x"},
      {kAll, u"secret.x", kExact, "one/private/secret.x"},
      {kAll, u"METHOD.x", kIgnore, "one/@cls/method.x two/Method.X two/@cls/method.x"},
      {kAll, u"data.x", kExact, ""},
      {kAllAndResources, u"data.x", kExact, "one/resources/data.x"},
      {kAll, u"pkg/fn.x", kExact, "one/+pkg/fn.x two/+pkg/fn.x"},
      {kAll, u"one/pkg/fn.x", kExact, "one/+pkg/fn.x"},
      {kAll, u"pkg/cls/fn.x", kExact, "one/+pkg/@cls/fn.x"},
      {kAll, u"CLS/method.x", kIgnore, "one/@cls/method.x two/@cls/method.x"},
      {kAll, u"sub/deep.x", kExact, ""},  // begins inside a package
      {kAll, full, kExact, "one/private/fn.x"},
      {kAll, full.substr(full.find(u'/', 1)), kExact,
       ""},  // begins with a separator: named in full
      {kAll, u"pkg/", kExact, ""},
      {kAll, u"/\xD800/fn.x", kExact, ""},
  };
  for (const auto& [scope, name, policy, expected] : rows) {
    const auto all = path.FindAllInScope(scope, SearchTarget(name), policy);
    EXPECT_EQ(Shown(all, tree), expected) << testing::PrintToString(name);
    const auto first = path.FindFirstInScope(scope, SearchTarget(name), policy);
    EXPECT_TRUE(first ? *first == all.at(0) : all.empty()) << testing::PrintToString(name);
  }
}

TEST_F(FolderPathTest, FoldersAreFoundByNameAndLocation) {
  const auto methods = [&](SearchScope scope, const ustring& name, FilenameMatchingPolicy policy) {
    return Shown(path.GetMethodEntriesByName(scope, name, policy), tree);
  };
  tree.Link("..", "one/+pkg/+up");  // is cut, which is known once every folder has been listed
  const std::string longName(70, 'm');
  tree.File("two/@" + longName + "/fn.x");
  EXPECT_EQ(Shown(path.GetMethodEntries(), tree),
            "one/+pkg/@cls one/@cls two/@cls two/@" + longName);
  EXPECT_EQ(methods(kMain, u"cls", kExact), "one/@cls two/@cls");
  EXPECT_EQ(methods(kAll, u"CLS", kIgnore), "one/+pkg/@cls one/@cls two/@cls");
  EXPECT_EQ(methods(kMain, u"CLS", kExact), "");
  for (int question = 0; question < 2; ++question) {  // the second builds an index
    EXPECT_TRUE(path.FindFirstInScope(kMain, SearchTarget(u"fn.x"), kExact));
  }
  EXPECT_EQ(methods(kMain, TextFromBytes(longName), kExact), "two/@" + longName);
  EXPECT_EQ(methods(kMain, u"cls", kExact), "one/@cls two/@cls");
  const auto partially = [&](SearchScope scope, const ustring& name) {
    return Shown(path.GetPartiallyMatchingEntries(scope, name, kIgnore), tree);
  };
  EXPECT_EQ(partially(kAll, u"PKG/cls"), "one/+pkg/@cls");
  EXPECT_EQ(partially(kMain, u"TWO"), "two");

  tree.Link("one/+pkg", "link");
  EXPECT_EQ(At(tree.IRI("link"), kExact), "one/+pkg");
  EXPECT_EQ(At(tree.IRI("ONE"), kExact), "none");
  EXPECT_EQ(At(tree.IRI("ONE"), kIgnore), "one");
  EXPECT_EQ(At(AbsoluteIRI(u"http://host/one"), kExact), "none");
  EXPECT_EQ(path.GetPathEntryFromAbsoluteIRI(one->GetCanonicalAbsoluteIRI()), one);
  EXPECT_EQ(path.FindProblems().size(), 1U);
  EXPECT_EQ(path.GetPathEntryFromAbsoluteIRI({tree.IRI("one"), u"other"}), nullptr);
}

TEST_F(FolderPathTest, EntriesKnowTheirPlace) {
  const auto entries = Visited(kAllAndResources);
  const FolderPath other(
      {FolderEntry::Create(tree.IRI("two")), FolderEntry::Create(tree.IRI("one"))});
  for (std::size_t first = 0; first < entries.size(); ++first) {
    EXPECT_TRUE(path.IsEntryOnPath(*entries[first]));
    EXPECT_TRUE(other.IsEntryOnPath(*entries[first])) << "the same folder is on that path";
    for (std::size_t second = 0; second < entries.size(); ++second) {
      EXPECT_EQ(path.FirstEntryIsBeforeSecondOnPath(*entries[first], *entries[second]),
                first < second);
    }
  }
  EXPECT_EQ(path.GetMainEntryForEntry(*entries[5]), one);
  EXPECT_EQ(path.GetParentEntryForEntry(*entries[5]), entries[3]);
  EXPECT_EQ(path.GetMainEntryForEntry(*two), two);
  EXPECT_EQ(path.GetParentEntryForEntry(*two), nullptr);
  const auto stranger = FolderEntry::Create(tree.IRI());
  EXPECT_FALSE(path.IsEntryOnPath(*stranger));
  EXPECT_TRUE(path.FirstEntryIsBeforeSecondOnPath(*entries[9], *stranger));
  EXPECT_FALSE(path.FirstEntryIsBeforeSecondOnPath(*stranger, *one));
}

TEST_F(FolderPathTest, FoldersBehindTheAnswerAreNotListed) {
  const auto find = [&](const ustring& name) {
    return path.FindFirstInScope(kMain, SearchTarget(name), kExact).has_value();
  };
  EXPECT_TRUE(find(u"fn.x"));
  tree.File("two/late.x");
  EXPECT_TRUE(find(u"late.x"));
  tree.File("two/later.x");
  EXPECT_FALSE(find(u"later.x"));
}

}  // namespace
}  // namespace Corvane::PathManagement::host
