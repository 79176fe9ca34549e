#include "searchpath/host/working_folder.h"

#include "support/temporary_tree.h"

#include <gtest/gtest.h>

#include <pwd.h>
#include <unistd.h>

#include <optional>

namespace Corvane::PathManagement::host {
namespace {

using current_working_folder::AbsolutizeError;
using current_working_folder::FailedToAbsolutizeException;
using test::TemporaryTree;

struct Row {
  ustring text;
  ustring location;  // in full; "" when it has none
  std::optional<AbsolutizeError> error;
};

TEST(WorkingFolderTest, TextBecomesALocationOrAnError) {
  const TemporaryTree tree;
  tree.Folder("lib/a b");
  tree.File("file");
  tree.Link("nowhere", "broken");
  tree.Link("loop", "loop");
  const WorkingFolder folder(tree.IRI());
  const std::string home = getpwuid(geteuid())->pw_dir;
  const ustring user = TextFromBytes(getpwuid(geteuid())->pw_name);
  const std::vector<Row> rows = {
      {u"lib", tree.Text("lib"), {}},
      {u"lib//a b/", tree.Text("lib/a b"), {}},
      {u".", tree.Text(), {}},
      {u"lib/../lib", tree.Text("lib/../lib"), {}},
      {tree.Text("lib"), tree.Text("lib"), {}},
      {u"file://" + tree.Text("lib/a%20b"), tree.Text("lib/a b"), {}},
      {u"~", TextFromBytes(home), {}},
      {u"~" + user, TextFromBytes(home), {}},
      {u"~nobody-of-this-name/x", u"", AbsolutizeError::Absent},
      {u"", u"", AbsolutizeError::InvalidText},
      {u"http://host/lib", u"", AbsolutizeError::InvalidText},
      {u"file:///%00", u"", AbsolutizeError::InvalidText},
      {ustring(u"a\0b", 3), u"", AbsolutizeError::InvalidText},
      {u"\xD800", u"", AbsolutizeError::InvalidText},
      {u"absent", u"", AbsolutizeError::Absent},
      {u"file", u"", AbsolutizeError::NotAFolder},
      {u"broken", u"", AbsolutizeError::BrokenLink},
      {u"loop", u"", AbsolutizeError::LinkLoop},
      {ustring(300, u'n'), u"", AbsolutizeError::NameTooLong},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(BytesFromText(row.text).value_or("(no text)"));
    try {
      EXPECT_EQ(folder.absolutize(row.text).getPath(), row.location);
      EXPECT_FALSE(row.error);
    } catch (const FailedToAbsolutizeException& failure) {
      ASSERT_TRUE(row.error);
      EXPECT_EQ(failure.GetErrorCode(), static_cast<std::uint32_t>(*row.error));
    }
  }
  EXPECT_EQ(folder.Locate(u"absent").getPath(), tree.Text("absent"));
}

TEST(WorkingFolderTest, TheProcessesOwnFolderIsTheDefault) {
  EXPECT_EQ(WorkingFolder().absolutize(u".").getPath(),
            TextFromBytes(std::filesystem::current_path().native()));
}

}  // namespace
}  // namespace Corvane::PathManagement::host
