#include "saved_listing_generated.h"
#include "searchpath/utilities/toolbox_path_cache.h"
#include "support/counted_memory.h"
#include "support/listings.h"
#include "support/shown.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#define XXH_INLINE_ALL
#include <xxhash.h>

#include <chrono>
#include <cstring>
#include <functional>
#include <map>
#include <random>
#include <sstream>
#include <tuple>

namespace Corvane::PathManagement::host {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using test::FoldersIn;
using test::Shown;
using test::TemporaryTree;
using Names = std::vector<std::string>;

/// The path as if nothing had been done to it for an hour, or since `time` after that.
void Age(const std::string& path, std::chrono::nanoseconds time = 1ns) {
  static const auto now =
      std::chrono::floor<std::chrono::seconds>(fs::file_time_type::clock::now());
  fs::last_write_time(path, now - 1h + time);
}

Names FoldersBelow(const std::string& root) {
  Names folders = {root};
  for (const auto& item : fs::recursive_directory_iterator(root)) {
    if (!item.is_symlink() && item.is_directory()) folders.push_back(item.path());
  }
  std::ranges::sort(folders);
  return folders;
}

void AgeAll(const std::string& root) {
  for (const auto& folder : FoldersBelow(root)) Age(folder);
}

std::string Written(const FolderEntries& folders, const AbsoluteIRI& root) {
  std::ostringstream stream;
  PathEntryFactory(folders).WriteEntries(stream, root);
  return stream.str();
}

/// A stream that cannot be sought; where it stands and how long it is may be asked on demand.
struct Pipe : std::stringbuf {
  using std::stringbuf::stringbuf;
  pos_type seekoff(off_type by, std::ios_base::seekdir from, std::ios_base::openmode) override {
    return isMeasured ? std::stringbuf::seekoff(by, from, std::ios_base::in) : pos_type(-1);
  }
  pos_type seekpos(pos_type, std::ios_base::openmode) override { return {off_type(-1)}; }
  bool isMeasured = false;
};

/// The file that holds `body`.
std::string Enveloped(const std::string& body) {
  const std::uint64_t numbers[] = {body.size(), XXH3_64bits(body.data(), body.size())};
  return "searchpath listing 1\n" +
         std::string(reinterpret_cast<const char*>(numbers), sizeof(numbers)) + body;
}

/// A file like `bytes`, but with `to` in place of `from` in its body.
std::string Edited(const std::string& bytes, const std::string& from, const std::string& to) {
  std::string body = bytes.substr(21 + 8 + 8);  // the first line, the length, the checksum
  return Enveloped(body.replace(body.find(from), from.size(), to));
}

PathEntryFactory Read(const std::string& bytes, const AbsoluteIRI& root, ListingUse use = {}) {
  Pipe pipe(bytes);
  std::istream stream(&pipe);
  PathEntryFactory factory(use);
  factory.ReadEntries(stream, root);
  return factory;
}

/// All that a path can answer from: its entries, what they are, what they hold, and what is wrong.
std::string Dump(const FolderEntries& folders) {
  std::string all;
  FolderPath(folders).ForEachEntry(kAllKindsAndResourcesScope, [&](const auto& entry) {
    const auto& folder = dynamic_cast<const FolderEntry&>(*entry);
    const auto items = folder.GetItems();
    ustring line = folder.GetCanonicalAbsoluteIRI().toString();
    for (const auto& item : *items) line += u" " + Shown(*item);
    for (const auto& below : folder.CreateOrdinaryFolders()) line += u" >" + Shown(below);
    for (const auto& problem : folder.GetProblems()) {
      line += u" !" + problem.folder + TextFromBytes(problem.GetText());
    }
    all += BytesFromText(Shown(entry) + u" is " + line).value() + '\n';
    return false;
  });
  return all;
}

TEST(PathEntryFactoryTest, WhatEarlierAnswersChangedInAListingIsListedAgain) {
  TemporaryTree tree;
  tree.Files({"lib/b.zt", "target.zt"});
  const FolderPath path({FolderEntry::Create(tree.IRI("lib"))});
  for (const char16_t* const name : {u"x.zt", u"linked.zt"}) {
    EXPECT_FALSE(path.FindVisible(PathManagement::detail::SearchTarget(name),
                                  FilenameMatchingPolicy::CaseSensitive));
  }
  tree.File("lib/x.zt");
  tree.Link("../target.zt", "lib/linked.zt");
  Age(tree.Path("lib"));
  const auto saved = Read(Written(path.GetMainFolders(), tree.IRI()), tree.IRI());
  EXPECT_EQ(saved.GetFolders().at(0)->GetItemCount(), 3U);
  const auto asSaved =
      Read(Written(path.GetMainFolders(), tree.IRI()), tree.IRI(), ListingUse::AsSaved);
  EXPECT_EQ(asSaved.GetFolders().at(0)->GetItems()->at(0)->GetName(), u"b");
}

/// Adds, removes or renames something, anywhere.
void Change(const TemporaryTree& tree, std::mt19937_64& random) {
  const auto anyOf = [&](const Names& names) { return names[random() % names.size()]; };
  const std::string folder = anyOf(FoldersBelow(tree.Path()));
  const std::string other = anyOf(FoldersBelow(tree.Path()));
  const std::string item =
      folder + "/" +
      anyOf({"f.zt", "F.zt", "bad\xFF", "+p", "@c", "private", "resources", "sub", "link"});
  std::error_code ignored;
  const auto what = random() % 8;
  if (what == 0) fs::remove_all(item, ignored);
  if (what == 1) fs::rename(item, other + "/moved", ignored);
  if (what == 2 || what == 3) fs::create_directory(item, ignored);
  if (what == 4) fs::create_symlink(other, item, ignored);
  if (what == 5) fs::create_symlink(other + "/f.zt", item, ignored);
  if (what > 5) std::ofstream(item).close();
}

TEST(PathEntryFactoryTest, ACacheAnswersAsAScanDoesWhateverHasChanged) {
  const Names names = {"a", "b", "b/sub", "gone", "a"};
  std::size_t fresh = 0;
  for (std::uint64_t seed = 0; seed < 50; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    const TemporaryTree tree;
    tree.Folder("a");
    tree.Folder("b/sub");
    for (int item = 0; item < 30; ++item) Change(tree, random);
    const bool isAged = seed % 3 != 0;
    if (isAged) AgeAll(tree.Path());
    const std::string bytes = Written(FoldersIn(tree, names), tree.IRI());
    ASSERT_EQ(Dump(Read(bytes, tree.IRI()).GetFolders()), Dump(FoldersIn(tree, names)));
    // What is young may have grown old enough for a stamp since.
    if (isAged) {
      ASSERT_EQ(Written(Read(bytes, tree.IRI()).GetFolders(), tree.IRI()), bytes);
    }
    for (std::uint64_t change = 0; change < seed % 5; ++change) Change(tree, random);
    const auto cache = Read(bytes, tree.IRI());
    for (const auto& folder : cache.CreateSavedFolders()) {
      fresh += folder->GetFreshness() == Freshness::Fresh ? 1U : 0U;
    }
    ASSERT_EQ(Dump(cache.GetFolders()), Dump(FoldersIn(tree, names)));
  }
  EXPECT_GT(fresh, 100U);  // or nothing has come from a cache
}

TEST(PathEntryFactoryTest, AMovedTreeKeepsItsCacheAndIsNotReadAgain) {
  const TemporaryTree tree;
  tree.Files({"old/lib/cached", "old/lib/+p/g", "elsewhere/h"});
  AgeAll(tree.Path());
  const std::string outside = "old/lib/../../elsewhere";  // only seems to stand below the root
  const auto scanned = FoldersIn(tree, {"old/lib", "elsewhere", "old", outside});
  // Names that are on no disk show where they come from.
  const auto bytes = Edited(Written(scanned, tree.IRI("old")), "cached", "invent");
  fs::copy(tree.Path("old"), tree.Path("copy"), fs::copy_options::recursive);
  fs::rename(tree.Path("old"), tree.Path("moved"));
  AgeAll(tree.Path("copy"));
  const std::pair<std::string, std::string> rows[] = {{"copy", "cached"}, {"moved", "invent"}};
  for (const auto& [root, file] : rows) {
    const auto cache = Read(bytes, tree.IRI(root));
    EXPECT_EQ(Shown(cache.GetFolders(), tree), root + "/lib elsewhere " + root + " " + outside);
    for (const std::string& name : {file, std::string("+p/g")}) {
      const auto found = Environment(cache).FindAll({.name = TextFromBytes(name)});
      EXPECT_EQ(Shown(found, tree), root + "/lib/" + name);
    }
  }
}

TEST(PathEntryFactoryTest, QuoteFoldersAndThoseBelowComeFromACache) {
  const TemporaryTree tree;
  tree.Files({"quoted/f", "quoted/sub/f", "own/g", "own/sub/g"});
  AgeAll(tree.Path());
  const auto bytes = Written(FoldersIn(tree, {"quoted", "quoted/sub"}), tree.IRI());
  const Environment environment({.caches = {Read(bytes, tree.IRI())},
                                 .rules = kIncludeRules,
                                 .quoteFolders = {tree.Text("quoted")}});
  test::Listings listings(tree);
  for (const char16_t* name : {u"*", u"sub/*"}) {
    const Lookup lookup{.name = name, .extensions = {}, .fromFolder = tree.Text("own")};
    EXPECT_EQ(environment.FindMatching(lookup).size(), 2U);
  }
  EXPECT_EQ(listings.Take(), "own own/sub");
}

TEST(PathEntryFactoryTest, AFolderThatHasChangedIsReadWhateverLaterCachesHave) {
  const TemporaryTree tree;
  tree.File("d/old");
  AgeAll(tree.Path());
  const auto bytes = Written(FoldersIn(tree, {"d"}), tree.IRI());
  tree.File("d/new");
  const Environment environment(
      {.folders = {tree.Text("d")},
       .caches = {Read(bytes, tree.IRI()), Read(bytes, tree.IRI(), ListingUse::AsSaved)}});
  EXPECT_TRUE(environment.Find({.name = u"new"}));
}

TEST(PathEntryFactoryTest, FreshnessSaysWhatBecameOfAFolder) {
  constexpr auto kNow = std::chrono::nanoseconds(1h);
  using Doing = std::function<void(const std::string&)>;
  const auto nothing = [](const auto&) {};
  const auto replace = [](const auto& path) {
    fs::rename(path, path + ".old");
    fs::create_directory(path);
  };
  const auto addFile = [](const auto& path) { std::ofstream(path + "/new").close(); };
  const auto keepTime = [](const auto& change) {
    return [=](const auto& path) { change(path), Age(path); };
  };
  // What is done, the time of the last change before (and after), what that is.
  const std::tuple<const char*, std::chrono::nanoseconds, Doing, Freshness> rows[] = {
      {"left alone", 1ns, nothing, Freshness::Fresh},
      {"a file added", 1ns, addFile, Freshness::Stale},
      {"a file added, the time set back", 1ns, keepTime(addFile), Freshness::Stale},
      {"another folder", 1ns, replace, Freshness::Stale},
      {"another folder of the same time", 1ns, keepTime(replace), Freshness::Stale},
      {"removed", 1ns, [](const auto& path) { fs::remove(path); }, Freshness::Gone},
      {"changed just before it was listed", kNow, nothing, Freshness::Unknown},
      {"changed in time to come", 2h, nothing, Freshness::Unknown}};
  for (const auto& [name, time, change, expected] : rows) {
    const TemporaryTree tree;
    tree.Folder("d");
    if (time != kNow) Age(tree.Path("d"), time);
    const auto scanned = FoldersIn(tree, {"d"});
    EXPECT_EQ(scanned[0]->GetFreshness(), Freshness::Unknown) << name;  // has no listing
    const auto cached = Read(Written(scanned, tree.IRI()), tree.IRI()).GetFolders();
    change(tree.Path("d"));
    EXPECT_EQ(scanned[0]->GetFreshness(), expected) << name;
    EXPECT_EQ(cached[0]->GetFreshness(), expected) << name;
  }
}

TEST(PathEntryFactoryTest, AnotherFolderOfTheSameTimesIsNotFresh) {
  const TemporaryTree tree;
  tree.Folder("d");
  Age(tree.Path("d"));
  struct stat status{};
  ASSERT_EQ(stat(tree.Path("d").c_str(), &status), 0);
  const auto bytesOf = [](ino_t inode) {
    return std::string(reinterpret_cast<const char*>(&inode), sizeof inode);
  };
  const auto bytes = Written(FoldersIn(tree, {"d"}), tree.IRI());
  const auto other = Edited(bytes, bytesOf(status.st_ino), bytesOf(status.st_ino + 1));
  EXPECT_EQ(Read(bytes, tree.IRI()).GetFolders()[0]->GetFreshness(), Freshness::Fresh);
  EXPECT_EQ(Read(other, tree.IRI()).GetFolders()[0]->GetFreshness(), Freshness::Stale);
}

TEST(PathEntryFactoryTest, ARecordOfWhatWasHoldsOn) {
  const TemporaryTree tree;
  tree.Files({"d/f", "d/private/g", "d/sub/h"});
  tree.Link("f", "d/link");
  const auto bytes = Written(FoldersIn(tree, {"d", "gone"}), tree.IRI());
  const std::string before = Dump(FoldersIn(tree, {"d", "gone"}));
  fs::remove_all(tree.Path("d"));
  tree.File("gone/f");
  EXPECT_EQ(Dump(Read(bytes, tree.IRI(), ListingUse::AsSaved).GetFolders()), before);
}

std::string Refusal(const std::string& bytes, const AbsoluteIRI& root) try {
  Read(bytes, root);
  return "";
} catch (const InvalidListingException& refused) {
  return refused.what();
}

TEST(PathEntryFactoryTest, WhatIsNotWholeIsRefused) {
  const TemporaryTree tree;
  tree.Files({"d/f", "d/+p/g"});
  tree.Link("f", "d/link");
  std::string bytes = Written(FoldersIn(tree, {"d"}), tree.IRI());
  ASSERT_EQ(Refusal(bytes, tree.IRI()), "");
  for (std::size_t bit = 0; bit < 8 * bytes.size(); ++bit) {
    std::string flipped = bytes;
    flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ 1 << bit % 8);
    ASSERT_NE(Refusal(flipped, tree.IRI()), "") << "bit " << bit;
    ASSERT_NE(Refusal(bytes.substr(0, bit / 8), tree.IRI()), "") << bit / 8 << " bytes";
  }
  const std::string line = "searchpath listing 1\n";
  const std::pair<std::string, const char*> rows[] = {
      {"", "it is empty"},
      {"lib\nsrc\n", "its first line is not \"searchpath listing\""},
      {"\x7F"
       "ELF" +
           bytes,
       "its first line is not"},
      {"searchpath listing \n", "no version"},
      {"searchpath listing 11111111111111\n", "no version"},
      {"searchpath listing 2\n",
       "has version 2 of the format, and this program reads version 1: a "
       "newer program wrote it"},
      {"searchpath listing 0\n", "has version 0 of the format, and this program reads version 1 o"},
      {line + "xx", "it ends in its header"},
      {line + "0123456701234567", "its length is damaged"},
      {line + "\xF0\xFF\xFF\x7F" + std::string(12, '\0') + "body", "it is cut off"},
      {bytes + "x", "more bytes follow its end"}};
  const std::size_t before = test::memory.mostBytesInUse = test::memory.bytesInUse.load();
  for (const auto& [content, expected] : rows) {
    EXPECT_NE(Refusal(content, tree.IRI()).find(expected), std::string::npos)
        << testing::PrintToString(content) << ": " << Refusal(content, tree.IRI());
  }
  EXPECT_LT(test::memory.mostBytesInUse - before, 4U << 20U) << "whatever length a file claims";
}

struct SavedNames {
  std::string bytes;
  std::vector<std::uint32_t> begins;
};

struct SavedFolder {
  std::string location = "d";
  saved::Place place = saved::Place::BelowRoot;
  std::uint8_t problem = 0;
  SavedNames files = {std::string("f\0ff\0", 5), {0, 2}};
  SavedNames folders = {std::string("+p\0s\0", 5), {0, 3}};
  SavedNames links = {std::string("l\0", 2), {0}};
  std::vector<std::uint8_t> targets = {1};
};

/// A file that says what writers never would; the same names stand in it once.
std::string Saved(const std::vector<SavedFolder>& folders, std::uint32_t onPath = 0) {
  flatbuffers::FlatBufferBuilder builder;
  const auto vectorOf = [&builder](const std::string& bytes) {
    return builder.CreateVector(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  };
  std::map<std::string, flatbuffers::Offset<saved::Names>> written;
  const auto write = [&](const SavedNames& names) {
    auto& known = written[names.bytes];
    if (known.IsNull()) {
      known =
          saved::CreateNames(builder, vectorOf(names.bytes), builder.CreateVector(names.begins));
    }
    return known;
  };
  std::vector<flatbuffers::Offset<saved::Folder>> all;
  for (const SavedFolder& folder : folders) {
    const auto files = write(folder.files);
    const auto below = write(folder.folders);
    const auto links = write(folder.links);
    const auto targets = builder.CreateVector(folder.targets);
    all.push_back(saved::CreateFolder(builder, vectorOf(folder.location), folder.place, true,
                                      folder.problem, nullptr, files, below, links, targets));
  }
  const auto tables = builder.CreateVector(all);
  builder.Finish(saved::CreateListing(builder, tables, builder.CreateVector(&onPath, 1)));
  return Enveloped({reinterpret_cast<const char*>(builder.GetBufferPointer()), builder.GetSize()});
}

TEST(PathEntryFactoryTest, WhatNoWriterSaysIsRefused) {
  const AbsoluteIRI root(u"file:///root");
  using namespace std::string_literals;
  using Doing = std::function<void(SavedFolder&)>;
  const std::pair<const char*, Doing> rows[] = {
      {"", [](auto&) {}},
      {"", [](auto& folder) { folder.location = "", folder.problem = 10; }},
      {"the place of a folder is unknown", [](auto& folder) { folder.place = saved::Place(3); }},
      {"a problem is unknown", [](auto& folder) { folder.problem = 11; }},
      {"a link has no target", [](auto& folder) { folder.targets.clear(); }},
      {"a link has no target", [](auto& folder) { folder.targets = {0, 0}; }},
      {"the target of a link is unknown", [](auto& folder) { folder.targets = {3}; }},
      {"names do not end", [](auto& folder) { folder.files = {"f", {0}}; }},
      {"names do not end", [](auto& folder) { folder.files = {"f\0g"s, {0}}; }},
      {"names do not end", [](auto& folder) { folder.files = {"", {}}; }},
      {"names do not end", [](auto& folder) { folder.files = {"f\0"s, {1}}; }},
      {"names do not end", [](auto& folder) { folder.files = {"f\0g\0"s, {0}}; }},
      {"a name does not begin", [](auto& folder) { folder.files = {"f\0g\0"s, {0, 3}}; }},
      {"a name does not begin", [](auto& folder) { folder.files = {"f\0g\0"s, {0, 0}}; }},
      {"a name does not begin", [](auto& folder) { folder.files = {"f\0g\0"s, {0, 4}}; }},
      {"a name is empty", [](auto& folder) { folder.files = {"f\0\0"s, {0, 2}}; }},
      {"a name has a separator", [](auto& folder) { folder.files = {"../f\0"s, {0}}; }},
      {"a name has a separator", [](auto& folder) { folder.folders = {"+p/g\0"s, {0}}; }},
      {"a name has a separator", [](auto& folder) { folder.links = {"/\0"s, {0}}; }},
      {"a name is \".\"", [](auto& folder) { folder.files = {".\0"s, {0}}; }},
      {"a name is \".\"", [](auto& folder) { folder.folders = {"s\0..\0"s, {0, 2}}; }},
      {"a name is \".\"", [](auto& folder) { folder.links = {"..\0"s, {0}}; }},
      {"", [](auto& folder) { folder.files = {"...\0..f\0.f\0"s, {0, 4, 8}}; }},
      {"a folder occurs twice", [](auto& folder) { folder.folders = {"s\0s\0"s, {0, 2}}; }},
      {"a folder occurs twice", [](auto& folder) { folder.links = {"s\0"s, {0}}; }},
      {"begins with a separator", [](auto& folder) { folder.location = "/d"; }},
      {"a location is invalid", [](auto& folder) { folder.place = saved::Place::Absolute; }},
      {"a location is invalid", [](auto& folder) { folder.place = saved::Place::Elsewhere; }},
      {"a location is invalid", [](auto& folder) { folder.location = "a\0b"s; }}};
  for (const auto& [expected, change] : rows) {
    SavedFolder folder;
    change(folder);
    const std::string refusal = Refusal(Saved({folder}), root);
    EXPECT_EQ(refusal.empty(), *expected == '\0') << refusal;
    EXPECT_NE(refusal.find(expected), std::string::npos)
        << &change - &rows[0].second << ": " << expected << ", not " << refusal;
  }
  SavedFolder large;
  large.files = {std::string(4000, 'f') + '\0', {0}};
  const SavedFolder small{.location = "e"};
  SavedFolder other = large;
  other.location = "e";
  EXPECT_EQ(Refusal(Saved({large, small}, 1), root), "");
  EXPECT_NE(Refusal(Saved({large, small}, 2), root).find("not in the file"), std::string::npos);
  EXPECT_NE(Refusal(Saved({large, other}), root).find("several times"), std::string::npos);
  EXPECT_NE(Refusal(Saved({small, small}), root).find("occurs twice"), std::string::npos);
  EXPECT_NE(Refusal(Enveloped("no tables"), root).find("do not fit"), std::string::npos);
  EXPECT_NE(Refusal(Saved({small}), AbsoluteIRI(u"http://root")).find("below a folder on disk"),
            std::string::npos);
}

TEST(PathEntryFactoryTest, ALargeFileIsReadFromAnyStream) {
  SavedFolder folder;
  folder.files = {};
  for (std::uint32_t file = 0; file < 300'000; ++file) {  // more than is read at once
    folder.files.begins.push_back(static_cast<std::uint32_t>(folder.files.bytes.size()));
    folder.files.bytes += std::to_string(file) + '\0';
  }
  const std::string bytes = Saved({folder});
  const auto read = Read(bytes, AbsoluteIRI(u"file:///root"), ListingUse::AsSaved).GetFolders();
  EXPECT_EQ(read[0]->GetItemCount(), 300'001U);  // and the link
  Pipe measured(bytes);
  measured.isMeasured = true;
  std::istream stream(&measured);
  try {
    PathEntryFactory().ReadEntries(stream, AbsoluteIRI(u"file:///root"));
    ADD_FAILURE() << "it was read from its end";
  } catch (const InvalidListingException& refused) {
    EXPECT_STREQ(refused.what(), "it cannot be read: seeking failed");
  }
}

TEST(PathEntryFactoryTest, ServesAsTheToolboxCache) {
  const TemporaryTree tree;
  tree.File("box/f");
  ASSERT_EQ(mkfifo(tree.Path("fifo").c_str(), 0600), 0);
  WriteToolboxPathCache(tree.Text("cache"), tree.Text(),
                        PathEntryFactory(FoldersIn(tree, {"box"})));
  PathEntryFactory factory;
  LoadToolboxPathCache(tree.Text("cache"), tree.Text(), factory);
  for (const std::string& bad : Names{"box/f", "fifo", "box", "none", {"box\0f", 5}}) {
    EXPECT_THROW(LoadToolboxPathCache(tree.Text(bad), tree.Text(), factory),
                 ToolboxCacheWrongFormatException);
    EXPECT_THROW(static_cast<void>(LoadListing(tree.Text(bad))), InvalidListingException) << bad;
    EXPECT_FALSE(IsListingFile(tree.Text(bad))) << bad;
  }
  EXPECT_TRUE(IsListingFile(tree.Text("cache")));
  EXPECT_EQ(Shown(factory.GetFolders(), tree), "box");
}

}  // namespace
}  // namespace Corvane::PathManagement::host
