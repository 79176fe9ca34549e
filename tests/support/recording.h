#ifndef SEARCHPATH_TESTS_SUPPORT_RECORDING_H
#define SEARCHPATH_TESTS_SUPPORT_RECORDING_H

#include "searchpath/model/path.h"
#include "searchpath/model/path_entry.h"
#include "searchpath/platform/current_working_folder.h"
#include "searchpath/platform/iri_text.h"

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <set>

// Entries and paths whose answers are the data that a test puts into them, and which write down
// every call in order. Without a log they only read and may be used from several threads.
namespace Corvane::PathManagement::test {

using EntryPointer = std::shared_ptr<const IPathEntry>;
using EntryList = PathEntries;
using ItemPointer = std::shared_ptr<const PathItem>;
using ItemList = PathItems;
using SharedEntryList = std::shared_ptr<const EntryList>;
using SharedItemList = std::shared_ptr<const ItemList>;
using NameComparator = std::function<bool(const ustring&, const ustring&)>;
using Target = detail::SearchTarget;
using Policy = FilenameMatchingPolicy;
using Visitor = PathEntryVisitor;
using Scope = SearchScope;
using OptionalFile = boost::optional<FoundItem>;
using FileList = std::vector<FoundItem>;

/// `text` as ASCII, "?" for all else.
inline std::string Printed(std::u16string_view text) {
  std::string printed;
  for (const char16_t unit : text) printed += unit < 0x7F ? static_cast<char>(unit) : '?';
  return printed;
}

/// The calls in order, as "p1.FindFirstInScope({0},fn,2)". `onCall` runs before a call is answered;
/// what it throws is what the call throws.
struct CallLog {
  std::vector<std::string> calls;
  std::function<void(const std::string& call)> onCall;

  void Add(const std::string& call) {
    calls.push_back(call);
    if (onCall) onCall(call);
  }
  std::vector<std::string> Take() { return std::exchange(calls, {}); }
  /// `answer`, then the calls that led to it, in one line.
  std::string Take(std::string answer) {
    for (const std::string& call : Take()) answer += " " + call;
    return answer;
  }
};

/// The part of the fakes that writes calls down.
struct Recorder {
  std::string name;        // what a log calls this object
  CallLog* log = nullptr;  // not owned

 protected:
  template <class... Arguments>
  void Record(const char* operation, const Arguments&... arguments) const {
    if (log == nullptr) return;
    std::string call = name + "." + operation + "(";
    ((call += (call.back() == '(' ? "" : ",") + Show(arguments)), ...);
    call += ")";
    log->Add(call);
  }
  static bool VisitAll(const EntryList& entries, const Visitor& visitor) {
    return std::any_of(entries.begin(), entries.end(), std::cref(visitor));
  }

 private:
  static std::string Show(const ustring& text) { return Printed(text); }
  static std::string Show(const AbsoluteIRI& iri) { return Printed(iri.toString()); }
  static std::string Show(const CanonicalAbsoluteIRI& iri) {
    const bool isPlain = iri == CanonicalAbsoluteIRI(iri, u"");
    return Printed(iri.toString()) + (isPlain ? "" : " and more");
  }
  static std::string Show(const Visitor& /*visitor*/) { return "visitor"; }
  static std::string Show(Policy policy) { return std::to_string(static_cast<int>(policy)); }
  static std::string Show(Scope scope) {
    std::string kinds;
    for (const std::uint32_t kind : scope) kinds += "," + std::to_string(kind);
    return "{" + kinds.erase(0, 1) + "}";
  }
  static std::string Show(const Target& target) {
    std::string shown = Printed(target.GetName());
    for (const ustring& extension : target.GetExtensions()) shown += "|" + Printed(extension);
    return shown;
  }
  static std::string Show(const IPathEntry& entry) {
    const auto* known = dynamic_cast<const Recorder*>(&entry);
    return known != nullptr ? known->name : "?";
  }
};

/// `entry` as it may be put into its own lists without owning itself.
template <class Entry>
EntryPointer Unowned(const std::shared_ptr<Entry>& entry) {
  return {EntryPointer(), entry.get()};
}

/// Both traversals visit `visited` as it stands, whatever the scope.
struct FakeEntry : IPathEntry, Recorder {
  FakeEntry(std::string printedName, const ustring& location, CallLog* callLog = nullptr)
      : Recorder{std::move(printedName), callLog}, iri(location) {}

  AbsoluteIRI iri;      // both as given and canonical
  ustring furtherText;  // of the canonical one
  PathEntryType type = PathEntryType::Ordinary;
  ItemList items;
  ItemPointer foundItem;
  EntryPointer singleA, singleB;
  EntryList listA, listB, listC, visited;
  NameComparator comparator = std::equal_to<>();

  PathEntryType GetPathEntryType() const override { return Record(__func__), type; }
  SharedItemList GetItems() const override { return Record(__func__), Share(items); }
  CanonicalAbsoluteIRI GetCanonicalAbsoluteIRI() const override {
    return Record(__func__), CanonicalAbsoluteIRI(iri, furtherText);
  }
  AbsoluteIRI GetAbsoluteIRI() const override { return Record(__func__), iri; }
  EntryPointer GetSingleSubfolderEntryA() const override { return Record(__func__), singleA; }
  EntryPointer GetSingleSubfolderEntryB() const override { return Record(__func__), singleB; }
  SharedEntryList GetSubfolderEntriesA() const override { return Record(__func__), Share(listA); }
  SharedEntryList GetSubfolderEntriesB() const override { return Record(__func__), Share(listB); }
  SharedEntryList GetSubfolderEntriesC() const override { return Record(__func__), Share(listC); }
  ItemPointer FindItem(const Target& target, Policy policy) const override {
    return Record(__func__, target, policy), foundItem;
  }
  ItemList FindItems(const Target& target, Policy policy) const override {
    return Record(__func__, target, policy), ItemList();
  }
  bool ForEachEntryInScope(Scope scope, const Visitor& visit) const override {
    return Record(__func__, scope, visit), VisitAll(visited, visit);
  }
  bool ConcurrentForEachEntryInScope(Scope scope, const Visitor& visit) const override {
    return Record(__func__, scope, visit), VisitAll(visited, visit);
  }
  std::shared_ptr<NameComparator> GetFilenameComparator(Policy policy) const override {
    return Record(__func__, policy), std::make_shared<NameComparator>(comparator);
  }

 private:
  template <class List>
  static std::shared_ptr<const List> Share(const List& list) {
    return std::make_shared<const List>(list);
  }
};

/// Lists and visits `listed`, whatever it is asked for; an entry is on the path when it is in
/// `held`; what a map does not hold is answered with null.
struct FakePath : IPath, Recorder {
  explicit FakePath(std::string printedName, CallLog* callLog = nullptr)
      : Recorder{std::move(printedName), callLog} {}

  SharedEntryList mainEntries = std::make_shared<const EntryList>();
  EntryList listed;
  std::map<const IPathEntry*, EntryPointer> mainEntryFor, parentEntryFor;
  std::map<ustring, EntryPointer> entryByCanonicalIRI, entryByIRI;  // by the IRI's text
  OptionalFile firstFound;
  FileList allFound;
  bool firstIsBeforeSecond = false;
  std::set<const IPathEntry*> held;

  SharedEntryList GetMainEntries() const override { return Record(__func__), mainEntries; }
  EntryList GetMethodEntries() const override { return Record(__func__), listed; }
  EntryList GetMethodEntriesByName(Scope scope, const ustring& n, Policy p) const override {
    return Record(__func__, scope, n, p), listed;
  }
  EntryList GetPartiallyMatchingEntries(Scope scope, const ustring& n, Policy p) const override {
    return Record(__func__, scope, n, p), listed;
  }
  EntryPointer GetMainEntryForEntry(const IPathEntry& entry) const override {
    return Record(__func__, entry), Answer(mainEntryFor, &entry);
  }
  EntryPointer GetParentEntryForEntry(const IPathEntry& entry) const override {
    return Record(__func__, entry), Answer(parentEntryFor, &entry);
  }
  EntryPointer GetPathEntryFromAbsoluteIRI(const CanonicalAbsoluteIRI& iri) const override {
    return Record(__func__, iri), Answer(entryByCanonicalIRI, iri.toString());
  }
  EntryPointer GetPathEntryFromAbsoluteIRI(const AbsoluteIRI& iri, Policy policy) const override {
    return Record(__func__, iri, policy), Answer(entryByIRI, iri.toString());
  }
  OptionalFile FindFirstInScope(Scope scope, const Target& target, Policy p) const override {
    return Record(__func__, scope, target, p), firstFound;
  }
  FileList FindAllInScope(Scope scope, const Target& target, Policy p) const override {
    return Record(__func__, scope, target, p), allFound;
  }
  bool ForEachEntry(Scope scope, const Visitor& visitor) const override {
    return Record(__func__, scope, visitor), VisitAll(listed, visitor);
  }
  bool ConcurrentForEachEntry(Scope scope, const Visitor& visitor) const override {
    return Record(__func__, scope, visitor), VisitAll(listed, visitor);
  }
  bool FirstEntryIsBeforeSecondOnPath(const IPathEntry& a, const IPathEntry& b) const override {
    return Record(__func__, a, b), firstIsBeforeSecond;
  }
  bool IsEntryOnPath(const IPathEntry& entry) const override {
    return Record(__func__, entry), held.contains(&entry);
  }

 private:
  template <class Map, class Key>
  static EntryPointer Answer(const Map& answers, const Key& key) {
    const auto answer = answers.find(key);
    return answer == answers.end() ? nullptr : answer->second;
  }
};

/// Holds `entries`, lists them whatever is asked for, and finds a file in each.
inline std::shared_ptr<FakePath> MakePart(const std::string& name, const EntryList& entries,
                                          CallLog* log) {
  auto part = std::make_shared<FakePath>(name, log);
  part->mainEntries = std::make_shared<const EntryList>(entries);
  part->listed = entries;
  for (const EntryPointer& entry : entries) {
    const AbsoluteIRI& iri = dynamic_cast<const FakeEntry&>(*entry).iri;
    part->held.insert(entry.get());
    part->mainEntryFor[entry.get()] = entries.front();
    part->entryByCanonicalIRI[iri.toString()] = entry;
    part->allFound.emplace_back(std::make_shared<PathItem>(iri, u"fn", u".x"), entry);
  }
  return part;
}

/// Every folder is below `above`, except "fails" and a unit, which fails with that code.
struct FakeWorkingFolder : current_working_folder::ICurrentWorkingFolder, Recorder {
  explicit FakeWorkingFolder(CallLog* callLog = nullptr) : Recorder{"cwf", callLog} {}

  ustring above = u"/";
  std::optional<AbsoluteIRI> everything;  // the answer to all other folders, if it is there

  AbsoluteIRI absolutize(const ustring& folder) const override {
    using namespace current_working_folder;
    Record(__func__, folder);
    if (folder.starts_with(u"fails")) {
      throw FailedToAbsolutizeException(AbsolutizeError{folder.back()});
    }
    if (everything) return *everything;
    return foundation::storage::vfs::toAbsoluteIRI(u"file", above + folder);
  }
};

// Answers in short: "ab" for the entries a and b or for files in them, "-" for nothing.
inline std::string Names(bool answer) { return answer ? "yes" : "no"; }
inline std::string Names(const EntryPointer& entry) {
  return entry == nullptr ? "-" : dynamic_cast<const FakeEntry&>(*entry).name;
}
inline std::string Names(const FoundItem& found) { return Names(found.GetPathEntry()); }
inline std::string Names(const OptionalFile& found) { return found ? Names(*found) : "-"; }
template <class Element>
std::string Names(const std::vector<Element>& list) {
  std::string names;
  for (const Element& element : list) names += Names(element);
  return list.capacity() == list.size() ? names : names + " and spare room";
}
inline std::string Names(const SharedEntryList& list) { return list ? Names(*list) : "no list"; }

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_SUPPORT_RECORDING_H
