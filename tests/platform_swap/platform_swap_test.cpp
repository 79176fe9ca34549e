#include "searchpath/platform/event_manager.h"
#include "searchpath/platform/file_folder_changed_event.h"
#include "searchpath/utilities/deduplicated_path.h"
#include "searchpath/utilities/file_lookup.h"
#include "searchpath/utilities/iri_conversion.h"
#include "searchpath/utilities/matching_entries.h"
#include "searchpath/utilities/path_editing.h"
#include "searchpath/utilities/path_entry_vector_differentiator.h"
#include "searchpath/utilities/path_strings.h"
#include "searchpath/utilities/special_subfolder_notification.h"
#include "searchpath/utilities/toolbox_path_cache.h"
#include "support/recording_manager.h"

#include <gtest/gtest.h>

// What each of the library's folders makes of the answers of another storage layer.
namespace Corvane::PathManagement {
namespace {

using namespace test;
using fl::filesystem::files;
using storage::filefolderobserver::FileFolderChangedEvent;

/// Reads and writes one line.
struct LineFactory : IPathEntryFactory {
  void ReadEntries(std::istream& stream, const AbsoluteIRI& root) override {
    std::getline(stream, line);
    location = root.toString();
  }
  void WriteEntries(std::ostream& stream, const AbsoluteIRI&) const override {
    stream << line;
    EXPECT_TRUE(files.contains(u"/caches/tmpcache_1.xml"));
  }

  std::string line;
  ustring location;
};

TEST(PlatformSwapTest, TheCacheIsAFileOfThePlatform) {
  LineFactory factory;
  factory.line = "entries";
  WriteToolboxPathCache(u"\\caches\\a", u"/lib", factory);
  EXPECT_EQ(files, (std::map<ustring, std::string>{{u"/caches/a", "entries"}}));
  factory.line.clear();
  LoadToolboxPathCache(u"/caches/a", u"\\lib", factory);
  EXPECT_EQ(factory.line, "entries");
  EXPECT_EQ(factory.location, u"file:///lib");
  EXPECT_THROW(LoadToolboxPathCache(u"/caches/b", u"/lib", factory),
               ToolboxCacheWrongFormatException);
}

TEST(PlatformSwapTest, TextsAreNativeAsThePlatformHasIt) {
  EXPECT_EQ(GetCanonicalIRIFromString(u"\\a\\..\\b").toString(), u"file:///b");
  EXPECT_EQ(GetStringFromIRI(AbsoluteIRI(u"ab:/%41")), u"ab:/%41") << "decoded elsewhere";
  EXPECT_EQ(RemoveRootPathFromAbsolutePath(u"\\a\\b"), u"a/b");
  EXPECT_EQ(GetPartialPathIncludingSpecialFolders(u"\\a\\+b\\c"), u"+b/c");
}

TEST(PlatformSwapTest, PathsAreEditedAndChangesPublished) {
  FakeManager manager;
  const std::vector<ustring> folders = {u"a", u"b"};
  EXPECT_TRUE(
      AddFoldersToZentraPath(folders, FakeWorkingFolder(), manager, Position::Begin).empty());
  EXPECT_EQ(FolderNames(*manager.folders), u"a b");
  ustring published;
  using namespace foundation::msg_svc::eventmgr;
  const auto subscription = createLocalEventMgr(SessionEmId)->subscribe([&](const Event& event) {
    published += dynamic_cast<const FileFolderChangedEvent&>(event).GetLocation() + u' ';
  });
  NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesAndCanonicalize(
      AbsoluteIRI(u"file:///lib/x/../+p/f.x"));
  EXPECT_EQ(published, u"file:///lib/+p/f.x file:///lib/+p file:///lib ");
}

TEST(PlatformSwapTest, FoldersAndFilesAreFoundAndCompared) {
  const auto a = std::make_shared<FakeEntry>("a", u"file:///lib/a");
  const auto b = std::make_shared<FakeEntry>("b", u"file:///lib/b");
  const auto part = MakePart("part", {a, b, a}, nullptr);
  part->firstFound = part->allFound[1];
  const DeduplicatedPath path({part});
  constexpr auto kPolicy = FilenameMatchingPolicy::CaseSensitive;
  EXPECT_EQ(Names(GetMatchingEntries(kMainScope, u"\\lib\\b", path, FakeWorkingFolder(), kPolicy)),
            "b");
  const auto target = CreateSearchTargetWithExtensionInFilenamePreferred(u"d\\fn", {u".x"});
  EXPECT_EQ(Names(FindFirstFileVisibleOnPath(path, target, kPolicy)), "b");
  PathEntryVectorDifferentiator changes;
  changes.Compare({a}, {a, b}, PathEntryVectorDifferentiator::ComparisonFilter::TopLevelOnly);
  EXPECT_EQ(Names(*changes.GetAdded()) + Names(*changes.GetRemoved()), "b");
}

}  // namespace
}  // namespace Corvane::PathManagement
