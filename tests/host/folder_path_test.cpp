#include "searchpath/host/folder_path.h"

#include "support/temporary_tree.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <filesystem>

namespace Corvane::PathManagement::host {
namespace {

using PathManagement::detail::SearchTarget;
using test::TemporaryTree;

constexpr auto kExact = FilenameMatchingPolicy::CaseSensitive;
constexpr auto kIgnore = FilenameMatchingPolicy::IgnoreCase;
constexpr std::array<std::uint32_t, 6> kKinds = {0, 1, 2, 3, 4, 5};
const SearchScope kMain(kKinds.data(), 1);
const SearchScope kAll(kKinds.data(), 5);
const SearchScope kAllAndResources(kKinds.data(), 6);

/// Two folders on a path, "one" and "two", with special folders of every kind below them.
class FolderPathTest : public testing::Test {
 protected:
  FolderPathTest() {
    for (const char* name :
         {"one/fn.x", "one/private/secret.x", "one/private/fn.x", "one/resources/data.x",
          "one/+pkg/fn.x", "one/+pkg/@cls/fn.x", "one/+pkg/+sub/deep.x", "one/@cls/method.x",
          "two/fn.x", "two/Method.X", "two/@cls/method.x", "two/+pkg/fn.x", "two/only.x"}) {
      tree.File(name);
    }
    path = Make({"one", "two"});
  }

  [[nodiscard]] std::shared_ptr<const FolderPath> Make(
      const std::vector<std::string>& names) const {
    std::vector<std::shared_ptr<const FolderEntry>> folders;
    for (const auto& name : names) folders.push_back(FolderEntry::Create(tree.IRI(name)));
    return std::make_shared<const FolderPath>(std::move(folders));
  }

  [[nodiscard]] std::string Show(const IPathEntry& entry) const {
    return BytesFromText(entry.GetAbsoluteIRI().makePathRelativeTo(tree.IRI())).value();
  }
  [[nodiscard]] std::string Show(const FoundItem& found) const {
    const auto item = found.GetPathItem();
    return Show(*found.GetPathEntry()) + "/" +
           BytesFromText(item->GetName() + item->GetExtension()).value();
  }
  template <class Range>
  [[nodiscard]] std::vector<std::string> ShowAll(const Range& range) const {
    std::vector<std::string> shown;
    for (const auto& element : range) {
      if constexpr (std::is_same_v<std::decay_t<decltype(element)>, FoundItem>) {
        shown.push_back(Show(element));
      } else {
        shown.push_back(Show(*element));
      }
    }
    return shown;
  }
  [[nodiscard]] static std::vector<std::shared_ptr<const IPathEntry>> Visit(const IPath& visited,
                                                                            SearchScope scope) {
    std::vector<std::shared_ptr<const IPathEntry>> entries;
    visited.ForEachEntry(scope, [&entries](const auto& entry) {
      entries.push_back(entry);
      return false;
    });
    return entries;
  }

  TemporaryTree tree;
  std::shared_ptr<const FolderPath> path;
};

TEST_F(FolderPathTest, TraversalsGoDepthFirstThroughTheScope) {
  const std::vector<std::string> all = {
      "one",           "one/private", "one/resources", "one/+pkg", "one/+pkg/+sub",
      "one/+pkg/@cls", "one/@cls",    "two",           "two/+pkg", "two/@cls"};
  EXPECT_EQ(ShowAll(Visit(*path, kAllAndResources)), all);
  EXPECT_EQ(ShowAll(Visit(*path, kMain)), (std::vector<std::string>{"one", "two"}));
  EXPECT_EQ(ShowAll(Visit(*path, {nullptr, 0})), std::vector<std::string>());
  std::atomic<std::size_t> visits = 0;
  EXPECT_FALSE(path->ConcurrentForEachEntry(kAllAndResources, [&visits](const auto&) {
    ++visits;
    return false;
  }));
  EXPECT_EQ(visits, all.size());
  EXPECT_TRUE(path->ConcurrentForEachEntry(kMain, [](const auto&) { return true; }));
  EXPECT_THROW(path->ConcurrentForEachEntry(kMain, PathEntryVisitor()), std::bad_function_call);
  const auto& one = *path->GetMainEntries()->front();
  EXPECT_EQ(Show(*one.GetSingleSubfolderEntryA()), "one/private");
  EXPECT_EQ(Show(*one.GetSingleSubfolderEntryB()), "one/resources");
  EXPECT_EQ(ShowAll(*one.GetSubfolderEntriesA()), std::vector<std::string>{"one/+pkg"});
  EXPECT_EQ(ShowAll(*one.GetSubfolderEntriesB()), std::vector<std::string>{"one/@cls"});
}

struct Question {
  SearchScope scope;
  const char16_t* name;
  FilenameMatchingPolicy policy;
  std::vector<std::string> expected;
};

TEST_F(FolderPathTest, NamesAndPartialPathnamesFindFilesInPathOrder) {
  const ustring full = tree.Text("one/private/fn.x");
  const ustring tail = full.substr(full.find(u'/', 1));
  const std::vector<Question> rows = {
      {kMain, u"fn.x", kExact, {"one/fn.x", "two/fn.x"}},
      {kAll,
       u"fn.x",
       kExact,
       {"one/fn.x", "one/private/fn.x", "one/+pkg/fn.x", "one/+pkg/@cls/fn.x", "two/fn.x",
        "two/+pkg/fn.x"}},
      {kMain, u"method.x", kIgnore, {"two/Method.X"}},
      {kMain, u"data.x", kExact, {}},
      {kAll, u"data.x", kExact, {}},
      {kAllAndResources, u"data.x", kExact, {"one/resources/data.x"}},
      {kAll, u"pkg/fn.x", kExact, {"one/+pkg/fn.x", "two/+pkg/fn.x"}},
      {kAll, u"one/pkg/fn.x", kExact, {"one/+pkg/fn.x"}},
      {kAll, u"pkg/cls/fn.x", kExact, {"one/+pkg/@cls/fn.x"}},
      {kAll, u"cls/method.x", kExact, {"one/@cls/method.x", "two/@cls/method.x"}},
      {kAll, u"CLS/method.x", kIgnore, {"one/@cls/method.x", "two/@cls/method.x"}},
      {kAll, u"sub/deep.x", kExact, {}},  // begins inside a package
      {kAll, u"private/secret.x", kExact, {"one/private/secret.x"}},
      {kAll, full.c_str(), kExact, {"one/private/fn.x"}},
      {kAll, tail.c_str(), kExact, {}},  // begins with a separator: named in full
      {kAll, u"pkg/", kExact, {}},
      {kAll, u"/\xD800/fn.x", kExact, {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(BytesFromText(row.name).value_or("(no text)"));
    const SearchTarget target(row.name);
    const auto all = path->FindAllInScope(row.scope, target, row.policy);
    EXPECT_EQ(ShowAll(all), row.expected);
    const auto first = path->FindFirstInScope(row.scope, target, row.policy);
    ASSERT_EQ(first.has_value(), !row.expected.empty());
    if (first) {
      EXPECT_TRUE(*first == all.front());
    }
  }
}

TEST_F(FolderPathTest, FoldersAreFoundByNameAndLocation) {
  EXPECT_EQ(ShowAll(path->GetMethodEntries()),
            (std::vector<std::string>{"one/+pkg/@cls", "one/@cls", "two/@cls"}));
  EXPECT_EQ(ShowAll(path->GetMethodEntriesByName(kMain, u"cls", kExact)),
            (std::vector<std::string>{"one/@cls", "two/@cls"}));
  EXPECT_EQ(ShowAll(path->GetMethodEntriesByName(kAll, u"CLS", kIgnore)),
            (std::vector<std::string>{"one/+pkg/@cls", "one/@cls", "two/@cls"}));
  EXPECT_TRUE(path->GetMethodEntriesByName(kMain, u"CLS", kExact).empty());
  EXPECT_EQ(ShowAll(path->GetPartiallyMatchingEntries(kAll, u"pkg/cls", kExact)),
            std::vector<std::string>{"one/+pkg/@cls"});
  EXPECT_EQ(ShowAll(path->GetPartiallyMatchingEntries(kMain, u"TWO", kIgnore)),
            std::vector<std::string>{"two"});

  tree.Link("one/+pkg", "link");
  const auto linked = path->GetPathEntryFromAbsoluteIRI(tree.IRI("link"), kExact);
  ASSERT_NE(linked, nullptr);
  EXPECT_EQ(Show(*linked), "one/+pkg");
  EXPECT_EQ(path->GetPathEntryFromAbsoluteIRI(linked->GetCanonicalAbsoluteIRI()), linked);
  EXPECT_EQ(path->GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(tree.IRI("one"), u"other")),
            nullptr);
  EXPECT_EQ(path->GetPathEntryFromAbsoluteIRI(tree.IRI("ONE"), kExact), nullptr);
  EXPECT_EQ(Show(*path->GetPathEntryFromAbsoluteIRI(tree.IRI("ONE"), kIgnore)), "one");
  EXPECT_EQ(path->GetPathEntryFromAbsoluteIRI(AbsoluteIRI(u"http://host/one"), kExact), nullptr);
}

TEST_F(FolderPathTest, EntriesKnowTheirPlace) {
  const auto entries = Visit(*path, kAllAndResources);
  const auto other = Make({"two", "one"});
  for (std::size_t first = 0; first < entries.size(); ++first) {
    EXPECT_TRUE(path->IsEntryOnPath(*entries[first]));
    EXPECT_TRUE(other->IsEntryOnPath(*entries[first])) << "the same folder is on that path";
    for (std::size_t second = 0; second < entries.size(); ++second) {
      EXPECT_EQ(path->FirstEntryIsBeforeSecondOnPath(*entries[first], *entries[second]),
                first < second);
    }
  }
  EXPECT_EQ(Show(*path->GetMainEntryForEntry(*entries[5])), "one");
  EXPECT_EQ(path->GetParentEntryForEntry(*entries[5]), entries[3]);
  EXPECT_EQ(path->GetMainEntryForEntry(*entries[7]), entries[7]);
  EXPECT_EQ(path->GetParentEntryForEntry(*entries[7]), nullptr);
  const auto stranger = FolderEntry::Create(tree.IRI());
  EXPECT_FALSE(path->IsEntryOnPath(*stranger));
  EXPECT_TRUE(path->FirstEntryIsBeforeSecondOnPath(*entries[9], *stranger));
  EXPECT_FALSE(path->FirstEntryIsBeforeSecondOnPath(*stranger, *entries[0]));
}

TEST_F(FolderPathTest, FoldersBehindTheAnswerAreNotListed) {
  ASSERT_TRUE(path->FindFirstInScope(kMain, SearchTarget(u"fn.x"), kExact));
  tree.File("two/late.x");
  EXPECT_TRUE(path->FindFirstInScope(kMain, SearchTarget(u"late.x"), kExact));
  tree.File("two/later.x");
  EXPECT_FALSE(path->FindFirstInScope(kMain, SearchTarget(u"later.x"), kExact));
}

TEST_F(FolderPathTest, DeeplyNestedFoldersNeedNoDeepStack) {
  constexpr int depth = 400;
  std::string name = "deep";
  for (int level = 0; level < depth; ++level) name += "/+p";
  tree.File(name + "/fn.x");
  std::size_t count = 0;
  {
    const FolderPath deep({FolderEntry::Create(tree.IRI("deep"))});
    deep.ForEachEntry(kAll, [&count](const auto&) { return ++count, false; });
  }
  EXPECT_EQ(count, depth + 1U);
}

}  // namespace
}  // namespace Corvane::PathManagement::host
