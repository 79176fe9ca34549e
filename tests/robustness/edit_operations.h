#ifndef SEARCHPATH_TESTS_ROBUSTNESS_EDIT_OPERATIONS_H
#define SEARCHPATH_TESTS_ROBUSTNESS_EDIT_OPERATIONS_H

#include "searchpath/platform/event_manager.h"
#include "searchpath/utilities/packages_on_path.h"
#include "searchpath/utilities/path_editing.h"
#include "searchpath/utilities/special_subfolder_notification.h"
#include "support/recording_manager.h"

namespace Corvane::PathManagement::test {

/// A path of a few folders, what may be added to it, and somebody who hears of changes.
class EditWorld {
 public:
  explicit EditWorld(CallLog* callLog = nullptr)
      : log(callLog), cwf(callLog), manager(callLog), registry(callLog) {
    cwf.failures = {{u"absent", 4}};
    for (const ustring name : {u"root-only", u"with-folders"}) {
      const AbsoluteIRI root(u"file:///a-package/" + name);
      auto& package = registry.packages[name] = std::make_shared<FakePackage>(
          Printed(name), PackageRegistry::PackageMetadata{true, false, root}, callLog);
      package->folders = {{root, std::make_shared<const std::set<int>>(std::set<int>{0})}};
    }
    registry.packages[u"root-only"]->properties = {{u"IsQRX", true}};
    Renew();
  }

  void Renew() {
    namespace events = foundation::msg_svc::eventmgr;
    manager.folders = path;
    manager.packages = packages;
    subscription =
        events::createLocalEventMgr(events::SessionEmId)->subscribe([this](const events::Event&) {
          if (log != nullptr) log->Add("handler");
        });
  }
  void Forget() {
    manager.folders = path;
    manager.packages = {};
    subscription = {};
  }

  /// The manager with the world's own path, whatever has been done to it.
  FakeManager& Manager() {
    manager.folders = path;
    return manager;
  }

  /// What an edit answers, in the words of its messages, with the path that comes of it.
  std::vector<ustring> Result(const Notification& notification) const {
    std::vector<ustring> result = {Names(*manager.folders)};
    for (const auto& message : notification.GetMessages()) result.push_back(GetText(message));
    return result;
  }

  CallLog* log;
  const IRIList all = {AbsoluteIRI(u"file:///a"), AbsoluteIRI(u"file:///b"),
                       AbsoluteIRI(u"file:///a"), AbsoluteIRI(u"file:///a-folder-not-on-it")};
  const std::shared_ptr<const IRIList> path =
      std::make_shared<const IRIList>(all.begin(), all.begin() + 3);
  const std::vector<ustring> typed = {u"a", u"b", u"c"}, oneAbsent = {u"a", u"absent"};
  const std::vector<ComponentIdentifier> packages = {
      {u"absent", u""}, {u"root-only", u""}, {u"with-folders", u""}};
  FakeWorkingFolder cwf;
  FakeManager manager;
  FakeRegistry registry;
  foundation::msg_svc::eventmgr::Subscription subscription;
};

/// As `ForEachPathOperation`.
template <class Visit>
void ForEachEditOperation(const Visit& visit) {
  using W = EditWorld&;
  const AbsoluteIRI location(u"file:///bin/+package/@class/file.x");
  for (const auto at : {Position::Begin, Position::End}) {
    visit("add typed",
          [at](W w) { return w.Result(AddFoldersToZentraPath(w.typed, w.cwf, w.Manager(), at)); });
    visit("add", [at](W w) { return w.Result(AddIRIsToZentraPath(w.all, w.Manager(), at)); });
  }
  visit("add absent", [](W w) {
    return w.Result(AddFoldersToZentraPath(w.oneAbsent, w.cwf, w.Manager(), Position::End));
  });
  visit("remove typed",
        [](W w) { return w.Result(RemoveFoldersFromZentraPath(w.oneAbsent, w.cwf, w.Manager())); });
  visit("remove", [](W w) { return w.Result(RemoveIRIsFromZentraPath(w.all, w.Manager())); });
  visit("is on path", [](W w) { return PackageIsOnPath(w.packages.back(), w.manager); });
  visit("packages", [](W w) { return GetPathFoldersForPackages(w.registry, w.packages); });
  visit("notify", [location](W) {
    return NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChanges(location), true;
  });
  visit("notify canonicalized", [location](W) {
    NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesAndCanonicalize(location);
    return true;
  });
}

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_ROBUSTNESS_EDIT_OPERATIONS_H
