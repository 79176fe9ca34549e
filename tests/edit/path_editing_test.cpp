#include "searchpath/utilities/path_editing.h"

#include "searchpath/utilities/path_messages.h"
#include "support/recording_manager.h"
#include "support/setting.h"
#include "support/temporary_tree.h"

#include <boost/iterator/iterator_facade.hpp>
#include <boost/range/adaptor/filtered.hpp>
#include <boost/range/iterator_range.hpp>
#include <gtest/gtest.h>

#include <list>
#include <random>

namespace Corvane::PathManagement {
namespace {

using namespace test;
using current_working_folder::AbsolutizeError;
using current_working_folder::FailedToAbsolutizeException;
using foundation::core::except::GetText;
using Texts = std::list<ustring>;

struct Case {
  bool isAdding;
  Position position;
  Texts given, path;
  enum Manager { Silent, Tells, TellsAndRefuses, Fails } manager;
};

/// Edits with lists and scans, and says which calls, messages and exceptions come of it.
std::string NaiveEdit(const Case& edit, const TemporaryTree& tree) {
  const std::string no, place = "invalidLocation", rights = "directoryPermissionDenied",
                        gone = "nameNonexistentOrNotADirectory", size = "directoryNameTooLong",
                        keys[] = {place, no, no, rights, gone, gone, gone, gone, no, size, no};
  std::string calls, messages, names;
  for (const ustring& folder : edit.given) {
    calls += " cwf.absolutize(" + Printed(folder) + ")";
    if (!folder.starts_with(u"fails")) continue;
    if (keys[folder.back()].empty()) return calls + " threw";
    messages += " ZENTRA:mpath/" + keys[folder.back()] + "(" + Printed(folder) + ")";
  }
  if (!messages.empty()) return calls + messages;
  calls += " manager.GetFolderIRIs()";
  Texts moved, result;
  for (const ustring& folder : edit.given) {
    const Texts forms = {folder, folder == u"link" ? u"a" : folder};
    const auto form = std::ranges::find_first_of(forms, edit.path);
    if (edit.isAdding) {
      if (!std::ranges::count(moved, folder)) moved.push_back(folder);
    } else if (form != forms.end()) {
      moved.push_back(*form);
    } else if (folder == u"loop") {  // has no canonical form
      return calls + " threw";
    } else {
      messages += " ZENTRA:rmpath/DirNotFound(" + tree.Path(Printed(folder)) + ")";
    }
  }
  std::ranges::copy_if(edit.path, std::back_inserter(result),
                       [&](const ustring& folder) { return !std::ranges::count(moved, folder); });
  const auto at = edit.position == Position::Begin ? result.begin() : result.end();
  if (edit.isAdding) result.splice(at, moved);
  for (const ustring& folder : result) names += (names.empty() ? "" : " ") + Printed(folder);
  calls += " manager.SetFolderIRIs(" + names + ")";
  if (edit.manager == Case::Fails) return calls + " threw";
  return calls + messages + (edit.manager == Case::Silent ? "" : " own/told(x)");
}

TEST(PathEditingTest, EditsAsTheObviousWayDoes) {
  const auto seed = std::random_device()();
  std::mt19937 random(seed);
  const TemporaryTree tree;
  tree.Folder("a");
  tree.Link("a", "link");
  tree.Link("loop", "loop");
  CallLog log;
  FakeWorkingFolder cwf(&log);
  FakeManager manager(&log);
  cwf.above = tree.Text() + u"/";
  std::vector<ustring> all = {u"a", u"b", u"link", u"gone", u"loop"};
  for (char16_t code = 0; code < 11; ++code) all.push_back(ustring(u"fails") + code);
  const auto some = [&](std::size_t most, std::size_t kinds) {
    Texts texts(random() % (most + 1));
    for (ustring& text : texts) text = all[random() % (random() % 4 == 0 ? kinds : 3)];
    return texts;
  };
  for (std::size_t round = 0; round < RandomCases(100'000); ++round) {
    const auto at = static_cast<Position>(random() % 3);  // all but 0 is the end
    const auto behaviour = static_cast<Case::Manager>(random() % 4);
    const Case edit = {random() % 2 == 0, at, some(4, all.size()), some(6, 5), behaviour};
    IRIList folders;
    for (const ustring& folder : edit.path) folders.push_back(tree.IRI(Printed(folder)));
    manager.folders = std::make_shared<const IRIList>(folders);
    manager.duringChange = [behaviour](Notification& notification) {
      if (behaviour == Case::Fails) throw std::runtime_error("");
      if (behaviour != Case::Silent) notification.Append({u"own", u"told", {u"x"}});
      if (behaviour == Case::TellsAndRefuses) throw RecursivePathChangeException();
    };
    std::string outcome;
    try {
      const auto done = edit.isAdding ? AddFoldersToZentraPath(edit.given, cwf, manager, at)
                                      : RemoveFoldersFromZentraPath(edit.given, cwf, manager);
      for (const auto& [catalogue, key, arguments] : done.GetMessages()) {
        const ustring& folder = std::get<ustring>(arguments.at(0));
        outcome += " " + Printed(catalogue + u"/" + key + u"(" + folder + u")");
      }
    } catch (const std::exception&) {
      outcome = " threw";
    }
    ASSERT_EQ(log.Take("") + outcome, NaiveEdit(edit, tree)) << "seed " << seed;
  }
}

TEST(PathEditingTest, ConvertsAnElementBeforeItsIteratorGoesOn) {
  struct HoldsItsElement
      : boost::iterator_facade<HoldsItsElement, const ustring, boost::forward_traversal_tag> {
    explicit HoldsItsElement(char16_t unit = 0) : text(1, unit) {}
    void increment() { ++text[0]; }
    bool equal(const HoldsItsElement& other) const { return text == other.text; }
    const ustring& dereference() const { return text; }
    ustring text;
  };
  Notification none;
  const auto texts = boost::make_iterator_range(HoldsItsElement(u'a'), HoldsItsElement(u'd'));
  const auto iris = ConvertUstringRangeToAbsoluteIRIs(texts, FakeWorkingFolder(), none);
  EXPECT_EQ(FolderNames(iris), u"a b c");
}

TEST(PathEditingTest, LetsOutWhatIsNoProblemOfAFolderAsItWasThrown) {
  struct DetailedException : FailedToAbsolutizeException {
    DetailedException() : FailedToAbsolutizeException(AbsolutizeError::InputOutput) {}
  };
  const Texts texts = {u"a"};
  CallLog log;
  const FakeWorkingFolder cwf(&log);
  FakeManager manager(&log);
  log.onCall = [](const std::string& call) {
    if (call.starts_with("cwf")) throw DetailedException();
    throw RecursivePathChangeException();  // not by the change itself
  };
  EXPECT_THROW((void)AddFoldersToZentraPath(texts, cwf, manager, Position::End), DetailedException);
  const auto add = [&] { return AddIRIsToZentraPath(IRIList(), manager, Position::End); };
  EXPECT_THROW((void)add(), RecursivePathChangeException);
  const auto remove = [&] { return RemoveIRIsFromZentraPath(IRIList(), manager); };
  EXPECT_THROW((void)remove(), RecursivePathChangeException);
}

TEST(PathEditingTest, EveryMessageHasAnEnglishText) {
  using M = PathMessages;
  for (const ustring key :
       {M::InvalidLocation, M::PermissionDenied, M::NoSuchFolder, M::NameTooLong}) {
    EXPECT_FALSE(GetText({M::FolderCatalogue, key, {u"a"}}).starts_with(M::FolderCatalogue));
  }
  const auto removal = GetText({M::RemovalCatalogue, M::NotOnPath, {u"a"}});
  EXPECT_FALSE(removal.starts_with(M::RemovalCatalogue));
}

TEST(PathEditingTest, WalksAHundredThousandFoldersOnceAndInNoTime) {
  std::vector<ustring> texts;
  for (int folder = 0; folder < 200'000; ++folder) {
    texts.push_back(TextFromBytes(std::to_string(folder)));
  }
  // Lets each element through only once, so that a second walk would meet nothing.
  const auto onlyOnce = [](const auto& all) {
    return boost::adaptors::filter(all, [next = std::make_shared<decltype(&all[0])>(&all[0])](
                                            const auto& each) { return &each == (*next)++; });
  };
  FakeManager manager;
  Notification none;
  const auto iris = ConvertUstringRangeToAbsoluteIRIs(onlyOnce(texts), FakeWorkingFolder(), none);
  EXPECT_EQ(iris.capacity(), 200'000U);
  manager.folders = std::make_shared<const IRIList>(iris.begin(), iris.begin() + 100'000);
  EXPECT_TRUE(AddIRIsToZentraPath(onlyOnce(iris), manager, Position::End).empty());
  EXPECT_TRUE(*manager.folders == iris);
  EXPECT_TRUE(RemoveIRIsFromZentraPath(onlyOnce(iris), manager).empty());
  EXPECT_TRUE(manager.folders->empty());
}

}  // namespace
}  // namespace Corvane::PathManagement
