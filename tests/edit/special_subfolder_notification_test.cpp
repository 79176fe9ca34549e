#include "searchpath/utilities/special_subfolder_notification.h"

#include "searchpath/platform/event_manager.h"
#include "searchpath/platform/file_folder_changed_event.h"
#include "support/temporary_tree.h"
#include "support/text_table.h"

namespace Corvane::PathManagement {
namespace {

using namespace test;
using storage::filefolderobserver::FileFolderChangedEvent;
namespace vfs = foundation::storage::vfs;

constexpr auto& kPlain = NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChanges;
constexpr auto& kCanonical =
    NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesAndCanonicalize;

/// What `notify` publishes, each location after a blank. The event numbered `failing`, from 1,
/// throws, and "threw" stands for what arrives of that.
template <class Exception = vfs::Exception>
ustring HeardOf(decltype(kPlain) notify, const AbsoluteIRI& location, int failing = 0) {
  using namespace foundation::msg_svc::eventmgr;
  ustring heard;
  const auto subscription = createLocalEventMgr(SessionEmId)->subscribe([&](const Event& event) {
    const auto& changed = dynamic_cast<const FileFolderChangedEvent&>(event);
    EXPECT_EQ(static_cast<int>(changed.GetInclusion()), 0);
    heard += u" " + changed.GetLocation();
    if (--failing == 0) throw Exception("");
  });
  try {
    notify(location);
  } catch (const Exception&) {
    heard += u" threw";
  }
  return heard;
}

TEST(SpecialSubfolderNotificationTest, PublishesUpToTheFirstOrdinaryFolder) {
  const std::vector<ustring> rows = {
      u"file:///lib =>  file:///lib",
      u"file:///lib/f.x =>  file:///lib/f.x file:///lib",
      u"file:///l/+p/@c/private/.f =>  file:///l/+p/@c/private/.f file:///l/+p/@c/private "
      u"file:///l/+p/@c file:///l/+p file:///l",
      u"file:///lib/+p.q/resources =>  file:///lib/+p.q/resources file:///lib/+p.q file:///lib",
      u"file:///a.b/privateX =>  file:///a.b/privateX",
      u"file:///lib/res =>  file:///lib/res",
      u"file:///+p/@c =>  file:///+p/@c file:///+p file:///",
      u"http://host/x/../+p =>  http://host/+p http://host/",
      u"file:///../+p => ",
  };
  ExpectTable(rows, [](const ustring& text) { return HeardOf(kPlain, AbsoluteIRI(text)); });
}

TEST(SpecialSubfolderNotificationTest, PublishesCanonicalLocationsUntilAStorageError) {
  const TemporaryTree tree;
  tree.File("lib/+p/f.zt");
  tree.Link("lib/+p", "link");
  const auto at = [&](const char* name) { return u" " + tree.IRI(name).toString(); };
  const ustring whole = at("lib/+p/f.zt") + at("lib/+p") + at("lib"), plain = at("link/f.zt");
  const AbsoluteIRI file = tree.IRI("link/f.zt");
  EXPECT_EQ(HeardOf(kCanonical, file), whole);
  EXPECT_EQ(HeardOf(kCanonical, tree.IRI("link/gone.zt")), at("link/gone.zt") + at("link"));
  EXPECT_EQ(HeardOf(kCanonical, file, 3), whole + plain + at("link"));
  EXPECT_EQ(HeardOf<std::runtime_error>(kCanonical, file, 1), at("lib/+p/f.zt") + u" threw");
  EXPECT_EQ(HeardOf<vfs::InvalidIRIException>(kPlain, file, 1), plain);
  EXPECT_EQ(HeardOf(kPlain, file, 1), plain + u" threw");
}

}  // namespace
}  // namespace Corvane::PathManagement
