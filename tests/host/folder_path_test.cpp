#include "searchpath/utilities/file_lookup.h"
#include "support/listings.h"
#include "support/shown.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <string>

namespace Corvane::PathManagement::host {
namespace {

using PathManagement::detail::SearchTarget;
using test::Shown;
using Entries = std::vector<std::shared_ptr<const IPathEntry>>;

constexpr auto kExact = FilenameMatchingPolicy::CaseSensitive;
constexpr auto kIgnore = FilenameMatchingPolicy::IgnoreCase;
constexpr SearchScope kMain = kMainScope, kAll = kAllKindsScope;
constexpr SearchScope kAllAndResources = kAllKindsAndResourcesScope;

/// Two folders on a path, "one" and "two", with special folders of every kind below them.
struct FolderPathTest : testing::Test {
  FolderPathTest() {
    tree.Files({"one/fn.zt", "one/private/secret.zt", "one/private/fn.zt", "one/resources/data.zt",
                "one/+pkg/fn.zt", "one/+pkg/@cls/fn.zt", "one/+pkg/+sub/deep.zt",
                "one/@cls/method.zt", "two/fn.zt", "two/Method.ZT", "two/@cls/method.zt",
                "two/+pkg/fn.zt", "two/only.zt"});
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
  const ustring full = tree.Text("one/private/fn.zt");
  const std::vector<Question> rows = {
      {kMain, u"fn.zt", kExact, "one/fn.zt two/fn.zt"},
      {kAll, u"only.zt", kExact, "two/only.zt"},
      {kAll, u"secret.zt", kExact, "one/private/secret.zt"},
      {kAll, u"METHOD.zt", kIgnore, "one/@cls/method.zt two/Method.ZT two/@cls/method.zt"},
      {kAll, u"data.zt", kExact, ""},
      {kAllAndResources, u"data.zt", kExact, "one/resources/data.zt"},
      {kAll, u"pkg/fn.zt", kExact, "one/+pkg/fn.zt two/+pkg/fn.zt"},
      {kAll, u"one/pkg/fn.zt", kExact, "one/+pkg/fn.zt"},
      {kAll, u"pkg/cls/fn.zt", kExact, "one/+pkg/@cls/fn.zt"},
      {kAll, u"CLS/method.zt", kIgnore, "one/@cls/method.zt two/@cls/method.zt"},
      {kAll, u"sub/deep.zt", kExact, ""},  // begins inside a package
      {kAll, full, kExact, "one/private/fn.zt"},
      {kAll, full.substr(full.find(u'/', 1)), kExact,
       ""},  // begins with a separator: named in full
      {kAll, u"pkg/", kExact, ""},
      {kAll, u"/\xD800/fn.zt", kExact, ""},
  };
  for (const auto& [scope, name, policy, expected] : rows) {
    const auto all = path.FindAllInScope(scope, SearchTarget(name), policy);
    EXPECT_EQ(Shown(all, tree), expected) << testing::PrintToString(name);
    const auto first = path.FindFirstInScope(scope, SearchTarget(name), policy);
    EXPECT_TRUE(first ? *first == all.at(0) : all.empty()) << testing::PrintToString(name);
  }
}

TEST_F(FolderPathTest, AFolderInNoOtherIsMatchedByItsWholeNameAlone) {
  const FolderPath package({FolderEntry::Create(tree.IRI("one/+pkg"))});
  const auto found = [&](const ustring& name) {
    return Shown(package.GetPartiallyMatchingEntries(kAll, name, kExact), tree);
  };
  EXPECT_EQ(found(u"+pkg"), "one/+pkg");
  EXPECT_EQ(found(u"pkg"), "");
  EXPECT_EQ(found(u"pkg/cls"), "");
}

TEST_F(FolderPathTest, FoldersAreFoundByNameAndLocation) {
  const auto methods = [&](SearchScope scope, const ustring& name, FilenameMatchingPolicy policy) {
    return Shown(path.GetMethodEntriesByName(scope, name, policy), tree);
  };
  tree.Link("..", "one/+pkg/+up");  // is cut, which is known once every folder has been listed
  const std::string longName(70, 'm');
  tree.File("two/@" + longName + "/fn.zt");
  EXPECT_EQ(Shown(path.GetMethodEntries(), tree),
            "one/+pkg/@cls one/@cls two/@cls two/@" + longName);
  EXPECT_EQ(methods(kMain, u"cls", kExact), "one/@cls two/@cls");
  EXPECT_EQ(methods(kAll, u"CLS", kIgnore), "one/+pkg/@cls one/@cls two/@cls");
  EXPECT_EQ(methods(kMain, u"CLS", kExact), "");
  for (int question = 0; question < 9; ++question) {  // the ninth builds an index
    EXPECT_TRUE(path.FindFirstInScope(kMain, SearchTarget(u"fn.zt"), kExact));
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
  tree.Link("loop", "loop");
  const auto loop = FolderEntry::Create(tree.IRI("loop"));
  EXPECT_EQ(FolderPath({loop}).GetPathEntryFromAbsoluteIRI(tree.IRI("loop"), kExact), loop);
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
#ifndef NDEBUG
  EXPECT_DEATH((void)path.GetMainEntryForEntry(*stranger), "must be on the path");
#endif
}

TEST_F(FolderPathTest, AProgramThatAsksLittleListsNothing) {
  const FolderPath gone({FolderEntry::Create(tree.IRI("gone")), one, two});
  test::Listings listings(tree);
  const auto find = [&](const ustring& name, FilenameMatchingPolicy policy) {
    const auto found = gone.FindVisible(SearchTarget(name), policy);
    return found ? Shown(std::vector{*found}, tree) : "";
  };
  const auto problems = [&] {
    return gone.GetProblemsMet([](const auto&) { return true; }).size();
  };
  EXPECT_EQ(problems(), 0U);
  EXPECT_EQ(find(u"fn.zt", kExact), "one/fn.zt");
  EXPECT_EQ(problems(), 1U);
  for (int question = 1; question < 8; ++question) {
    EXPECT_EQ(find(u"Method.ZT", kExact), "two/Method.ZT");
  }
  EXPECT_FALSE(gone.ConcurrentForEachEntry(kMain, [](const auto&) { return false; }));
  EXPECT_EQ(listings.Take(), "");
  EXPECT_EQ(find(u"fn.zt", kExact), "one/fn.zt");
  EXPECT_EQ(listings.Take(), "gone one two");
  EXPECT_EQ(find(u"FN.zt", kIgnore), "one/fn.zt");
  FolderPath({FolderEntry::Create(tree.IRI("two"))}).MakeIndex(kExact);
  EXPECT_EQ(listings.Take(), "two");
}

TEST_F(FolderPathTest, ManyFoldersNeedFewDescriptors) {
  tree.File("many/39/last.zt");
  FolderEntries folders;
  for (int folder = 0; folder < 40; ++folder) {
    folders.push_back(FolderEntry::Create(tree.IRI("many/" + std::to_string(folder))));
    tree.Folder("many/" + std::to_string(folder));
  }
  const auto lowestFree = [] {
    const int lowest = dup(STDIN_FILENO);
    close(lowest);
    return lowest;
  };
  const int lowest = lowestFree();
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  for (const int left : {4, 30}) {  // fewer and more than are kept open at once
    const FolderPath many(folders);
    const rlimit few{static_cast<rlim_t>(lowest + left), limit.rlim_max};
    setrlimit(RLIMIT_NOFILE, &few);
    const auto found = many.FindVisible(SearchTarget(u"last.zt"), kExact);
    setrlimit(RLIMIT_NOFILE, &limit);
    ASSERT_TRUE(found) << left;
    EXPECT_EQ(Shown(std::vector{*found}, tree), "many/39/last.zt");
    EXPECT_EQ(many.GetProblemsMet([](const auto&) { return true; }).size(), 0U);
    EXPECT_EQ(lowestFree(), lowest) << "all are closed";
  }
}

/// The same entries as a path that derives from `PathBase`.
struct SamePath : PathBase {
  explicit SamePath(const IPath& path) : entries(path.GetMainEntries()) {}
  std::shared_ptr<const PathEntries> GetMainEntries() const override { return entries; }

  std::shared_ptr<const PathEntries> entries;
};

TEST_F(FolderPathTest, AMethodEntryIsFoundBeforeAFileBehindIt) {
  tree.Files({"one/@only.zt/other.zt", "one/@fn.zt/fn.zt", "zero/@method.zt/method.zt",
              "two/method.zt", "three/@method.zt/method.zt", "one/@cls/far.zt", "two/far.zt"});
  tree.Link("../one/@cls", "zero/@fn.zt");
  tree.Link("../one/@cls", "zero/@far.zt");
  const FolderPath wide(
      {FolderEntry::Create(tree.IRI("zero")), one, two, FolderEntry::Create(tree.IRI("three"))});
  const auto find = [&](const ustring& name, FilenameMatchingPolicy policy) {
    const auto shown = [&](const boost::optional<FoundItem>& found) {
      return found ? Shown(std::vector{*found}, tree) : "";
    };
    const auto answer = shown(FindFirstFileVisibleOnPath(wide, name, policy));
    EXPECT_EQ(answer, shown(wide.FindVisible(SearchTarget(name), policy)));
    EXPECT_EQ(answer, shown(FindFirstFileVisibleOnPath(wide, SearchTarget(name), policy)));
    EXPECT_EQ(answer,
              shown(FindFirstFileVisibleOnPath(SamePath(wide), SearchTarget(name), policy)));
    return answer;
  };
  for (int question = 0; question < 8; ++question) {  // the later ones with an index
    EXPECT_EQ(find(u"method.zt", kExact), "zero/@method.zt/method.zt");
    EXPECT_EQ(find(u"fn.zt", kExact), "one/fn.zt");
    EXPECT_EQ(find(u"only.zt", kExact), "two/only.zt");
    EXPECT_EQ(find(u"far.zt", kExact), "zero/@far.zt/far.zt");
    EXPECT_EQ(find(u"FN.zt", kExact), "");
    EXPECT_EQ(find(u"FN.zt", kIgnore), "one/fn.zt");
    EXPECT_EQ(find(u"two/only.zt", kExact), "two/only.zt");
  }
}

}  // namespace
}  // namespace Corvane::PathManagement::host
