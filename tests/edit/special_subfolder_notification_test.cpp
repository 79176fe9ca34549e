#include "searchpath/utilities/special_subfolder_notification.h"

#include "searchpath/platform/event_manager.h"
#include "searchpath/platform/file_folder_changed_event.h"
#include "support/temporary_tree.h"
#include "support/text_table.h"

#include <functional>

namespace Corvane::PathManagement {
namespace {

using namespace test;
using namespace foundation::msg_svc::eventmgr;
using storage::filefolderobserver::FileFolderChangedEvent;

/// Notes what is published while it lives, each location after a blank.
struct SpecialSubfolderNotificationTest : testing::Test {
  ustring events;
  std::function<void()> onEvent = [] {};
  Subscription subscription =
      createLocalEventMgr(SessionEmId)->subscribe([this](const Event& event) {
        const auto& changed = dynamic_cast<const FileFolderChangedEvent&>(event);
        EXPECT_EQ(static_cast<int>(changed.GetInclusion()), 0);
        events += u" " + changed.GetLocation();
        onEvent();
      });

  ustring Notify(const AbsoluteIRI& location) {
    NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChanges(location);
    return std::exchange(events, {});
  }
  ustring NotifyCanonicalized(const AbsoluteIRI& location) {
    NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesAndCanonicalize(location);
    return std::exchange(events, {});
  }
  /// Lets the event numbered `failing`, from 1, throw.
  template <class Exception>
  void FailAt(int failing, const Exception& exception) {
    onEvent = [=]() mutable {
      if (--failing == 0) throw exception;
    };
  }
};

TEST_F(SpecialSubfolderNotificationTest, PublishesUpToTheFirstOrdinaryFolder) {
  const std::vector<ustring> rows = {
      u"file:///lib => file:///lib",
      u"file:///lib/f.x => file:///lib/f.x file:///lib",
      u"file:///lib/.f => file:///lib/.f file:///lib",
      u"file:///lib/+p/@c/private/f.x => file:///lib/+p/@c/private/f.x file:///lib/+p/@c/private "
      u"file:///lib/+p/@c file:///lib/+p file:///lib",
      u"file:///lib/+p.q/resources => file:///lib/+p.q/resources file:///lib/+p.q file:///lib",
      u"file:///a.b/f.x => file:///a.b/f.x file:///a.b",
      u"file:///lib/privateX => file:///lib/privateX",
      u"file:///lib/res => file:///lib/res",
      u"file:///+p/@c => file:///+p/@c file:///+p file:///",
      u"file:/// => file:///",
      u"file:///lib/x/../%2Bp => file:///lib/+p file:///lib",
      u"http://host/+p => http://host/+p http://host/",
  };
  ExpectTable(rows, [&](const ustring& text) { return Notify(AbsoluteIRI(text)).substr(1); });
  EXPECT_EQ(Notify(AbsoluteIRI(u"file:///../+p")), u"");
}

TEST_F(SpecialSubfolderNotificationTest, PublishesCanonicalLocationsWhileThereAreSome) {
  const TemporaryTree tree;
  tree.File("lib/+p/f.x");
  tree.Link("lib/+p", "link");
  const auto at = [&](const char* name) { return u" " + tree.IRI(name).toString(); };
  EXPECT_EQ(NotifyCanonicalized(tree.IRI("link/f.x")), at("lib/+p/f.x") + at("lib/+p") + at("lib"));
  EXPECT_EQ(NotifyCanonicalized(tree.IRI("link/gone.x")), at("link/gone.x") + at("link"));
}

TEST_F(SpecialSubfolderNotificationTest, StorageErrorsOfSubscribersEndAWalk) {
  namespace vfs = foundation::storage::vfs;
  const AbsoluteIRI folder(u"http://host/lib/+p");  // canonical as it is
  const ustring inner = u" http://host/lib/+p", whole = inner + u" http://host/lib";
  FailAt(1, vfs::InvalidIRIException());
  EXPECT_EQ(Notify(folder), inner);
  FailAt(2, vfs::InvalidIRIException());
  EXPECT_EQ(NotifyCanonicalized(folder), whole + whole);
  FailAt(1, vfs::Exception());
  EXPECT_EQ(NotifyCanonicalized(folder), inner + whole);
  FailAt(1, vfs::Exception());
  EXPECT_THROW(Notify(folder), vfs::Exception);
  FailAt(1, std::runtime_error(""));
  EXPECT_THROW(NotifyCanonicalized(folder), std::runtime_error);
  EXPECT_EQ(std::exchange(events, {}), inner + inner);
}

}  // namespace
}  // namespace Corvane::PathManagement
