#include "searchpath/host/folder_path.h"
#include "searchpath/host/folder_tree.h"
#include "searchpath/model/search_scope.h"
#include "searchpath/utilities/iri_conversion.h"
#include "support/refused_calls.h"
#include "support/shown.h"

#include <gtest/gtest.h>

#include <dirent.h>
#include <sys/fsuid.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <dlfcn.h>
#include <optional>

namespace {
bool givesNoTypes = false;
}  // namespace

// Stands in front of the one that the library would call.
extern "C" [[gnu::visibility("default")]] dirent* readdir(DIR* directory) {
  static auto* const real = reinterpret_cast<decltype(&readdir)>(dlsym(RTLD_NEXT, "readdir"));
  dirent* const item = real(directory);
  if (item != nullptr && givesNoTypes) item->d_type = DT_UNKNOWN;
  return item;
}

namespace Corvane::PathManagement::host {
namespace {

using current_working_folder::AbsolutizeError;
using PathManagement::detail::SearchTarget;
using test::Shown;
using enum FilenameMatchingPolicy;

struct FolderEntryTest : testing::Test {
  [[nodiscard]] std::string Items() const { return Shown(*lib->GetItems(), tree); }

  test::TemporaryTree tree;
  std::shared_ptr<const FolderEntry> lib = FolderEntry::Create(tree.IRI("lib"));
};

TEST_F(FolderEntryTest, EveryNameOnDiskIsFoundByItsOwnText) {
  const std::string folder = "lib\xFF%41";
  const std::vector<std::string> names = {"a b",  "a\"b'", "a\nb",        "100%", "%2F",
                                          "\xFF", "\xC3",  "\xC3\xA9",    "#?",   "[x]",
                                          "...",  "~",     "\xED\xA0\x80"};
  for (const auto& name : names) tree.File(folder + "/" + name);
  const auto entry = FolderEntry::Create(tree.IRI(folder));
  for (const auto& name : names) {
    EXPECT_EQ(Shown(entry->FindItems(SearchTarget(TextFromBytes(name)), CaseSensitive), tree),
              name);
  }
  EXPECT_EQ(entry->GetItems()->size(), names.size());
}

TEST_F(FolderEntryTest, AFolderIsListedAtItsFirstQuestionAndNeverAgain) {
  tree.File("lib/early");
  tree.Link("/dev/null", "lib/no-file");
  EXPECT_EQ(Items(), "early");
  tree.File("lib/late");
  EXPECT_EQ(Items(), "early");
  std::filesystem::remove_all(tree.Path("lib"));
  EXPECT_EQ(lib->GetItems()->at(0), lib->GetItems()->at(0)) << "one file, one object";
}

TEST_F(FolderEntryTest, WhatWasAnsweredStaysWhenTheFolderIsListed) {
  tree.Files({"lib/kept", "lib/once", "lib/@folder/x"});
  const FolderPath path({lib});
  const auto find = [&](const char16_t* name) {
    return lib->FindItem(SearchTarget(name), CaseSensitive);
  };
  const auto methods = [&](const ustring& name) {
    return path.GetMethodEntriesByName(kMainScope, name, CaseSensitive).size();
  };
  const auto kept = find(u"kept");
  EXPECT_EQ(find(u"late"), nullptr);
  EXPECT_EQ(find(u"@folder"), nullptr);
  EXPECT_EQ(find(u"no/file"), nullptr);
  EXPECT_EQ(methods(u"late"), 0U);
  std::filesystem::remove(tree.Path("lib/kept"));
  std::filesystem::remove(tree.Path("lib/once"));
  tree.Files({"lib/late", "lib/@late/x", "lib/other"});
  EXPECT_EQ(Items(), "kept other");
  EXPECT_EQ(lib->GetItems()->at(0), kept);
  EXPECT_EQ(find(u"kept"), kept);
  EXPECT_EQ(find(u"late"), nullptr);
  EXPECT_EQ(methods(u"late"), 0U);
  EXPECT_EQ(methods(u"folder"), 1U);
}

struct Match {
  SearchTarget target;
  FilenameMatchingPolicy policy;
  std::string expected;
};

TEST_F(FolderEntryTest, FilesMatchByPolicyAndOrderOfExtensions) {
  const std::string street =
      "stra\xC3\x9F"
      "e";
  tree.Files(
      {"lib/fn", "lib/fn.zt", "lib/FN.ZT", "lib/Fn.zt", "lib/.rc", "lib/k", "lib/" + street});
  const std::vector<Match> rows = {
      {SearchTarget(u"FN.zt"), FileSystemDefault, ""},
      {{u"Fn", {u".ZT"}}, FileSystemDefault, ""},
      {{u"Fn", {u".zt", u".ZT"}}, IgnoreCase, "Fn.zt FN.ZT fn.zt"},
      {SearchTarget(u"STRASSE"), IgnoreCase, street},
      {SearchTarget(u"\u212A"), IgnoreCase, "k"},  // the Kelvin sign folds to k
      {{u"", {u".rc"}}, CaseSensitive, ".rc"},
      {SearchTarget(u"\xD800"), CaseSensitive, ""},
      {SearchTarget(u"\xD800"), IgnoreCase, ""},
  };
  for (const auto& [target, policy, expected] : rows) {
    const auto all = lib->FindItems(target, policy);
    EXPECT_EQ(Shown(all, tree), expected) << testing::PrintToString(target.GetName());
    EXPECT_EQ(lib->FindItem(target, policy), all.empty() ? nullptr : all.front());
  }
}

TEST_F(FolderEntryTest, LinksThatLeadBackUpAreCut) {
  tree.File("lib/+a/fn.zt");
  tree.Link(".", "lib/+self");
  tree.Link("../..", "lib/+a/+top");    // above lib: entered, and back to lib is cut
  tree.Link("../other", "lib/@other");  // elsewhere: followed
  tree.Link("../lib", "other/+back");   // from elsewhere back: cut
  std::vector<std::shared_ptr<const IPathEntry>> visited;
  lib->ForEachEntryInScope(kAllKindsScope,
                           [&](const auto& below) { return visited.push_back(below), false; });
  EXPECT_EQ(Shown(visited, tree), "lib lib/+a lib/+a/+top lib/@other");
  const auto problems = lib->GetProblems();
  ASSERT_EQ(problems.size(), 1U);
  EXPECT_EQ(problems[0].folder, tree.Text("lib/+self"));
  EXPECT_EQ(problems[0].reason, AbsolutizeError::LinkLoop);
}

TEST_F(FolderEntryTest, ALoopOfSeveralLinksIsCutWhereItCloses) {
  for (const char* name : {"lib", "b", "c"}) tree.Folder(name);
  tree.Link("../b", "lib/+b");
  tree.Link("../c", "b/+c");
  tree.Link("../lib", "c/+lib");
  tree.Link("../c", "lib/@c");
  std::vector<std::shared_ptr<const IPathEntry>> visited;
  lib->ForEachEntryInScope(kAllKindsScope,
                           [&](const auto& below) { return visited.push_back(below), false; });
  EXPECT_EQ(Shown(visited, tree), "lib lib/+b lib/+b/+c lib/@c");
  EXPECT_EQ(visited.back()->GetCanonicalAbsoluteIRI().getPath(), tree.Text("c"));
}

TEST_F(FolderEntryTest, AFolderThatCannotBeReadToItsEndHasAProblem) {
  tree.File("lib/fn");
  const auto refuse = test::Refusing(SYS_getdents64, 2, ~0U, EIO);
  const auto isRight = [this] {
    return lib->GetProblems().empty() && lib->GetItems()->empty() &&
           lib->GetProblems().at(0).reason == AbsolutizeError::InputOutput;
  };
  EXPECT_EXIT((refuse(), _exit(isRight() ? 0 : 1)), testing::ExitedWithCode(0), "");
}

TEST_F(FolderEntryTest, WhereTheFileSystemGivesNoTypesTheyAreAskedFor) {
  tree.Files({"lib/fn", "lib/+p/fn", "lib/sub/fn"});
  givesNoTypes = true;
  EXPECT_EQ(Items(), "fn");
  givesNoTypes = false;
  EXPECT_EQ(Shown(CreateFolderTree(lib), tree), "lib lib/sub");
  EXPECT_EQ(Shown(lib->GetSpecialFolders(), tree), "lib/+p");
}

TEST_F(FolderEntryTest, AProblemThatComesOrGoesMakesANewVersion) {
  FolderEntries path = {lib};
  EXPECT_EQ(lib->GetItemCount(), 0U);
  for (const bool isThere : {true, false}) {
    EXPECT_EQ(RefreshFolders(path), path);
    isThere ? tree.Folder("lib") : void(std::filesystem::remove(tree.Path("lib")));
    const FolderEntries before = std::exchange(path, RefreshFolders(path));
    EXPECT_NE(path, before) << (isThere ? "came" : "went");
    EXPECT_EQ(path[0]->GetItemCount(), 0U);
  }
}

TEST_F(FolderEntryTest, AFileIsTheSameWhicheverWayItsFolderWasReached) {
  tree.Files({"lib/f", "other/f"});
  tree.Link("lib", "link");
  const FolderPath path({lib});
  const auto changesTo = [&](const std::string& folder) {
    return FindNameChanges(path, FolderPath({FolderEntry::Create(tree.IRI(folder))})).size();
  };
  EXPECT_EQ(changesTo("link"), 0U);
  EXPECT_EQ(changesTo("other"), 1U);
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

TEST_F(FolderEntryTest, AFolderThatMayBeReadButNotSearchedIsListed) {
  tree.File("lib/fn");
  std::filesystem::permissions(tree.Path(), std::filesystem::perms(0755));
  std::filesystem::permissions(tree.Path("lib"), std::filesystem::perms(0444));
  {
    const Unprivileged user;
    EXPECT_NE(lib->FindItem(SearchTarget(u"fn"), CaseSensitive), nullptr);
  }
  std::filesystem::permissions(tree.Path("lib"), std::filesystem::perms(0755));
}

TEST_F(FolderEntryTest, FoldersThatCannotBeReadAreEmptyAndSayWhy) {
  tree.Files({"file", "secret/fn"});
  tree.Link("nowhere", "broken");
  tree.Link("loop", "loop");
  std::filesystem::permissions(tree.Path("secret"), std::filesystem::perms::owner_exec);
  const std::vector<std::pair<AbsoluteIRI, AbsolutizeError>> rows = {
      {tree.IRI("absent"), AbsolutizeError::Absent},
      {tree.IRI("file"), AbsolutizeError::NotAFolder},
      {tree.IRI("broken"), AbsolutizeError::BrokenLink},
      {tree.IRI("loop"), AbsolutizeError::LinkLoop},
      {tree.IRI(std::string(300, 'n')), AbsolutizeError::NameTooLong},
      {tree.IRI("secret"), AbsolutizeError::PermissionDenied},
      {AbsoluteIRI(u"http://host/lib"), AbsolutizeError::InvalidText},
  };
  for (const auto& [location, reason] : rows) {
    SCOPED_TRACE(testing::PrintToString(location.toString()));
    const auto entry = FolderEntry::Create(location);
    std::optional<Unprivileged> user;
    if (reason == AbsolutizeError::PermissionDenied) user.emplace();
    for (const char* when : {"before it is listed", "after"}) {
      const auto problems = entry->GetProblems();
      ASSERT_EQ(problems.size(), 1U) << when;
      EXPECT_EQ(problems[0].reason, reason) << when;
      EXPECT_EQ(problems[0].folder, GetStringFromIRI(location)) << when;
      EXPECT_TRUE(entry->GetItems()->empty());
    }
    if (reason == AbsolutizeError::LinkLoop) {  // cannot be resolved
      EXPECT_EQ(entry->GetCanonicalAbsoluteIRI(), CanonicalAbsoluteIRI(location, u""));
    }
  }
}

TEST_F(FolderEntryTest, ATreeHasEachOrdinaryFolderOnceDepthFirst) {
  for (const char* name :
       {"in/b/z", "in/b/a/deep", "in/+pkg/plain", "in/.git", "in/c", "out/sub"}) {
    tree.Folder(name);
  }
  tree.Link("..", "in/b/a/up");
  tree.Link("../c", "in/b/a/c-link");  // reached without it
  tree.Link("c", "in/d");              // likewise, beside it
  tree.Link("../../out", "in/b/first");
  tree.Link("../../out/sub", "in/b/second");  // reached through the first
  EXPECT_EQ(Shown(CreateFolderTree(tree.IRI("in")), tree),
            "in in/.git in/b in/b/a in/b/a/deep in/b/first in/b/first/sub in/b/z in/c");
}

}  // namespace
}  // namespace Corvane::PathManagement::host
