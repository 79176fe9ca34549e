#ifndef SEARCHPATH_TESTS_SUPPORT_NAIVE_PATH_H
#define SEARCHPATH_TESTS_SUPPORT_NAIVE_PATH_H

#include "support/recording.h"

#include <optional>

namespace Corvane::PathManagement::test {

/// All three composites in one, each operation done the slow and obvious way.
struct NaivePath : IPath {
  enum Kind : char { Concatenated, Deduplicated, Filtered };
  using Parts = std::vector<std::shared_ptr<const IPath>>;

  NaivePath(Kind pathKind, Parts pathParts) : kind(pathKind), parts(std::move(pathParts)) {
    if (kind != Filtered) return;
    hidden = parts.back();
    parts.pop_back();
  }

  Kind kind;
  Parts parts;                                         // of a filter, the source alone
  std::shared_ptr<const IPath> hidden;                 // of a filter alone
  mutable std::optional<SharedEntryList> mainEntries;  // once it is built

  SharedEntryList GetMainEntries() const override {
    EntryList joined;
    Keys seen;
    for (std::size_t at = 0; !mainEntries && at < parts.size(); ++at) {
      if (const auto entries = parts[at]->GetMainEntries()) Append(*entries, joined, seen);
    }
    if (!mainEntries) mainEntries = std::make_shared<const EntryList>(std::move(joined));
    return *mainEntries;
  }
  EntryList GetMethodEntries() const override { return Join(&IPath::GetMethodEntries); }
  EntryList GetMethodEntriesByName(Scope scope, const ustring& n, Policy how) const override {
    return Join(&IPath::GetMethodEntriesByName, scope, n, how);
  }
  EntryList GetPartiallyMatchingEntries(Scope scope, const ustring& n, Policy how) const override {
    return Join(&IPath::GetPartiallyMatchingEntries, scope, n, how);
  }
  EntryPointer GetMainEntryForEntry(const IPathEntry& entry) const override {
    return Shown(Holder(entry).GetMainEntryForEntry(entry));
  }
  EntryPointer GetParentEntryForEntry(const IPathEntry& entry) const override {
    return Shown(Holder(entry).GetParentEntryForEntry(entry));
  }
  EntryPointer GetPathEntryFromAbsoluteIRI(const CanonicalAbsoluteIRI& iri) const override {
    return First([&](const IPath& part) { return part.GetPathEntryFromAbsoluteIRI(iri); });
  }
  EntryPointer GetPathEntryFromAbsoluteIRI(const AbsoluteIRI& iri, Policy how) const override {
    const bool isExact = kind != Filtered;
    if (auto entry = isExact ? GetPathEntryFromAbsoluteIRI({iri, u""}) : nullptr) return entry;
    return First([&](const IPath& part) { return part.GetPathEntryFromAbsoluteIRI(iri, how); });
  }
  OptionalFile FindFirstInScope(Scope scope, const Target& target, Policy how) const override {
    for (const auto& part : parts) {
      auto first = part->FindFirstInScope(scope, target, how);
      if (first && !Hides(*first->GetPathEntry())) return first;
      if (!first) continue;
      for (const FoundItem& found : part->FindAllInScope(scope, target, how)) {
        if (!Hides(*found.GetPathEntry())) return found;
      }
    }
    return boost::none;
  }
  FileList FindAllInScope(Scope scope, const Target& target, Policy how) const override {
    return Join(&IPath::FindAllInScope, scope, target, how);
  }
  bool ForEachEntry(Scope scope, const Visitor& visitor) const override {
    return Visit(&IPath::ForEachEntry, scope, visitor);
  }
  bool ConcurrentForEachEntry(Scope scope, const Visitor& visitor) const override {
    const bool inOrder = kind == Deduplicated;
    return Visit(inOrder ? &IPath::ForEachEntry : &IPath::ConcurrentForEachEntry, scope, visitor);
  }
  bool FirstEntryIsBeforeSecondOnPath(const IPathEntry& a, const IPathEntry& b) const override {
    if (kind == Filtered) return parts[0]->FirstEntryIsBeforeSecondOnPath(a, b);
    for (const auto& part : parts) {
      const bool holdsA = part->IsEntryOnPath(a);
      const bool holdsB = part->IsEntryOnPath(b);
      if (holdsA && holdsB) return part->FirstEntryIsBeforeSecondOnPath(a, b);
      if (holdsA || holdsB) return holdsA;
    }
    return false;
  }
  bool IsEntryOnPath(const IPathEntry& entry) const override {
    const auto holds = [&](const auto& part) { return part->IsEntryOnPath(entry); };
    return std::ranges::any_of(parts, holds) && !Hides(entry);
  }

 private:
  using Keys = std::vector<ustring>;

  static const IPathEntry& EntryOf(const EntryPointer& entry) { return *entry; }
  static const IPathEntry& EntryOf(const FoundItem& found) { return *found.GetPathEntry(); }
  static ustring Key(const EntryPointer& entry) {
    return entry->GetCanonicalAbsoluteIRI().toString();
  }
  static ustring Key(const FoundItem& found) {
    const ItemPointer item = found.GetPathItem();
    return item->GetLocation().toString() + u' ' + item->GetName() + item->GetExtension();
  }

  bool Hides(const IPathEntry& entry) const { return hidden && hidden->IsEntryOnPath(entry); }
  EntryPointer Shown(const EntryPointer& entry) const {
    return entry == nullptr || Hides(*entry) ? nullptr : entry;
  }
  const IPath& Holder(const IPathEntry& entry) const {
    std::size_t at = 0;
    while (kind != Filtered && !parts[at]->IsEntryOnPath(entry)) ++at;
    return *parts[at];
  }
  template <class Ask>
  EntryPointer First(const Ask& ask) const {
    for (const auto& part : parts) {
      if (const EntryPointer entry = ask(*part)) return Shown(entry);
    }
    return nullptr;
  }
  template <class Element>
  bool Shows(const Element& element, Keys& seen) const {
    if (kind != Deduplicated) return !Hides(EntryOf(element));
    seen.push_back(Key(element));
    return std::count(seen.begin(), seen.end(), seen.back()) == 1;
  }
  template <class List>
  void Append(const List& list, List& joined, Keys& seen) const {
    for (const auto& element : list) {
      if (Shows(element, seen)) joined.push_back(element);
    }
    joined.shrink_to_fit();
  }
  template <class List, class... P, class... A>
  List Join(List (IPath::*list)(P...) const, const A&... arguments) const {
    List joined;
    Keys seen;
    for (const auto& part : parts) Append((part.get()->*list)(arguments...), joined, seen);
    return joined;
  }
  bool Visit(bool (IPath::*visit)(Scope, const Visitor&) const, Scope scope,
             const Visitor& visitor) const {
    if (kind == Deduplicated && mainEntries && *mainEntries && !(*mainEntries)->empty()) {
      return std::ranges::any_of(**mainEntries, [&](const EntryPointer& entry) {
        return entry->ForEachEntryInScope(scope, visitor);
      });
    }
    Keys seen;
    const Visitor shown = [&](const auto& entry) { return Shows(entry, seen) && visitor(entry); };
    return std::ranges::any_of(
        parts, [&](const auto& part) { return (part.get()->*visit)(scope, shown); });
  }
};

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_SUPPORT_NAIVE_PATH_H
