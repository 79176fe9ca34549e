#ifndef SEARCHPATH_TESTS_SUPPORT_PATH_PROGRAMS_H
#define SEARCHPATH_TESTS_SUPPORT_PATH_PROGRAMS_H

#include "searchpath/utilities/deduplicated_path.h"
#include "searchpath/utilities/filtered_path.h"
#include "support/naive_path.h"

#include <span>

namespace Corvane::PathManagement::test {

/// Programs of bytes that nest composites over three fake paths and ask them; every answer, and
/// every call of a fake on the way to it, is compared with those of naive composites.
class PathPrograms {
 public:
  PathPrograms() {
    // Six entries for four folders; each visits itself and the first, but the third visits nothing.
    for (const char16_t folder : {u'a', u'b', u'c', u'd', u'a', u'b'}) {
      const std::string name(1, static_cast<char>('a' + entries.size()));
      entries.push_back(std::make_shared<FakeEntry>(name, u"file:///" + ustring(1, folder), &log));
      entries.back()->furtherText = name > "c" ? u"further" : u"";
      if (name != "c")
        entries.back()->visited = {Unowned(entries.back()), Unowned(entries.front())};
    }
  }

  /// Runs `bytes`; what went wrong first, "" when nothing did.
  std::string Run(std::span<const std::uint8_t> bytes) {
    program = bytes;
    nodes.clear();
    for (const char* name : {"p", "q", "r"}) AddLeaf(name);
    std::string problem;
    while (problem.empty() && !program.empty()) {
      const std::size_t statement = nodes.size() < 10 ? Below(16) : 15;
      if (statement < 6) {
        AddComposite(static_cast<NaivePath::Kind>(statement / 2));
      } else if (statement < 8) {
        const Node node = AnyNode();
        const bool isCopy = statement == 6;
        if (!CopyOrMove<DeduplicatedPath>(node, isCopy)) CopyOrMove<ConcatenatedPath>(node, isCopy);
      } else {
        problem = Ask(AnyNode());
      }
    }
    return problem;
  }

 private:
  struct Node {
    std::shared_ptr<IPath> real, naive;  // the same object for a leaf
  };

  std::size_t Below(std::size_t limit) {
    if (program.empty()) return 0;
    const std::size_t choice = program.front() % limit;
    program = program.subspan(1);
    return choice;
  }
  /// 0 is the newest, so that nestings grow.
  Node AnyNode() { return nodes[nodes.size() - 1 - Below(nodes.size())]; }
  std::shared_ptr<FakeEntry> AnyEntry() { return entries[Below(entries.size())]; }

  void AddLeaf(const char* name) {
    EntryList list(Below(4));
    for (EntryPointer& entry : list) entry = AnyEntry();
    const auto leaf = MakePart(name, list, &log);
    const auto entry = AnyEntry();
    const auto other = AnyEntry();
    leaf->parentEntryFor[entry.get()] = leaf->entryByIRI[entry->iri.toString()] = other;
    if (Below(2) == 1) std::reverse(leaf->allFound.begin(), leaf->allFound.end());
    if (!list.empty() && Below(2) == 1) leaf->firstFound = leaf->allFound.front();
    if (Below(8) == 7) leaf->mainEntries = nullptr;  // as of a composite that was moved from
    leaf->firstIsBeforeSecond = Below(2) == 1;
    nodes.push_back({leaf, leaf});
  }

  void AddComposite(NaivePath::Kind kind) {
    NaivePath::Parts real;
    NaivePath::Parts naive;
    const bool isFiltered = kind == NaivePath::Filtered;
    for (std::size_t count = isFiltered ? 2 : (1 + Below(4)) % 4; count > 0; --count) {
      const Node part = AnyNode();
      real.push_back(part.real);
      naive.push_back(part.naive);
    }
    Node made{nullptr, std::make_shared<NaivePath>(kind, naive)};
    if (isFiltered) {
      made.real = std::make_shared<FilteredPath>(real[0], real[1]);
    } else if (kind == NaivePath::Deduplicated) {
      made.real = std::make_shared<DeduplicatedPath>(std::move(real));
    } else {
      made.real = std::make_shared<ConcatenatedPath>(std::move(real));
    }
    nodes.push_back(made);
  }

  /// Whether `node` is a `Path`, now also copied or moved.
  template <class Path>
  bool CopyOrMove(const Node& node, bool isCopy) {
    const auto real = std::dynamic_pointer_cast<Path>(node.real);
    if (real == nullptr) return false;
    auto& naive = dynamic_cast<NaivePath&>(*node.naive);
    nodes.push_back({std::make_shared<Path>(isCopy ? Path(*real) : Path(std::move(*real))),
                     std::make_shared<NaivePath>(naive)});
    if (!isCopy && naive.mainEntries) naive.mainEntries = nullptr;
    return true;
  }

  std::string Ask(const Node& node) {
    const auto entry = AnyEntry();
    const auto other = AnyEntry();
    std::size_t question = Below(16);
    if (question < 2 && !node.naive->IsEntryOnPath(*entry)) question += 2;
    const std::size_t last = Below(8);
    const auto how = static_cast<Policy>(Below(3));
    log.Take();
    const std::string real = Answer(*node.real, question, *entry, *other, last, how);
    const std::string naive = Answer(*node.naive, question, *entry, *other, last, how);
    return real == naive ? "" : "got " + real + "\nnot " + naive;
  }

  std::string Answer(const IPath& path, std::size_t question, const FakeEntry& entry,
                     const FakeEntry& other, std::size_t last, Policy how) {
    Visitor visitor;  // the last is one that is none
    if (last < 7) {
      visitor = [&, count = std::size_t(0)](const EntryPointer& visited) mutable {
        log.Add(Names(visited));
        return count++ == last;
      };
    }
    const auto isBefore = [&] { return path.FirstEntryIsBeforeSecondOnPath(entry, other); };
    const std::function<std::string()> answers[] = {
        [&] { return Names(path.GetMainEntryForEntry(entry)); },
        [&] { return Names(path.GetParentEntryForEntry(entry)); },
        [&] { return Names(path.GetMethodEntries()); },
        [&] { return Names(path.GetMethodEntriesByName(kScope, u"m", how)); },
        [&] { return Names(path.GetPartiallyMatchingEntries(kScope, u"m", how)); },
        [&] { return Names(path.FindAllInScope(kScope, kTarget, how)); },
        [&] { return Names(path.FindFirstInScope(kScope, kTarget, how)); },
        [&] { return Names(path.GetPathEntryFromAbsoluteIRI({entry.iri, entry.furtherText})); },
        [&] { return Names(path.GetPathEntryFromAbsoluteIRI(entry.iri, how)); },
        [&] { return Names(path.IsEntryOnPath(entry)); },
        [&] { return Names(isBefore()); },
        [&] { return Names(path.ForEachEntry(kScope, visitor)); },
        [&] { return Names(path.ForEachEntry(kScope, visitor)); },
        [&] { return Names(path.ConcurrentForEachEntry(kScope, visitor)); }};
    try {
      return log.Take(question < 14 ? answers[question]() : Names(path.GetMainEntries()));
    } catch (const std::bad_function_call&) {
      return log.Take("threw");
    }
  }

  static constexpr std::uint32_t kKind = 3;
  static inline const Scope kScope{&kKind, 1};
  static inline const Target kTarget{u"t"};

  CallLog log;
  std::vector<std::shared_ptr<FakeEntry>> entries;
  std::span<const std::uint8_t> program;  // what is left of it
  std::vector<Node> nodes;
};

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_SUPPORT_PATH_PROGRAMS_H
