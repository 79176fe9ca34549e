#include "support/shown.h"

#include <gtest/gtest.h>

#include <random>

namespace Corvane::PathManagement::host {
namespace {

using Folders = std::vector<std::shared_ptr<const FolderEntry>>;
using Texts = std::vector<ustring>;

bool Holds(const FolderEntry& folder, const ustring& name) {
  const auto items = folder.GetItems();
  return std::ranges::any_of(*items, [&](const auto& item) { return test::Shown(*item) == name; });
}

/// The file that a name means: in the first folder that has it.
ustring Meaning(const Folders& path, const ustring& name) {
  for (const auto& folder : path) {
    if (Holds(*folder, name)) return folder->GetAbsoluteIRI().getPath() + u'/' + name;
  }
  return u"none";
}

TEST(NameChangesTest, NamesWhoseFirstFolderIsAnotherOneAreReported) {
  constexpr std::uint64_t kSeed = 20261121;
  std::mt19937_64 random{kSeed};
  const Texts names = {u"a", u"b", u"c", u"d"};
  const test::TemporaryTree tree;
  Folders known;  // of some folders several versions
  for (int version = 0; version < 4; ++version) {
    for (const std::string folder : {"p", "q", "r", "s", "t"}) {
      std::filesystem::remove_all(tree.Path(folder));
      tree.Folder(folder);
      for (const ustring& name : names) {
        if (random() % 4 == 0) tree.File(folder + '/' + BytesFromText(name).value());
      }
      known.push_back(FolderEntry::Create(tree.IRI(folder)));
      static_cast<void>(known.back()->GetItems());
    }
  }
  for (int round = 0; round < 2000; ++round) {
    Folders before(random() % 6);
    for (auto& folder : before) folder = known[random() % known.size()];
    Folders after = before;
    for (auto& folder : after) folder = random() % 4 == 0 ? known[random() % known.size()] : folder;
    if (random() % 2 == 0) std::ranges::shuffle(after, random);
    if (random() % 4 == 0 && !after.empty()) after.pop_back();
    std::string expected;
    std::string reported;
    for (const ustring& name : names) {
      const ustring was = Meaning(before, name);
      const ustring is = Meaning(after, name);
      if (was != is) expected += BytesFromText(name + u' ' + was + u' ' + is + u'\n').value();
    }
    for (const auto& [name, was, is] : FindNameChanges(FolderPath(before), FolderPath(after))) {
      reported += BytesFromText(name + u' ' + (was ? test::Shown(*was) : u"none") + u' ' +
                                (is ? test::Shown(*is) : u"none") + u'\n')
                      .value();
    }
    ASSERT_EQ(reported, expected) << kSeed << ", round " << round;
  }
}

}  // namespace
}  // namespace Corvane::PathManagement::host
