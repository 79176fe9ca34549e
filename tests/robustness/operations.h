#ifndef SEARCHPATH_TESTS_ROBUSTNESS_OPERATIONS_H
#define SEARCHPATH_TESTS_ROBUSTNESS_OPERATIONS_H

#include "searchpath/model/byte_text.h"
#include "searchpath/platform/event_manager.h"
#include "searchpath/platform/iri_text.h"
#include "searchpath/utilities/deduplicated_path.h"
#include "searchpath/utilities/file_lookup.h"
#include "searchpath/utilities/filtered_path.h"
#include "searchpath/utilities/iri_conversion.h"
#include "searchpath/utilities/matching_entries.h"
#include "searchpath/utilities/packages_on_path.h"
#include "searchpath/utilities/partial_pathname.h"
#include "searchpath/utilities/path_editing.h"
#include "searchpath/utilities/path_entry_vector_differentiator.h"
#include "searchpath/utilities/path_strings.h"
#include "searchpath/utilities/special_subfolder_notification.h"
#include "support/recording_manager.h"

#include <gtest/gtest.h>

#include <array>

// Every exported operation once, each as a row that the sweeps and the storm run.
namespace Corvane::PathManagement::test {

enum class Composite { Concatenated, Deduplicated, Filtered };
inline constexpr Composite kComposites[] = {Composite::Concatenated, Composite::Deduplicated,
                                            Composite::Filtered};

/// A nested path in which every part is asked whatever the question: only the last part answers
/// questions for one thing, and for all it answers like the others. A filtered one hides that thing.
class World {
 public:
  explicit World(Composite pathKind, std::size_t partCount, CallLog* callLog = nullptr)
      : kind(pathKind), log(callLog), workingFolder(callLog) {
    for (std::size_t part = 0; part < partCount; ++part) AddPart("part" + std::to_string(part));
    FakePath& last = *parts.back();
    last.entryByIRI = {{top->iri.toString(), top}};
    last.firstFound = FoundItem(item, top);
    last.firstIsBeforeSecond = true;
    method->foundItem = item;
    hidden->held = {top.get()};
    top->singleA = AddEntry("private", top->iri.toString() + u"/private");
    Renew();
  }

  /// Makes the path anew, its list of main entries not yet built.
  void Renew() { path = Make(); }
  void Forget() { path.reset(); }

  /// A copy of the path; another of a kind that is not copied.
  [[nodiscard]] std::shared_ptr<const IPath> Copy() const {
    if (kind == Composite::Filtered) return Make();
    const auto* const deduplicated = dynamic_cast<const DeduplicatedPath*>(path.get());
    if (deduplicated != nullptr) return std::make_shared<DeduplicatedPath>(*deduplicated);
    return std::make_shared<ConcatenatedPath>(dynamic_cast<const ConcatenatedPath&>(*path));
  }

  const IPath* operator->() const { return path.get(); }

  void Note(const std::string& call) const {
    if (log != nullptr) log->Add(call);
  }

  const Composite kind;
  CallLog* log;
  FakeWorkingFolder workingFolder;
  std::shared_ptr<FakePath> hidden = std::make_shared<FakePath>("hidden", log);
  const std::shared_ptr<const PathItem> item =
      std::make_shared<PathItem>(AbsoluteIRI(u"file:///w"), u"fn", u".x");
  const NameComparator equal = [this](const ustring& left, const ustring& right) {
    return Note("equal"), left == right;
  };
  const PathEntryVisitor visitor = [this](const EntryPointer&) { return Note("visitor"), false; };
  std::vector<std::shared_ptr<FakePath>> parts;
  std::shared_ptr<FakeEntry> top, method;  // of the last part
  std::shared_ptr<const IPath> path;

 private:
  [[nodiscard]] std::shared_ptr<const IPath> Make() const {
    using Parts = std::vector<std::shared_ptr<const IPath>>;
    Parts others(parts.begin() + 1, parts.end());
    if (kind == Composite::Deduplicated) {
      const auto joined = std::make_shared<DeduplicatedPath>(std::move(others));
      return std::make_shared<DeduplicatedPath>(Parts{parts.front(), joined});
    }
    auto joined = std::make_shared<ConcatenatedPath>(
        parts.front(), std::make_shared<ConcatenatedPath>(std::move(others)));
    if (kind == Composite::Concatenated) return joined;
    return std::make_shared<FilteredPath>(std::move(joined), hidden);
  }

  std::shared_ptr<FakeEntry> AddEntry(const std::string& name, const ustring& location) const {
    auto entry = std::make_shared<FakeEntry>(name, location, log);
    entry->comparator = equal;
    entry->items = {item, item};
    return entry;
  }

  void AddPart(const std::string& name) {
    const ustring folder = u"file:///a-folder-of-the-world/" + TextFromBytes(name);
    top = AddEntry(name + "/top", folder);
    method = AddEntry(name + "/method", folder + u"/@cls");
    top->visited = {Unowned(top), method};
    parts.push_back(MakePart(name, {top, method}, log));
    parts.back()->parentEntryFor = {{method.get(), top}};
    parts.back()->entryByCanonicalIRI.clear();
  }
};

inline const std::uint32_t kKinds[] = {0, 1, 2, 3, 4};
inline const SearchScope kScope(kKinds, 5);
inline const Target kTarget(u"a-name-that-touches-the-heap");
inline const Target kPartialTarget(u"folder-of-it/a-name-that-touches-the-heap");
inline const std::vector<ustring> kExtensions = {u".y", u".x", u".an-extension-on-the-heap"};
inline const std::vector<ustring> kPartial = {u"a-folder-of-the-world", u"part1", u"cls"}, kNone;
inline const ustring kFolder = u"/a-folder-of-the-world/part1/@cls",
                     kStrictFolder = u"/a/part1/cls";
inline const ustring kNative = u"/bin/absent folder/+package/@class/private";
inline const ustring kFileText = u"file://LocalHost/%41/../b c/{x}/%ff";
inline const ustring kHostText = u"http://User@Host:80/a b/../%7Ec/d?q#f";
inline const AbsoluteIRI kFile(u"file://localhost/folder/b%20c/../@class/%FF{x}");
inline const AbsoluteIRI kHost(kHostText), kLink(u"file:///bin");
inline constexpr auto kAny = Policy::IgnoreCase;
// Short names, so that a row stays on its line.
inline constexpr auto& MatchText = DoesPartialPathnameMatchPathString;
inline constexpr auto& MatchStrictly = DoesPartialPathnameStrictlyMatchPathString;
inline constexpr auto& MatchEntryStrictly = DoesPartialPathnameStrictlyMatchPathEntryIRI;
inline constexpr auto MatchEntry = [](const auto&... arguments) {
  return DoesPartialPathnameMatchPathEntryIRI(arguments...);
};
inline constexpr auto FindFrom = [](const auto&... arguments) {
  return FindFirstFileVisibleFromFolder(arguments...);
};
inline const auto kStorage = storage::microservicestoragesystem::GetStorageSystemReference();

/// Calls `visit(name, ask)` for each of the operations that call a part, an entry or a predicate.
/// `ask(world)` carries it out; its answers can be compared.
template <class Visit>
void ForEachPathOperation(const Visit& visit) {
  using W = const World&;
  using foundation::storage::vfs::Folder;
  visit("main entries", [](W w) { return *w->GetMainEntries(); });
  visit("method entries", [](W w) { return w->GetMethodEntries(); });
  visit("by name", [](W w) { return w->GetMethodEntriesByName(kScope, u"cls", kAny); });
  visit("by partial", [](W w) { return w->GetPartiallyMatchingEntries(kScope, u"x", kAny); });
  visit("main entry", [](W w) { return w->GetMainEntryForEntry(*w.method); });
  visit("parent entry", [](W w) { return w->GetParentEntryForEntry(*w.method); });
  visit("by exact IRI", [](W w) { return w->GetPathEntryFromAbsoluteIRI({kFile, kNative}); });
  visit("by IRI", [](W w) { return w->GetPathEntryFromAbsoluteIRI(w.top->iri, kAny); });
  visit("find first", [](W w) { return w->FindFirstInScope(kScope, kTarget, kAny); });
  visit("find all", [](W w) { return w->FindAllInScope(kScope, kTarget, kAny); });
  visit("visit", [](W w) { return w->ForEachEntry(kScope, w.visitor); });
  visit("visit at once", [](W w) { return w->ConcurrentForEachEntry(kScope, w.visitor); });
  visit("order", [](W w) { return w->FirstEntryIsBeforeSecondOnPath(*w.method, *w.top); });
  visit("is on path", [](W w) { return w->IsEntryOnPath(*w.method); });
  visit("copy", [](W w) { return *w.Copy()->GetMainEntries(); });
  visit("move", [](W w) {
    ConcatenatedPath source(w.parts[0], w.parts[1]);
    return *ConcatenatedPath(std::move(source)).GetMainEntries();
  });
  for (const ustring& name : {ustring(u"x"), ustring(u"/x")}) {
    visit("matching",
          [name](W w) { return GetMatchingEntries(kScope, name, *w.path, w.workingFolder, kAny); });
  }
  visit("text", [](W w) { return MatchText(kPartial, kFolder, w.equal); });
  visit("text strictly", [](W w) { return MatchStrictly(kPartial, kStrictFolder, w.equal); });
  visit("entry", [](W w) { return MatchEntry(kPartial, w.method, kAny); });
  visit("entry strictly", [](W w) { return MatchEntryStrictly(kPartial, *w.method, kAny); });
  visit("entries above", [](W w) { return MatchEntry(*w.path, kPartial, w.method, kAny); });
  visit("no part", [](W w) { return MatchEntry(*w.path, kNone, w.method, kAny); });
  visit("on path", [](W w) { return FindFirstFileVisibleOnPath(*w.path, kTarget, kAny); });
  visit("partial", [](W w) { return FindFirstFileVisibleOnPath(*w.path, kPartialTarget, kAny); });
  visit("from", [](W w) { return FindFrom(*w.path, w.top->iri, kTarget, kAny); });
  visit("from a folder",
        [](W w) { return FindFrom(*w.path, Folder(w.top->iri, kStorage), kTarget, kAny); });
  visit("files of one", [](W w) { return FindFilesByExtensions(w.top, kExtensions, kAny); });
  visit("files", [](W w) { return FindFilesByExtensions(*w.path, kScope, kExtensions, kAny); });
}

/// The same for the operations on texts, which call nothing.
template <class Visit>
void ForEachTextOperation(const Visit& visit) {
  using W = const World&;
  namespace vfs = foundation::storage::vfs;
  namespace files = fl::filesystem::detail;
  visit("to text", [](W) { return TextFromBytes("bytes, and some that are no UTF-8: \xFF\xC3"); });
  visit("to bytes", [](W) { return BytesFromText(kNative + u"\xDC80\u20AC\U0001F600"); });
  visit("file IRI", [](W) { return AbsoluteIRI(u"file:/%2Bpackage/./b c/%C3%A4{x}\xDC80"); });
  visit("other IRI", [](W) { return AbsoluteIRI(kHostText); });
  visit("no IRI", [](W) {
    try {
      return AbsoluteIRI(u"file:///a-folder-with-a-%-that-begins-no-escape") != kFile;
    } catch (const vfs::InvalidIRIException&) {
      return false;
    }
  });
  for (const AbsoluteIRI* const iri : {&kFile, &kHost}) {
    visit("texts of an IRI", [iri](W) {
      return std::vector{iri->getName(),
                         iri->getPath(),
                         iri->getScheme(),
                         iri->toString(),
                         iri->makePathRelativeTo(iri->getParent().getParent()),
                         GetStringFromIRI(*iri)};
    });
    visit("resolved", [iri](W) { return iri->getResolvedIRI(); });
    visit("canonical", [iri](W) { return GetCanonicalIRI(*iri); });
  }
  for (const ustring* const text : {&kNative, &kFileText, &kHostText}) {
    visit("canonical IRI", [text](W) { return GetCanonicalIRIFromString(*text); });
    visit("search path", [text](W) { return SplitZentraPath(*text); });
    visit("pathname", [text](W) { return SplitPartialPathname(*text); });
    visit("parts", [text](W) {
      ustring decoded = *text;
      foundation::storage::utility::decodeURL(decoded, true);
      return std::vector{decoded,
                         RemoveRootPathFromAbsolutePath(*text),
                         GetPartialPathIncludingSpecialFolders(*text),
                         files::extract_root_path(*text),
                         files::extract_extension(*text),
                         files::make_native_form(*text, true)};
    });
    visit("target", [text](W) {
      return CreateSearchTargetWithExtensionInFilenamePreferred(*text, kExtensions).GetExtensions();
    });
  }
  visit("from native", [](W) { return vfs::toAbsoluteIRI(u"scheme", kNative); });
  visit("to native", [](W) { return vfs::fromAbsoluteIRI(kFile); });
  visit("file", [](W) { return vfs::File(kLink, kStorage).getCanonicalLocation(); });
}

using Differences = std::array<EntryList, 5>;

/// As `ForEachPathOperation`; expects of a failure the beginning of each list, and pairs. No level
/// has more changed entries than one thread sorts.
template <class Visit>
void ForEachDiffOperation(CallLog* log, const Visit& visit) {
  using Differentiator = PathEntryVectorDifferentiator;
  std::vector<std::shared_ptr<FakeEntry>> made;
  for (const char16_t* name : {u"a", u"a", u"b", u"c", u"d", u"p", u"p", u"q", u"r"}) {
    made.push_back(std::make_shared<FakeEntry>("entry", ustring(u"file:///") + name, log));
  }
  made[0]->singleA = made[5], made[1]->singleB = made[6];
  made[0]->listA = made[1]->listC = {made[8]}, made[1]->listB = {made[7]};
  const auto compare = [before = EntryList{made[0], made[2], made[3], made[2]},
                        after = EntryList{made[3], made[2], made[1], made[4]}](
                           const Differences& whole) {
    Differentiator result;
    const auto lists = {result.GetAdded(), result.GetRemoved(), result.GetReordered(),
                        result.GetRefreshedBefore(), result.GetRefreshedAfter()};
    try {
      result.Compare(before, after, Differentiator::ComparisonFilter::IncludeSubfolders);
    } catch (...) {
      auto all = whole.begin();
      for (const auto& list : lists) {
        const auto difference = std::mismatch(list->begin(), list->end(), all->begin(), all->end());
        EXPECT_TRUE(difference.first == list->end()) << all - whole.begin();
        ++all;
      }
      EXPECT_EQ(result.GetRefreshedBefore()->size(), result.GetRefreshedAfter()->size());
      throw;
    }
    Differences found;
    std::transform(lists.begin(), lists.end(), found.begin(), [](auto& list) { return *list; });
    return found;
  };
  const Differences whole = compare({});
  if (log != nullptr) log->Take();
  visit("Compare", [compare, whole](const auto&) { return compare(whole); });
}

/// A path of a few folders, a package, and somebody who hears of changes.
struct EditWorld {
  explicit EditWorld(CallLog* callLog = nullptr)
      : log(callLog), cwf(callLog), manager(callLog), registry(callLog) {
    registry.folders = {{path->front(), std::make_shared<std::set<int>>(std::set{0})}};
  }
  void Renew() {
    using namespace foundation::msg_svc::eventmgr;
    manager.folders = path;
    subscription = createLocalEventMgr(SessionEmId)->subscribe([this](const Event&) {
      if (log != nullptr) log->Add("handler");
    });
  }
  void Forget() {
    manager.folders = path;
    subscription = {};
  }

  CallLog* log;
  const std::shared_ptr<const IRIList> path = std::make_shared<const IRIList>(
      IRIList{AbsoluteIRI(u"file:///a"), AbsoluteIRI(u"file:///b"), AbsoluteIRI(u"file:///a")});
  const std::vector<ustring> typed = {u"a", u"a-folder-not-on-it"}, failing = {u"a", u"fails\x4"};
  const std::vector<ComponentIdentifier> packages = {{u"q", u"1"}, {u"p", u"1"}};
  FakeWorkingFolder cwf;
  FakeManager manager;
  FakeRegistry registry;
  foundation::msg_svc::eventmgr::Subscription subscription;
};

/// As `ForEachPathOperation`.
template <class Visit>
void ForEachEditOperation(const Visit& visit) {
  using W = EditWorld&;
  const auto edit = [&visit](const char* name, const auto& change) {
    visit(name, [&](W w) {
      w.manager.folders = w.path;
      const Notification notification = change(w, w.manager);
      std::vector<ustring> result = {FolderNames(*w.manager.folders)};
      for (const auto& message : notification.GetMessages()) result.push_back(GetText(message));
      return result;
    });
  };
  const auto end = Position::End;
  edit("add", [=](W w, auto& m) { return AddFoldersToZentraPath(w.typed, w.cwf, m, end); });
  edit("add none", [=](W w, auto& m) { return AddFoldersToZentraPath(w.failing, w.cwf, m, end); });
  edit("remove", [](W w, auto& m) { return RemoveFoldersFromZentraPath(w.typed, w.cwf, m); });
  visit("is on path", [](W w) { return PackageIsOnPath(w.packages.back(), w.manager); });
  visit("packages", [](W w) { return GetPathFoldersForPackages(w.registry, w.packages); });
  visit("notify", [location = AbsoluteIRI(u"file:///bin/+package/@class/file.x")](W) {
    NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesAndCanonicalize(location);
    return true;
  });
}

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_ROBUSTNESS_OPERATIONS_H
