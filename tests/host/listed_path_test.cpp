#include "searchpath/utilities/file_lookup.h"
#include "searchpath/utilities/path_base.h"
#include "searchpath/utilities/path_entry_base.h"
#include "support/listed_tree.h"
#include "support/setting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <mutex>

// A listing answers as the same folders on disk do, and so does a path of one's own that says no more
// than where its folders are and what they hold: every operation, on random trees.

namespace Corvane::PathManagement {
namespace {

using detail::SearchTarget;
using test::ListedTree;

/// An entry by somebody who overrides as little as can be.
class OwnEntry : public PathEntryBase {
 public:
  OwnEntry(const ListedFolder& folder, bool isOnPath)
      : location(folder.location), isMain(isOnPath) {
    std::vector<ustring> names = folder.files;
    std::ranges::sort(names, {}, [](const auto& name) { return BytesFromText(name); });
    for (const ustring& name : names) {
      const std::size_t dot = std::min(name.rfind(u'.'), name.size());
      const std::size_t split = dot == 0 ? name.size() : dot;
      items.push_back(
          std::make_shared<const PathItem>(location, name.substr(0, split), name.substr(split)));
    }
    for (const auto& below : folder.folders) {
      if (below.location.getName() == u"plain") continue;
      folders.push_back(std::make_shared<const OwnEntry>(below, false));
    }
    std::ranges::sort(folders, {}, [](const auto& entry) {
      return BytesFromText(entry->GetAbsoluteIRI().getName());
    });
  }
  PathEntryType GetPathEntryType() const override {
    return isMain ? PathEntryType::Ordinary : PathEntryBase::GetPathEntryType();
  }
  AbsoluteIRI GetAbsoluteIRI() const override { return location; }
  std::shared_ptr<const PathItems> GetItems() const override {
    return std::make_shared<const PathItems>(items);
  }

 private:
  PathEntries GetFoldersBelow() const override { return folders; }

  AbsoluteIRI location;
  bool isMain;
  PathItems items;
  PathEntries folders;
};

struct OwnPath : PathBase {
  explicit OwnPath(const std::vector<ListedFolder>& folders) {
    PathEntries entries;
    for (const auto& folder : folders) entries.push_back(std::make_shared<OwnEntry>(folder, true));
    mainEntries = std::make_shared<const PathEntries>(std::move(entries));
  }
  std::shared_ptr<const PathEntries> GetMainEntries() const override { return mainEntries; }

  std::shared_ptr<const PathEntries> mainEntries;
};

struct Question {
  std::vector<std::uint32_t> kinds;
  SearchTarget target{u""};
  AbsoluteIRI location{u"file:///"};
  FilenameMatchingPolicy policy = FilenameMatchingPolicy::CaseSensitive;

  [[nodiscard]] SearchScope Scope() const { return {kinds.data(), kinds.size()}; }
};

Question AnyQuestion(ListedTree& tree) {
  Question question;
  for (std::uint32_t kind = 0; kind < 6; ++kind) {
    if (tree.Below(2) == 0) question.kinds.push_back(kind);
  }
  if (tree.Below(2) == 0) question.kinds = {0};
  const std::vector<ustring> names = {u"f", u"f", u"f.zt", u"F.zt", u"g", u"", u"\u00C9", u"f.k"};
  const std::vector<ustring> above = {u"f/",
                                      u"+f/",
                                      u"g/f/",
                                      u"private/",
                                      u"@c/f/",
                                      u"a/",
                                      u"F/",
                                      u"//",
                                      tree.tree.Text("a/+f/"),
                                      tree.tree.Text("@c/")};
  std::vector<ustring> extensions;
  while (tree.Below(2) == 0) {
    extensions.push_back(tree.AnyOf(std::vector<ustring>{u".zt", u".ZT", u".y", u".\u00E9", u""}));
  }
  const ustring folder = tree.Below(2) == 0 ? u"" : tree.AnyOf(above);
  question.target = SearchTarget(folder + tree.AnyOf(names), extensions);
  question.location = tree.tree.IRI(
      tree.AnyOf(std::vector<std::string>{"a", "A", "@c/private", "b/+f", "B/+F", "none"}));
  question.policy = static_cast<FilenameMatchingPolicy>(tree.Below(3));
  return question;
}

std::string At(const IPathEntry& entry) {
  return BytesFromText(entry.GetAbsoluteIRI().getPath()).value();
}
std::string At(const PathItem& item) {
  return BytesFromText(item.GetLocation().getPath() + u'|' + item.GetName() + u'|' +
                       item.GetExtension())
      .value();
}
std::string At(const FoundItem& found) {
  return At(*found.GetPathItem()) + " in " + At(*found.GetPathEntry());
}
std::string At(bool isTrue) { return isTrue ? "yes" : "no"; }
template <class Thing>
std::string At(const std::shared_ptr<Thing>& thing) {
  return thing == nullptr ? "none" : At(*thing);
}
template <class Thing>
std::string At(const boost::optional<Thing>& thing) {
  return thing ? At(*thing) : "none";
}
template <class Thing>
std::string At(const std::vector<Thing>& list) {
  std::string all;
  for (const auto& thing : list) all += " " + At(thing);
  return all;
}

/// Which entries `visit` visits, and whether it stops; sorted, since some may come in any order.
template <class Visit>
std::string Visited(const Visit& visit) {
  std::vector<std::string> visited;
  std::mutex mutex;  // guards visited
  const auto note = [&](const auto& entry) {
    const std::lock_guard lock(mutex);
    visited.push_back(At(*entry));
    return false;
  };
  std::string all = At(visit(PathEntryVisitor(note)));
  std::ranges::sort(visited);
  for (const auto& entry : visited) all += " " + entry;
  const auto stop = [](const auto& entry) { return !entry->GetItems()->empty(); };
  return all + At(visit(PathEntryVisitor(stop)));
}

/// What an entry answers, an operation a line.
std::string AskEntry(const IPathEntry& entry, const Question& q) {
  std::vector<std::string> said = {
      At(*entry.GetItems()),
      At(PathItem(entry.GetCanonicalAbsoluteIRI(), u"", u"")),
      At(entry.GetSingleSubfolderEntryA()),
      At(entry.GetSingleSubfolderEntryB()),
      At(*entry.GetSubfolderEntriesA()),
      At(*entry.GetSubfolderEntriesB()),
      At(*entry.GetSubfolderEntriesC()),
      Visited([&](const auto& visitor) { return entry.ForEachEntryInScope(q.Scope(), visitor); }),
      Visited([&](const auto& visitor) {
        return entry.ConcurrentForEachEntryInScope(q.Scope(), visitor);
      }),
      At((*entry.GetFilenameComparator(q.policy))(u"\u00C9", u"\u00E9"))};
  if (q.target.GetName().find(u'/') == ustring::npos) {
    said.push_back(At(entry.FindItem(q.target, q.policy)));
    said.push_back(At(entry.FindItems(q.target, q.policy)));
  }
  std::string all = std::to_string(static_cast<int>(entry.GetPathEntryType()));
  for (const auto& line : said) all += "\n" + line;
  return all;
}

/// What a path and all of its entries answer.
std::string Ask(const IPath& path, const Question& q) {
  PathEntries entries;
  path.ForEachEntry(kAllKindsAndResourcesScope,
                    [&](const auto& entry) { return entries.push_back(entry), false; });
  const auto& [kinds, target, location, policy] = q;
  std::vector<std::string> said = {
      At(entries),
      At(*path.GetMainEntries()),
      At(path.GetMethodEntries()),
      At(path.GetMethodEntriesByName(q.Scope(), target.GetName(), policy)),
      At(path.GetPartiallyMatchingEntries(q.Scope(), target.GetName(), policy)),
      At(path.GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(location, u""))),
      At(path.GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(location, u"x"))),
      At(path.GetPathEntryFromAbsoluteIRI(location, policy)),
      At(path.FindFirstInScope(q.Scope(), target, policy)),
      At(path.FindAllInScope(q.Scope(), target, policy)),
      Visited([&](const auto& visitor) { return path.ForEachEntry(q.Scope(), visitor); }),
      Visited([&](const auto& visitor) { return path.ConcurrentForEachEntry(q.Scope(), visitor); }),
      At(FindFirstFileVisibleOnPath(path, target, policy)),
      At(FindFirstFileVisibleFromFolder(path, location, target, policy))};
  const auto other = host::FolderEntry::Create(location);
  for (const auto& entry : entries) {
    said.push_back(At(path.GetMainEntryForEntry(*entry)) + " " +
                   At(path.GetParentEntryForEntry(*entry)) + " " +
                   At(path.FirstEntryIsBeforeSecondOnPath(*entry, *other)) + " " +
                   At(path.FirstEntryIsBeforeSecondOnPath(*other, *entry)) + " " +
                   At(path.IsEntryOnPath(*other)));
    said.push_back(AskEntry(*entry, q));
  }
  std::string all;
  for (const auto& line : said) all += line + "\n";
  return all;
}

TEST(ListedPathTest, AnswersAsTheSameFoldersOnDiskDo) {
  const std::size_t trees = test::Setting("SEARCHPATH_LISTED_TREES", test::RandomCases(12));
  for (std::size_t seed = 0; seed < trees; ++seed) {
    ListedTree tree(seed);
    const auto listed = CreateListedPath(tree.folders);
    const OwnPath own(tree.folders);
    const host::FolderPath onDisk(tree.onDisk);
    for (int number = 0; number < 10; ++number) {
      const Question question = AnyQuestion(tree);
      const std::string expected = Ask(onDisk, question);
      const auto asked = testing::PrintToString(question.target.GetName());
      ASSERT_EQ(Ask(*listed, question), expected) << "tree " << seed << ", " << asked;
      ASSERT_EQ(Ask(own, question), expected) << "tree " << seed << ", " << asked;
    }
  }
}

TEST(ListedPathTest, AFileThatIsListedTwiceIsOneFile) {
  const ListedFolder folder{AbsoluteIRI(u"archive://lib.zt/a"), {u"f.zt", u"g.zt", u"f.zt"}, {}};
  const auto path = CreateListedPath({folder});
  EXPECT_EQ(path->FindAllInScope(kMainScope, SearchTarget(u"f.zt"), {}).size(), 1U);
  EXPECT_EQ(path->GetMainEntries()->front()->GetItems()->size(), 2U);
}

TEST(PathBaseTest, AMainEntryIsNoMethodEntryOfItself) {
  struct MethodsOnly : OwnPath {
    MethodsOnly() : OwnPath({}) {
      const ListedFolder folder{AbsoluteIRI(u"archive://lib.zt/@f")};
      mainEntries =
          std::make_shared<const PathEntries>(1, std::make_shared<OwnEntry>(folder, false));
    }
  };
  EXPECT_TRUE(MethodsOnly().GetMethodEntriesByName(kAllKindsScope, u"f", {}).empty());
  EXPECT_EQ(MethodsOnly().GetMethodEntries().size(), 1U);
}

TEST(PathBaseTest, TheFurtherTextChoosesAmongEntriesOfOneFolder) {
  struct TextEntry : OwnEntry {
    explicit TextEntry(ustring further)
        : OwnEntry({AbsoluteIRI(u"archive://lib.zt/a")}, true), text(std::move(further)) {}
    CanonicalAbsoluteIRI GetCanonicalAbsoluteIRI() const override {
      return {GetAbsoluteIRI(), text};
    }
    ustring text;
  };
  OwnPath path({});
  path.mainEntries = std::make_shared<const PathEntries>(
      PathEntries{std::make_shared<TextEntry>(u"x"), std::make_shared<TextEntry>(u"y")});
  for (const auto& entry : *path.mainEntries) {
    EXPECT_EQ(path.GetPathEntryFromAbsoluteIRI(entry->GetCanonicalAbsoluteIRI()), entry);
  }
}

}  // namespace
}  // namespace Corvane::PathManagement
