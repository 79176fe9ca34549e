#include "searchpath/host/working_folder.h"

#include "support/temporary_tree.h"

#include <gtest/gtest.h>

#include <pwd.h>
#include <unistd.h>

#include <utility>

namespace Corvane::PathManagement::host {
namespace {

using current_working_folder::FailedToAbsolutizeException;
using E = current_working_folder::AbsolutizeError;

TEST(WorkingFolderTest, TextBecomesALocationOrAnError) {
  const test::TemporaryTree tree;
  tree.Folder("lib/a b");
  tree.File("file");
  const WorkingFolder folder(tree.IRI());
  const passwd& user = *getpwuid(geteuid());
  const ustring home = TextFromBytes(user.pw_dir);
  const std::vector<std::pair<ustring, ustring>> located = {
      {u"lib", tree.Text("lib")},
      {u"lib//a b/", tree.Text("lib/a b")},
      {u".", tree.Text()},
      {u"lib/../lib", tree.Text("lib/../lib")},
      {tree.Text("lib"), tree.Text("lib")},
      {u"file://" + tree.Text("lib/a%20b"), tree.Text("lib/a b")},
      {u"~", home},
      {u"~" + TextFromBytes(user.pw_name), home}};
  for (const auto& [text, location] : located) {
    EXPECT_EQ(folder.absolutize(text).getPath(), location) << testing::PrintToString(text);
  }
  const std::vector<std::pair<ustring, E>> refused = {
      {u"~nobody-of-this-name/x", E::Absent},
      {u"", E::InvalidText},
      {u"http://host/lib", E::InvalidText},
      {u"file:///%00", E::InvalidText},
      {ustring(u"a\0b", 3), E::InvalidText},
      {u"\xD800", E::InvalidText},
      {u"~\xD800", E::InvalidText},
      {ustring(u"~root\0x/lib", 11), E::InvalidText},
      {u"absent", E::Absent},
      {u"file", E::NotAFolder}};
  for (const auto& [text, error] : refused) {
    try {
      ADD_FAILURE() << testing::PrintToString(text) << folder.absolutize(text).hashValue();
    } catch (const FailedToAbsolutizeException& failure) {
      EXPECT_EQ(failure.GetReason(), error);
      EXPECT_EQ(failure.GetErrorCode(), static_cast<std::uint32_t>(error));
    }
  }
  EXPECT_EQ(folder.Locate(u"absent").getPath(), tree.Text("absent"));
  EXPECT_EQ(WorkingFolder().absolutize(u".").getPath(),
            TextFromBytes(std::filesystem::current_path().native()));
}

}  // namespace
}  // namespace Corvane::PathManagement::host
