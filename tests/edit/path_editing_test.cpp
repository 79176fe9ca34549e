#include "searchpath/utilities/path_editing.h"

#include "support/recording_manager.h"
#include "support/temporary_tree.h"

#include <boost/range/adaptor/filtered.hpp>
#include <gtest/gtest.h>

#include <list>
#include <random>

namespace Corvane::PathManagement {
namespace {

using namespace test;
using current_working_folder::FailedToAbsolutizeException;
using foundation::core::except::MessageRecord;
using Texts = std::list<ustring>;

constexpr auto kEnd = Position{7};  // all but 0 is the end

struct Case {
  bool isAdding, isTyped;
  Position position;
  Texts given, path;
  enum Manager { Silent, Tells, TellsAndRefuses, Fails } manager;
};

std::string Shown(const MessageRecord& message) {
  return " " + Printed(message.catalogue + u"/" + message.key + u"(" +
                       std::get<ustring>(message.arguments.at(0)) + u")");
}

/// Edits with lists and scans, and says which calls, messages and exceptions come of it.
std::string NaiveEdit(const Case& edit, const std::map<ustring, std::uint32_t>& failures,
                      const TemporaryTree& tree) {
  const std::string keys[] = {"invalidLocation",
                              "",
                              "",
                              "directoryPermissionDenied",
                              "nameNonexistentOrNotADirectory",
                              "nameNonexistentOrNotADirectory",
                              "nameNonexistentOrNotADirectory",
                              "nameNonexistentOrNotADirectory",
                              "",
                              "directoryNameTooLong",
                              "",
                              ""};
  std::string calls, messages;
  for (const ustring& folder : edit.isTyped ? edit.given : Texts()) {
    calls += " cwf.absolutize(" + Printed(folder) + ")";
    if (!failures.contains(folder)) continue;
    const std::uint32_t code = failures.at(folder);
    if (keys[code].empty()) return calls + " threw " + std::to_string(code);
    messages += " ZENTRA:mpath/" + keys[code] + "(" + Printed(folder) + ")";
  }
  if (!messages.empty()) return calls + messages;
  Texts moved, result;
  for (const ustring& folder : edit.given) {
    const Texts forms = {folder, folder == u"link" ? u"a" : folder};
    const auto form = std::ranges::find_first_of(forms, edit.path);
    if (edit.isAdding) {
      if (!std::ranges::count(moved, folder)) moved.push_back(folder);
    } else if (form != forms.end()) {
      moved.push_back(*form);
    } else {
      messages += " ZENTRA:rmpath/DirNotFound(" + tree.Path(Printed(folder)) + ")";
    }
  }
  std::ranges::copy_if(edit.path, std::back_inserter(result),
                       [&](const ustring& folder) { return !std::ranges::count(moved, folder); });
  if (edit.isAdding) {
    result.splice(edit.position == Position::Begin ? result.begin() : result.end(), moved);
  }
  std::string shown;
  for (const ustring& folder : result) shown += (shown.empty() ? "" : " ") + Printed(folder);
  calls += " manager.GetFolderIRIs() manager.SetFolderIRIs(" + shown + ")";
  if (edit.manager == Case::Fails) return calls + " threw no disk";
  return calls + messages + (edit.manager == Case::Silent ? "" : " own/told(x)");
}

Notification Edit(const Case& edit, const TemporaryTree& tree, const FakeWorkingFolder& cwf,
                  FakeManager& manager) {
  if (edit.isTyped) {
    return edit.isAdding ? AddFoldersToZentraPath(edit.given, cwf, manager, edit.position)
                         : RemoveFoldersFromZentraPath(edit.given, cwf, manager);
  }
  std::list<AbsoluteIRI> iris;
  for (const ustring& folder : edit.given) iris.push_back(tree.IRI(Printed(folder)));
  return edit.isAdding ? AddIRIsToZentraPath(iris, manager, edit.position)
                       : RemoveIRIsFromZentraPath(iris, manager);
}

TEST(PathEditingTest, EditsAsTheObviousWayDoes) {
  const auto seed = std::random_device()();
  std::mt19937 random(seed);
  const TemporaryTree tree;
  tree.Folder("a");
  tree.Link("a", "link");
  CallLog log;
  FakeWorkingFolder cwf(&log);
  FakeManager manager(&log);
  cwf.above = tree.Text() + u"/";
  std::vector<ustring> all = {u"a", u"b", u"link", u"gone"};
  for (std::uint32_t code = 0; code < 12; ++code) {
    cwf.failures[all.emplace_back(TextFromBytes("fails" + std::to_string(code)))] = code;
  }
  const auto some = [&](std::size_t most, std::size_t kinds) {
    Texts texts(random() % (most + 1));
    for (ustring& text : texts) text = all[random() % (random() % 4 == 0 ? kinds : 3)];
    return texts;
  };
  for (int round = 0; round < 100'000; ++round) {
    const Case edit = {.isAdding = random() % 2 == 0,
                       .isTyped = random() % 2 == 0,
                       .position = random() % 2 == 0 ? Position::Begin : kEnd,
                       .given = some(4, all.size()),
                       .path = some(6, 4),
                       .manager = static_cast<Case::Manager>(random() % 4)};
    IRIList folders;
    for (const ustring& folder : edit.path) folders.push_back(tree.IRI(Printed(folder)));
    manager.folders = std::make_shared<const IRIList>(folders);
    manager.duringChange = [&](Notification& notification) {
      if (edit.manager == Case::Fails) throw std::runtime_error("no disk");
      if (edit.manager != Case::Silent) notification.Append({u"own", u"told", {u"x"}});
      if (edit.manager == Case::TellsAndRefuses) throw RecursivePathChangeException();
    };
    std::string outcome;
    try {
      const Notification notification = Edit(edit, tree, cwf, manager);
      for (const MessageRecord& message : notification.GetMessages()) outcome += Shown(message);
    } catch (const FailedToAbsolutizeException& error) {
      outcome = " threw " + std::to_string(error.GetErrorCode());
    } catch (const std::runtime_error& error) {
      outcome = std::string(" threw ") + error.what();
    }
    ASSERT_EQ(log.Take("") + outcome, NaiveEdit(edit, cwf.failures, tree)) << "seed " << seed;
  }
}

TEST(PathEditingTest, WalksWhatItIsGivenOnce) {
  // Lets each element through only once, so that a second walk meets nothing.
  const auto onlyOnce = [](auto& elements) {
    using Element = std::decay_t<decltype(elements.front())>;
    auto seen = std::make_shared<std::set<Element>>();
    const auto isNew = [seen](const Element& each) { return seen->insert(each).second; };
    return elements | boost::adaptors::filtered(isNew);
  };
  const std::vector<ustring> texts = {u"a", u"b", u"c"};
  const IRIList iris = {AbsoluteIRI(u"file:///a"), AbsoluteIRI(u"file:///b")};
  FakeManager manager;
  Notification notification;
  const IRIList converted =
      ConvertUstringRangeToAbsoluteIRIs(onlyOnce(texts), FakeWorkingFolder(), notification);
  EXPECT_EQ(Names(converted), u"a b c");
  EXPECT_EQ(converted.capacity(), 3U);
  EXPECT_TRUE(AddIRIsToZentraPath(onlyOnce(iris), manager, Position::End).empty());
  EXPECT_EQ(Names(*manager.folders), u"a b");
  EXPECT_TRUE(RemoveIRIsFromZentraPath(onlyOnce(iris), manager).empty());
  EXPECT_EQ(Names(*manager.folders), u"");
}

TEST(PathEditingTest, AsksTheDiskOnlyForFoldersThatAreNotOnThePath) {
  const TemporaryTree tree;
  tree.Link("loop", "loop");
  const IRIList loop = {tree.IRI("loop")};
  FakeManager manager;
  manager.folders = std::make_shared<const IRIList>(loop);
  EXPECT_TRUE(RemoveIRIsFromZentraPath(loop, manager).empty());
  EXPECT_THROW((void)RemoveIRIsFromZentraPath(loop, manager), foundation::storage::vfs::Exception);
}

TEST(PathEditingTest, ComparesCanonicalFoldersByTheirIRIsAlone) {
  FakeManager manager;
  const std::vector<CanonicalAbsoluteIRI> folders = {{AbsoluteIRI(u"file:///a"), u"1"},
                                                     {AbsoluteIRI(u"file:///a"), u"2"}};
  EXPECT_TRUE(AddIRIsToZentraPath(folders, manager, Position::End).empty());
  EXPECT_EQ(Names(*manager.folders), u"a");
}

TEST(PathEditingTest, AHundredThousandFoldersAreNoMatterOfMinutes) {
  IRIList iris;
  for (int folder = 0; folder < 200'000; ++folder) {
    iris.emplace_back(u"file:///" + TextFromBytes(std::to_string(folder)));
  }
  FakeManager manager;
  manager.folders = std::make_shared<const IRIList>(iris.begin(), iris.begin() + 100'000);
  EXPECT_TRUE(AddIRIsToZentraPath(iris, manager, Position::End).empty());
  EXPECT_TRUE(*manager.folders == iris);
  EXPECT_TRUE(RemoveIRIsFromZentraPath(iris, manager).empty());
  EXPECT_TRUE(manager.folders->empty());
}

}  // namespace
}  // namespace Corvane::PathManagement
