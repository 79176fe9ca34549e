// After each random change of a small tree, a receipt has to report exactly the names that mean another
// file when everything is found anew.

#include "searchpath/host/receipt.h"
#include "support/setting.h"
#include "support/temporary_tree.h"

#include <gtest/gtest.h>

#include <chrono>
#include <random>
#include <thread>

namespace Corvane::PathManagement::test {
namespace {

using Random = std::mt19937_64;

/// The folder, without links, and the name of the file that a name means; empty for none.
using Meaning = ustring;

template <class Values>
const auto& Any(const Values& values, Random& random) {
  return values[random() % std::size(values)];
}

/// Folders, files and links of few names, so that they hide each other often.
class ChangingTree {
 public:
  explicit ChangingTree(Random& source) : random(source) {
    for (int times = 0; times < 60; ++times) static_cast<void>(MakeChange());
  }

  [[nodiscard]] const TemporaryTree& Get() const { return tree; }

  /// Makes a random change and says which. Many are not possible, such as a folder in a file.
  std::string MakeChange() {
    const std::string folder = AnyFolder();
    const std::string other = AnyFolder();
    const std::string file = folder + '/' + Any(kFiles, random);
    const std::size_t which = random() % std::size(kChanges);
    const Change& change = kChanges[which];
    std::error_code ignored;
    (this->*change.make)(At(change.isOfFile ? file : folder), At(other), ignored);
    if (random() % 4 != 0) Age();
    return change.name + (change.isOfFile ? file : folder) + ' ' + other;
  }

 private:
  using Path = std::filesystem::path;
  using Error = std::error_code;
  struct Change {
    const char* name;
    bool isOfFile;
    void (ChangingTree::*make)(const Path& at, const Path& other, Error& error);
  };

  void Write(const Path& at, const Path& /*other*/, Error& error) {
    std::filesystem::create_directories(at.parent_path(), error);
    std::ofstream(at) << "#";
    Allow(at, at, error);
  }
  void Allow(const Path& at, const Path& /*other*/, Error& error) {
    static constexpr unsigned modes[] = {0755, 0755, 0644, 0600};
    std::filesystem::permissions(at, static_cast<std::filesystem::perms>(Any(modes, random)),
                                 error);
  }
  void Remove(const Path& at, const Path& /*other*/, Error& error) {
    std::filesystem::remove_all(at, error);
  }
  void Make(const Path& at, const Path& /*other*/, Error& error) {
    std::filesystem::create_directories(at, error);
  }
  void Link(const Path& at, const Path& other, Error& error) {
    std::filesystem::remove(at, error);
    std::filesystem::create_symlink(random() % 2 == 0 ? other : other / at.filename(), at, error);
  }
  void Move(const Path& at, const Path& other, Error& error) {
    std::filesystem::rename(at, random() % 2 == 0 ? other : other / at.filename(), error);
  }
  /// Leaves a link to where it has gone, or takes it back.
  void MoveAway(const Path& at, const Path& /*other*/, Error& error) {
    const Path away = at.string() + " away";
    if (std::filesystem::is_symlink(at, error) && std::filesystem::exists(away, error)) {
      std::filesystem::remove(at, error);
      std::filesystem::rename(away, at, error);
      return;
    }
    std::filesystem::rename(at, away, error);
    if (!error) std::filesystem::create_symlink(away, at, error);
  }
  /// Of the folder above.
  void MoveAboveAway(const Path& at, const Path& other, Error& error) {
    MoveAway(at.parent_path() == tree.Path() ? at : at.parent_path(), other, error);
  }

  static constexpr const char* kTops[] = {"one", "two", "three", "four/lib"};
  static constexpr const char* kFolders[] = {"",    "",         "/sub",  "/sub/deep",
                                             "/@a", "/private", "/+pkg", "/@a.zt"};
  static constexpr const char* kFiles[] = {"a", "a.zt", "b.zt", "a.c", "sub", "+pkg"};
  static constexpr Change kChanges[] = {{"write ", true, &ChangingTree::Write},
                                        {"write ", true, &ChangingTree::Write},
                                        {"remove ", true, &ChangingTree::Remove},
                                        {"remove ", true, &ChangingTree::Remove},
                                        {"remove ", false, &ChangingTree::Remove},
                                        {"make ", false, &ChangingTree::Make},
                                        {"link ", true, &ChangingTree::Link},
                                        {"link ", true, &ChangingTree::Link},
                                        {"link ", false, &ChangingTree::Link},
                                        {"allow ", true, &ChangingTree::Allow},
                                        {"allow ", true, &ChangingTree::Allow},
                                        {"move ", true, &ChangingTree::Move},
                                        {"move ", false, &ChangingTree::Move},
                                        {"move away ", false, &ChangingTree::MoveAway},
                                        {"move above away ", false, &ChangingTree::MoveAboveAway}};

  std::string AnyFolder() { return std::string(Any(kTops, random)) + Any(kFolders, random); }
  Path At(const std::string& name) const { return tree.Path(name); }

  /// Sets back the times of folders that have just changed, to another time each, as if this had been
  /// long ago.
  void Age() {
    namespace fs = std::filesystem;
    Error ignored;
    const auto recent = fs::file_time_type::clock::now() - std::chrono::hours(1);
    for (const auto& entry : fs::recursive_directory_iterator(tree.Path(), ignored)) {
      if (entry.is_symlink(ignored) || !entry.is_directory(ignored)) continue;
      if (fs::last_write_time(entry, ignored) < recent) continue;
      fs::last_write_time(entry, recent - std::chrono::hours(1000) + std::chrono::seconds(++aged));
    }
    std::this_thread::sleep_for(
        std::chrono::milliseconds(5));  // the kernel's clock for files mostly moves by less
  }

  Random& random;
  TemporaryTree tree;
  int aged = 0;
};

std::vector<Meaning> MeaningsOf(const host::EnvironmentOptions& options,
                                const std::vector<host::Lookup>& lookups) {
  const host::Environment environment(options);
  std::vector<Meaning> meanings;
  for (const auto& lookup : lookups) {
    Meaning& meaning = meanings.emplace_back();
    try {
      if (const auto found = environment.Find(lookup)) {
        meaning = found->GetPathEntry()->GetCanonicalAbsoluteIRI().toString() + u' ' +
                  found->GetPathItem()->GetName() + found->GetPathItem()->GetExtension();
      }
    } catch (const current_working_folder::FailedToAbsolutizeException&) {
      // The folder that asks is gone.
    }
  }
  return meanings;
}

struct Case {
  const char* name;
  host::LookupRules rules;
  bool recursive;
};

void PrintTo(const Case& tested, std::ostream* stream) { *stream << tested.name; }

class ReceiptModel : public testing::TestWithParam<Case> {
 protected:
  host::EnvironmentOptions Options() {
    const auto& tree = changing.Get();
    host::EnvironmentOptions options{.folders = {}, .rules = GetParam().rules};
    for (const char* folder : {"one", "three", "two", "one", "four/lib", "two/sub"}) {
      if (random() % 5 != 0) options.folders.push_back(tree.Text(folder));
    }
    if (options.folders.empty()) options.folders.push_back(tree.Text("one"));
    if (GetParam().recursive) options.expansion = host::FolderExpansion::Recursive;
    options.keepDuplicates = random() % 4 == 0;
    if (random() % 4 == 0) options.without.push_back(tree.Text("two/sub"));
    if (!GetParam().rules.foldersHaveMeaning && random() % 2 == 0) {
      options.quoteFolders.push_back(tree.Text("three/sub"));
    }
    options.workingFolder = tree.IRI("two");
    return options;
  }

  host::Lookup AnyLookup() {
    static constexpr const char16_t* names[] = {
        u"a",        u"a.zt",      u"b.zt",         u"sub",   u"sub/a.zt", u"sub/deep/b.zt",
        u"deep/a",   u"+pkg/a.zt", u"private/a.zt", u"lib/a", u"./a.zt",   u"sub/../b.zt",
        u"pkg/b.zt", u"missing"};
    const auto& tree = changing.Get();
    host::Lookup lookup{.name = Any(names, random)};
    if (random() % 12 == 0) lookup.name = tree.Text("two/sub/a.zt");
    if (random() % 3 == 0) lookup.extensions = {u".zt", u".c"};
    static constexpr const char* askers[] = {"one", "two", "two/sub", "three/+pkg"};
    const auto asker = tree.Text(Any(askers, random));
    const bool hasMeaning = GetParam().rules.foldersHaveMeaning;
    if (!hasMeaning && random() % 6 == 0) lookup.extensions = {u"/a.zt", u".zt", u"/deep/b.zt"};
    if (random() % 4 == 0) lookup.fromFolder = asker;
    if (!hasMeaning && random() % 6 == 0) lookup.afterFolder = asker;
    if (hasMeaning && random() % 60 == 0) lookup.policy = FilenameMatchingPolicy::IgnoreCase;
    return lookup;
  }

  /// Questions that can be asked now: by folders that exist.
  std::vector<host::Lookup> Questions(const host::EnvironmentOptions& options) {
    const host::Environment environment(options);
    std::vector<host::Lookup> lookups;
    for (std::size_t wanted = random() % 4 == 0 ? 3 : 16; lookups.size() < wanted;) {
      const auto lookup = AnyLookup();
      try {
        static_cast<void>(environment.Find(lookup));
        lookups.push_back(lookup);
      } catch (const current_working_folder::FailedToAbsolutizeException&) {
        --wanted;
      }
    }
    return lookups;
  }

  Random::result_type seed = Setting("SEARCHPATH_SEED", std::random_device()());
  Random random{seed};
  ChangingTree changing{random};
};

TEST_P(ReceiptModel, ReportsExactlyTheNamesThatMeanAnotherFile) {
  const std::size_t changes = Setting("SEARCHPATH_RECEIPT_CHANGES", RandomCases(40));
  std::size_t fresh = 0;
  std::size_t changed = 0;
  host::EnvironmentOptions options = Options();
  auto lookups = Questions(options);
  auto before = MeaningsOf(options, lookups);
  auto receipt = host::Environment(options).FindWithReceipt(lookups);
  std::string log;
  for (std::size_t change = 0; change < changes; ++change) {
    log += changing.MakeChange() + '\n';
    const auto now = MeaningsOf(options, lookups);
    std::vector<ustring> expected;
    for (std::size_t at = 0; at < lookups.size(); ++at) {
      if (now[at] != before[at]) expected.push_back(lookups[at].name);
    }
    const bool isFresh = receipt.IsFresh();
    std::vector<ustring> reported;
    for (const auto& each : receipt.Verify(host::Environment(receipt.GetOptions()))) {
      reported.push_back(each.name);
    }
    ASSERT_EQ(reported, expected) << "seed " << seed << ", after\n" << log;
    ASSERT_TRUE(!isFresh || expected.empty()) << "seed " << seed << ", after\n" << log;
    fresh += isFresh;
    changed += !expected.empty();
    if (random() % 4 != 0) continue;
    log.clear();
    if (random() % 2 == 0) {
      receipt = receipt.Renew(host::Environment(receipt.GetOptions()));
      before = now;
      continue;
    }
    options = Options();
    lookups = Questions(options);
    before = MeaningsOf(options, lookups);
    receipt = host::Environment(options).FindWithReceipt(lookups);
  }
  if (changes < 1000) return;  // what follows is a matter of chance
  EXPECT_GT(fresh, changes / 200) << "seed " << seed;
  EXPECT_GT(changed, changes / 100) << "seed " << seed;
}

INSTANTIATE_TEST_SUITE_P(AllRules, ReceiptModel,
                         testing::Values(Case{"environment", host::kEnvironmentRules, false},
                                         Case{"recursive", host::kEnvironmentRules, true},
                                         Case{"plain", host::kPlainRules, false},
                                         Case{"program", host::kProgramRules, false},
                                         Case{"include", host::kIncludeRules, false}),
                         testing::PrintToStringParamName());

}  // namespace
}  // namespace Corvane::PathManagement::test
