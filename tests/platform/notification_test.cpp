#include "searchpath/platform/notification.h"

#include <gtest/gtest.h>

namespace foundation::core::except {
namespace {

TEST(NotificationTest, EachMessageOfTheLibraryHasAText) {
  const std::pair<MessageRecord, ustring> rows[] = {
      {{u"ZENTRA:mpath", u"invalidLocation", {u"x://y"}},
       u"cannot use \"x://y\" as a folder: it is not a pathname or an IRI that names a folder "
       u"here; "
       u"write /folder or file:///folder"},
      {{u"ZENTRA:mpath", u"directoryPermissionDenied", {u"/root"}},
       u"cannot use the folder \"/root\": permission denied; it has to be readable, and so have "
       u"the "
       u"folders above it"},
      {{u"ZENTRA:mpath", u"nameNonexistentOrNotADirectory", {u"a\nb"}},
       u"cannot find a folder \"a\\u000ab\": there is nothing of that name, or no folder; check "
       u"the "
       u"spelling and where links lead"},
      {{u"ZENTRA:mpath", u"directoryNameTooLong", {u"x"}},
       u"cannot use \"x\" as a folder: the name is too long; use a shorter one, or a link to the "
       u"folder"},
      {{u"ZENTRA:rmpath", u"DirNotFound", {u"/a b"}},
       u"cannot remove \"/a b\": it is not on the path; name a folder as the path lists it"},
      {{u"ZENTRA:mpath", u"DirNotFound", {u"a", 7, storage::vfs::AbsoluteIRI(u"file:///x")}},
       u"ZENTRA:mpath:DirNotFound \"a\" 7 \"file:///x\""},
      {{u"ZENTRA:rmpath", u"DirNotFound", {}}, u"ZENTRA:rmpath:DirNotFound"},
  };
  Notification notification;
  EXPECT_TRUE(notification.empty());
  for (const auto& [message, text] : rows) {
    notification.Append(message);
    EXPECT_EQ(GetText(message), text);
    EXPECT_EQ(notification.GetMessages().back(), message);
  }
  EXPECT_EQ(notification.size(), std::size(rows));
}

}  // namespace
}  // namespace foundation::core::except
