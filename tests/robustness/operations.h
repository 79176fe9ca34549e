#ifndef SEARCHPATH_TESTS_ROBUSTNESS_OPERATIONS_H
#define SEARCHPATH_TESTS_ROBUSTNESS_OPERATIONS_H

#include "searchpath/model/byte_text.h"
#include "searchpath/platform/iri_text.h"
#include "searchpath/utilities/concatenated_path.h"
#include "searchpath/utilities/file_lookup.h"
#include "searchpath/utilities/iri_conversion.h"
#include "searchpath/utilities/partial_pathname.h"
#include "searchpath/utilities/path_strings.h"
#include "support/recording.h"

#include <optional>

// Every exported operation once, each as a row that the sweeps and the storm run.
namespace Corvane::PathManagement::test {

using NamePredicate = std::function<bool(const ustring&, const ustring&)>;

/// A nested path in which every part is asked whatever the question: only the last part answers
/// questions for one thing, and for all it answers like the others.
class World {
 public:
  explicit World(std::size_t partCount, CallLog* callLog = nullptr) : log(callLog) {
    for (std::size_t part = 0; part < partCount; ++part) AddPart("part" + std::to_string(part));
    FakePath& last = *parts.back();
    last.entryByIRI = {{top->iri.toString(), top}};
    last.firstFound = FoundItem(item, top);
    last.firstIsBeforeSecond = true;
    method->foundItem = item;
    top->singleA = AddEntry("private", top->iri.toString() + u"/private");
    Renew();
  }

  /// Makes the path anew, its list of main entries not yet built.
  void Renew() {
    using Parts = std::vector<std::shared_ptr<const IPath>>;
    auto others = std::make_shared<ConcatenatedPath>(Parts(parts.begin() + 1, parts.end()));
    path = std::make_unique<ConcatenatedPath>(parts.front(), std::move(others));
  }

  void Forget() { path.reset(); }

  void Note(const std::string& call) const {
    if (log != nullptr) log->Add(call);
  }

  CallLog* log;
  const std::shared_ptr<const PathItem> item =
      std::make_shared<PathItem>(AbsoluteIRI(u"file:///w"), u"fn", u".x");
  const NamePredicate equal = [this](const ustring& left, const ustring& right) {
    return Note("equal"), left == right;
  };
  const PathEntryVisitor visitor = [this](const EntryPointer&) { return Note("visitor"), false; };
  std::vector<std::shared_ptr<FakePath>> parts;
  std::shared_ptr<FakeEntry> top, method;  // of the last part
  std::unique_ptr<ConcatenatedPath> path;

 private:
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
    auto part = std::make_shared<FakePath>(name, log);
    part->mainEntries = std::make_shared<const EntryList>(EntryList{top});
    part->methodEntries = part->methodEntriesByName = {method};
    part->partiallyMatchingEntries = part->visited = {top, method};
    part->mainEntryFor = {{top.get(), top}, {method.get(), top}};
    part->parentEntryFor = {{method.get(), top}};
    part->allFound = {FoundItem(item, top)};
    part->held = {top.get(), method.get()};
    parts.push_back(std::move(part));
  }
};

inline const std::uint32_t kKinds[] = {0, 1, 2, 3, 4};
inline const SearchScope kScope(kKinds, 5);
inline const detail::SearchTarget kTarget(u"a-name-that-touches-the-heap");
inline const detail::SearchTarget kPartialTarget(u"folder-of-it/a-name-that-touches-the-heap");
inline const std::vector<ustring> kExtensions = {u".y", u".x", u".an-extension-on-the-heap"};
inline const std::vector<ustring> kPartial = {u"a-folder-of-the-world", u"part1", u"cls"};
inline const ustring kNative = u"/proc/self/cwd/absent folder/+package/@class/private";
inline const ustring kFileText = u"file://LocalHost/%41/../b c/{x}/%ff";
inline const ustring kHostText = u"http://User@Host:80/a b/../%7Ec/d?q#f";
inline const AbsoluteIRI kFile(u"file://localhost/folder/b%20c/../@class/%FF{x}");
inline const AbsoluteIRI kHost(kHostText);
inline constexpr auto kPolicy = FilenameMatchingPolicy::IgnoreCase;

/// Calls `visit(name, ask)` for each of the operations that call a part, an entry or a predicate.
/// `ask(world)` carries it out; its answers can be compared.
template <class Visit>
void ForEachPathOperation(const Visit& visit) {
  using W = const World&;
  visit("GetMainEntries", [](W w) { return *w.path->GetMainEntries(); });
  visit("GetMethodEntries", [](W w) { return w.path->GetMethodEntries(); });
  visit("GetMethodEntriesByName",
        [](W w) { return w.path->GetMethodEntriesByName(kScope, u"cls", kPolicy); });
  visit("GetPartiallyMatchingEntries",
        [](W w) { return w.path->GetPartiallyMatchingEntries(kScope, u"x", kPolicy); });
  visit("GetMainEntryForEntry", [](W w) { return w.path->GetMainEntryForEntry(*w.method); });
  visit("GetParentEntryForEntry", [](W w) { return w.path->GetParentEntryForEntry(*w.method); });
  visit("entry of a canonical IRI", [](W w) {
    return w.path->GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(kFile, u"further text"));
  });
  visit("entry of an IRI",
        [](W w) { return w.path->GetPathEntryFromAbsoluteIRI(w.top->iri, kPolicy); });
  visit("FindFirstInScope", [](W w) { return w.path->FindFirstInScope(kScope, kTarget, kPolicy); });
  visit("FindAllInScope", [](W w) { return w.path->FindAllInScope(kScope, kTarget, kPolicy); });
  visit("ForEachEntry", [](W w) { return w.path->ForEachEntry(kScope, w.visitor); });
  visit("ConcurrentForEachEntry",
        [](W w) { return w.path->ConcurrentForEachEntry(kScope, w.visitor); });
  visit("FirstEntryIsBeforeSecondOnPath",
        [](W w) { return w.path->FirstEntryIsBeforeSecondOnPath(*w.method, *w.top); });
  visit("IsEntryOnPath", [](W w) { return w.path->IsEntryOnPath(*w.method); });
  visit("copy", [](W w) { return *ConcatenatedPath(*w.path).GetMainEntries(); });
  visit("move", [](W w) {
    ConcatenatedPath source(w.parts[0], w.parts[1]);
    return *ConcatenatedPath(std::move(source)).GetMainEntries();
  });
  visit("match a text", [](W w) {
    return DoesPartialPathnameMatchPathString(kPartial, u"/a-folder-of-the-world/part1/@cls",
                                              w.equal);
  });
  visit("match a text strictly", [](W w) {
    return DoesPartialPathnameStrictlyMatchPathString(kPartial, u"/a/b/part1/cls", w.equal);
  });
  visit("match an entry",
        [](W w) { return DoesPartialPathnameMatchPathEntryIRI(kPartial, w.method, kPolicy); });
  visit("match an entry strictly", [](W w) {
    return DoesPartialPathnameStrictlyMatchPathEntryIRI(kPartial, *w.method, kPolicy);
  });
  visit("match an entry and those above", [](W w) {
    return DoesPartialPathnameMatchPathEntryIRI(*w.path, kPartial, w.method, kPolicy);
  });
  visit("match no part", [](W w) {
    return DoesPartialPathnameMatchPathEntryIRI(*w.path, std::vector<ustring>(), w.method, kPolicy);
  });
  visit("file on the path",
        [](W w) { return FindFirstFileVisibleOnPath(*w.path, kTarget, kPolicy); });
  visit("file by a partial pathname",
        [](W w) { return FindFirstFileVisibleOnPath(*w.path, kPartialTarget, kPolicy); });
  visit("file from a folder",
        [](W w) { return FindFirstFileVisibleFromFolder(*w.path, w.top->iri, kTarget, kPolicy); });
  visit("file from a located folder", [](W w) {
    const foundation::storage::vfs::Folder folder(
        w.top->iri, storage::microservicestoragesystem::GetStorageSystemReference());
    return FindFirstFileVisibleFromFolder(*w.path, folder, kTarget, kPolicy);
  });
  visit("files of an entry",
        [](W w) { return FindFilesByExtensions(w.top, kExtensions, kPolicy); });
  visit("files of the path",
        [](W w) { return FindFilesByExtensions(*w.path, kScope, kExtensions, kPolicy); });
}

/// The same for the operations on texts, which call nothing.
template <class Visit>
void ForEachTextOperation(const Visit& visit) {
  using W = const World&;
  namespace storage = foundation::storage;
  namespace files = fl::filesystem::detail;
  visit("TextFromBytes",
        [](W) { return TextFromBytes("bytes, and some that are no UTF-8: \xFF\xC3"); });
  visit("BytesFromText", [](W) { return BytesFromText(kNative + u"\xDC80\u20AC\U0001F600"); });
  visit("parse a file IRI",
        [](W) { return AbsoluteIRI(u"file:/%2Bpackage/./b c/%C3%A4{x}\xDC80"); });
  visit("parse another IRI", [](W) { return AbsoluteIRI(kHostText); });
  visit("parse no IRI", [](W) -> std::optional<AbsoluteIRI> {
    try {
      return AbsoluteIRI(u"file:///a-folder-with-a-%-that-begins-no-escape");
    } catch (const storage::vfs::InvalidIRIException&) {
      return std::nullopt;
    }
  });
  for (const AbsoluteIRI* const iri : {&kFile, &kHost}) {
    for (const auto text : {&AbsoluteIRI::getName, &AbsoluteIRI::getPath, &AbsoluteIRI::getScheme,
                            &AbsoluteIRI::toString}) {
      visit("a text of an IRI", [iri, text](W) { return (iri->*text)(); });
    }
    visit("getParent", [iri](W) { return iri->getParent(); });
    visit("getResolvedIRI", [iri](W) { return iri->getResolvedIRI(); });
    visit("makePathRelativeTo",
          [iri](W) { return iri->makePathRelativeTo(iri->getParent().getParent()); });
    visit("GetCanonicalIRI", [iri](W) { return GetCanonicalIRI(*iri); });
    visit("GetStringFromIRI", [iri](W) { return GetStringFromIRI(*iri); });
  }
  for (const ustring* const text : {&kNative, &kFileText, &kHostText}) {
    visit("GetIRIFromString", [text](W) { return GetIRIFromString(*text); });
    visit("GetCanonicalIRIFromString", [text](W) { return GetCanonicalIRIFromString(*text); });
    visit("SplitZentraPath", [text](W) { return SplitZentraPath(*text); });
    visit("SplitPartialPathname", [text](W) { return SplitPartialPathname(*text); });
    visit("RemoveRootPathFromAbsolutePath",
          [text](W) { return RemoveRootPathFromAbsolutePath(*text); });
    visit("GetPartialPathIncludingSpecialFolders",
          [text](W) { return GetPartialPathIncludingSpecialFolders(*text); });
    visit("extract_root_path", [text](W) { return files::extract_root_path(*text); });
    visit("extract_extension", [text](W) { return files::extract_extension(*text); });
    visit("make_native_form", [text](W) { return files::make_native_form(*text, true); });
    visit("decodeURL", [text](W) {
      ustring decoded = *text;
      storage::utility::decodeURL(decoded, true);
      return decoded;
    });
  }
  visit("toAbsoluteIRI", [](W) { return storage::vfs::toAbsoluteIRI(u"scheme", kNative); });
  visit("fromAbsoluteIRI", [](W) { return storage::vfs::fromAbsoluteIRI(kFile); });
  visit("canonical location of a file", [](W) {
    const auto system = ::storage::microservicestoragesystem::GetStorageSystemReference();
    return storage::vfs::File(AbsoluteIRI(u"file:///proc/self/cwd"), system).getCanonicalLocation();
  });
  visit("target of a name", [](W) {
    return CreateSearchTargetWithExtensionInFilenamePreferred(kNative, kExtensions).GetExtensions();
  });
}

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_ROBUSTNESS_OPERATIONS_H
