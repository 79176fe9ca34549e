#ifndef SEARCHPATH_TESTS_ROBUSTNESS_EDIT_OPERATIONS_H
#define SEARCHPATH_TESTS_ROBUSTNESS_EDIT_OPERATIONS_H

#include "searchpath/platform/event_manager.h"
#include "searchpath/utilities/packages_on_path.h"
#include "searchpath/utilities/path_editing.h"
#include "searchpath/utilities/special_subfolder_notification.h"
#include "support/recording_manager.h"

namespace Corvane::PathManagement::test {

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
      std::vector<ustring> result = {Names(*w.manager.folders)};
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

#endif  // SEARCHPATH_TESTS_ROBUSTNESS_EDIT_OPERATIONS_H
