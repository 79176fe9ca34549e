#include "searchpath/platform/notification.h"

#include <gtest/gtest.h>

namespace foundation::core::except {
namespace {

TEST(NotificationTest, EachMessageOfTheLibraryHasAText) {
  const ustring add = u"ZENTRA:mpath", remove = u"ZENTRA:rmpath", none = u"DirNotFound";
  const ustring longest(200, u'x');  // that is not cut
  const std::pair<MessageRecord, ustring> rows[] = {
      {{add, u"invalidLocation", {longest}},
       u"no folder here can be called \"" + longest + u"\"; write /folder or file:///folder"},
      {{add, u"directoryPermissionDenied", {u"x"}},
       u"permission denied for the folder \"x\"; it and those above it have to be readable"},
      {{add, u"nameNonexistentOrNotADirectory", {u"a\nb"}},
       u"no folder \"a\\u000ab\"; check the spelling and where links lead"},
      {{add, u"directoryNameTooLong", {longest + u"x"}},
       u"the folder name \"" + longest + u"...\" is too long; use a shorter one or a link"},
      {{remove, none, {u"x"}},
       u"the folder \"x\" is not on the path; name it as the path lists it"},
      {{add, none, {u"a", 7, storage::vfs::AbsoluteIRI(u"file:///x")}},
       u"ZENTRA:mpath:DirNotFound \"a\" 7 \"file:///x\""},
      {{remove, none, {}}, u"ZENTRA:rmpath:DirNotFound"},
      {{remove, none, {u"\u0080\u009F\u061C\u200E\u200F\u2028\u2029\u202A\u202E\u2066\u2069\x7F"}},
       u"the folder "
       u"\"\\u0080\\u009f\\u061c\\u200e\\u200f\\u2028\\u2029\\u202a\\u202e\\u2066\\u2069\\u007f\" "
       u"is "
       u"not "
       u"on the path; name it as the path lists it"},
      {{add, none, {u"\u00A0\u061B\u200D\u2010\u2027\u202F\u2065\u206A\U0001F600"}},
       u"ZENTRA:mpath:DirNotFound \"\u00A0\u061B\u200D\u2010\u2027\u202F\u2065\u206A\U0001F600\""},
  };
  for (const auto& [message, text] : rows) EXPECT_EQ(GetText(message), text);
}

}  // namespace
}  // namespace foundation::core::except
