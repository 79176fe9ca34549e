#ifndef SEARCHPATH_TESTS_ROBUSTNESS_HOST_OPERATIONS_H
#define SEARCHPATH_TESTS_ROBUSTNESS_HOST_OPERATIONS_H

#include "searchpath/host.h"
#include "searchpath/platform/file_folder_changed_event.h"
#include "searchpath/utilities/iri_conversion.h"
#include "support/recording.h"
#include "support/temporary_tree.h"

#include <mutex>
#include <set>
#include <sstream>

namespace Corvane::PathManagement::test {

/// A small tree of real folders and an environment that has not looked at them yet.
class HostWorld {
 public:
  HostWorld() {
    tree.Files({"lib/fn.zt", "lib/two.y", "lib/private/fn.zt", "lib/+package/@class/method.zt",
                "lib/@fn/fn.zt", "lib/resources/data", "other/FN.zt",
                "other/a-name-that-touches-the-heap.zt"});
    tree.Link("..", "lib/+package/+loop");
    Renew();
  }
  void Renew() { environment = std::make_unique<const host::Environment>(folders); }
  void Forget() { environment.reset(); }

  const host::Environment* operator->() const { return environment.get(); }

  TemporaryTree tree;
  std::vector<ustring> folders = {tree.Text("lib"), tree.Text("absent"), tree.Text("other")};
  std::unique_ptr<const host::Environment> environment;
};

inline std::vector<ustring> Texts(const std::vector<FoundItem>& files) {
  std::vector<ustring> texts;
  for (const FoundItem& file : files) texts.push_back(host::GetNativePath(file));
  return texts;
}

/// As `ForEachPathOperation`: each row leads to the first listing of folders. Answers are texts,
/// since the entries of each environment are others.
template <class Visit>
void ForEachHostOperation(const Visit& visit) {
  using W = const HostWorld&;
  for (const auto policy : {Policy::CaseSensitive, Policy::IgnoreCase}) {
    for (const ustring name : {u"fn.zt", u"lib/fn", u"package/class/method.zt", u"no such file"}) {
      const host::Lookup lookup{.name = name, .extensions = {u".y", u".zt"}, .policy = policy};
      visit("Find", [lookup](W w) {
        const auto found = w->Find(lookup);
        return found ? host::GetNativePath(*found) : ustring();
      });
      visit("FindAll", [lookup](W w) { return Texts(w->FindAll(lookup)); });
    }
  }
  visit("Find from a folder", [](W w) {
    return host::GetNativePath(w->Find({.name = u"fn.zt", .fromFolder = w.folders[0]}).value());
  });
  visit("FindMatching", [](W w) {
    const auto names = w->FindMatching({.name = u"[e-g]*", .policy = Policy::IgnoreCase});
    return Texts(names.at(0).files);
  });
  visit("FindProblems", [](W w) {
    // What is known of problems grows with what has been listed: after this question, all is.
    const auto& path = *w->GetPath();
    static_cast<void>(path.GetParentEntryForEntry(*path.GetMainEntries()->front()));
    return w->FindProblems().size();
  });
  visit("make an environment", [](W w) {
    const host::Environment made({.folders = {w.tree.Text()},
                                  .expansion = host::FolderExpansion::Recursive,
                                  .without = {w.folders[2]}});
    return made.GetPath()->GetMainEntries()->size() + made.FindIdleExclusions().size();
  });
  visit("FindShadows", [](W w) {
    const auto report = w->FindShadows({.policy = Policy::IgnoreCase, .allowed = {u"none"}});
    return Texts({report.shadows.at(0).winner, report.shadows.at(0).hidden.at(0).file});
  });
  visit("Examine", [](W w) { return w->Examine().size(); });
  visit("FindFolders", [](W w) {
    return w->FindFolders({.name = u"package/class"}).size() +
           w->FindSimilarFolders({.name = u"PACKAGE"}).size();
  });
  visit("write a cache and answer from it", [](W w) {
    std::stringstream stream;
    stream.exceptions(std::ios_base::failbit | std::ios_base::badbit);
    host::PathEntryFactory(w->GetMainFolders()).WriteEntries(stream, w.tree.IRI());
    host::PathEntryFactory cache(host::ListingUse::AsSaved);
    cache.ReadEntries(stream, w.tree.IRI());
    return Texts(host::Environment(cache).FindAll({.name = u"fn.zt"}));
  });
  visit("ConcurrentForEachEntry", [](W w) {
    std::mutex mutex;  // guards visited
    std::multiset<ustring> visited;
    w->GetPath()->ConcurrentForEachEntry(kAllKindsAndResourcesScope, [&](const auto& entry) {
      const std::lock_guard lock(mutex);
      return visited.insert(GetStringFromIRI(entry->GetCanonicalAbsoluteIRI())), false;
    });
    return visited;
  });
  visit("GetItems", [](W w) {
    const auto items = w->GetPath()->GetMainEntries()->front()->GetItems();
    return items->at(0)->GetName() + u" " + items->at(1)->GetName();
  });
  visit("an observer takes an event", [](W w) {
    using namespace foundation::msg_svc::eventmgr;
    using namespace storage::filefolderobserver;
    host::MainSearchPathManager manager(w->GetMainFolders());
    const auto events = createLocalEventMgr(EventMgrId{1});
    host::FolderObserver observer(manager, *events);
    events->publish(std::make_unique<FileFolderChangedEvent>(w.tree.IRI("lib").toString(),
                                                             FrozenInclusion::LocationItself));
    observer.Settle();
    return manager.GetPath()->GetMainFolders().front()->GetSpecialFolders().size();
  });
  visit("absolutize", [](W w) { return w->GetWorkingFolder().absolutize(w.folders[0]); });
}

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_ROBUSTNESS_HOST_OPERATIONS_H
