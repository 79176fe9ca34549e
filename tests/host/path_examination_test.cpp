#include "support/shown.h"

#include <gtest/gtest.h>

namespace Corvane::PathManagement::host {
namespace {

struct DoctorTest : testing::Test {
  /// Each finding as "kind folder other files", from the tree on.
  [[nodiscard]] std::string Examine(EnvironmentOptions options) const {
    for (auto* texts : {&options.folders, &options.without}) {
      for (ustring& text : *texts) text = tree.Text() + u'/' + text;
    }
    std::string list;
    for (const auto& finding : Environment(options).Examine()) {
      std::string line = GetText(finding.kind);
      std::vector<ustring> texts = {finding.folder, finding.other};
      texts.insert(texts.end(), finding.files.begin(), finding.files.end());
      for (const ustring& text : texts) {
        if (!text.empty()) line += ' ' + BytesFromText(text.substr(tree.Text().size() + 1)).value();
      }
      list += line + '\n';
    }
    return list;
  }

  test::TemporaryTree tree;
};

TEST_F(DoctorTest, EachThingThatIsWrongIsFound) {
  tree.Files({"lib/fn.zt", "lib/private/fn.zt", "lib/sub/deep.zt", "other/FN.zt", "other/fn.zt",
              "other/Fn", "lib/@cls/\xFE", "lib/@cls/\xFF", "lib/@cls/\xFD", "lib/Fn", "file",
              "more/fn.zt", "t/@t/\xFF"});
  // Many, since the disk may list a few in the order of their bytes.
  std::string respelled = "names that are equal where case is ignored other";
  for (const std::string name : {"ODD", "ODd", "OdD", "Odd", "oDD", "oDd", "odD", "odd"}) {
    tree.File("other/" + name);
    respelled += " other/" + name;
  }
  respelled += '\n';
  tree.Folder("bare/below");
  tree.Link("../lib", "bare/link");
  tree.Link("lib", "link");
  tree.Link("nowhere", "dangling");
  tree.Link("loop", "loop");
  tree.Link("..", "lib/@cls/+up");
  constexpr auto kRecursive = FolderExpansion::Recursive;
  const std::string inLib =
      "cannot be searched lib/@cls/+up\nnames that are not UTF-8 lib/@cls lib/@cls/\xFD "
      "lib/@cls/\xFE "
      "lib/@cls/\xFF\n";
  const std::vector<std::pair<EnvironmentOptions, std::string>> rows = {
      {{.folders = {u"lib", u"lib/sub"}, .without = {u"lib/@cls"}}, ""},
      {{.folders = {u"lib", u"link", u"gone", u"dangling", u"loop", u"file", u"bare", u"gone"}},
       inLib + "the same folder as an earlier one link lib\nmissing gone\nmissing dangling\n"
               "cannot be searched loop\nmissing file\ncontains no file bare\n"
               "the same folder as an earlier one gone gone\n"},
      {{.folders = {u"lib/private", u"lib"}},
       "belongs to another folder of the path lib/private lib\n" + inLib},
      {{.folders = {u"t/@t", u"t"}},
       "belongs to another folder of the path t/@t t\nnames that are not UTF-8 t/@t t/@t/\xFF\n"},
      {{.folders = {u"lib", u"other", u"more"}, .without = {u"lib/@cls"}},
       respelled + "names that are equal where case is ignored lib lib/fn.zt other/FN.zt\n"},
      {{.folders = {u"lib", u"other", u"gone"}, .without = {u"lib", u"gone"}},
       "names that are equal where case is ignored other other/FN.zt other/fn.zt\n" + respelled},
      {{.folders = {u"lib/sub", u"bare"}, .expansion = kRecursive},
       "cannot be searched bare/link/@cls/+up\n"
       "names that are not UTF-8 bare/link/@cls bare/link/@cls/\xFD bare/link/@cls/\xFE "
       "bare/link/@cls/\xFF\n"},
      {{.folders = {u"lib", u"lib/sub"}, .expansion = kRecursive},
       inLib + "the same folder as an earlier one lib/sub lib/sub\n"},
  };
  for (const auto& [options, findings] : rows) {
    EXPECT_EQ(Examine(options), findings)
        << testing::PrintToString(options.folders) << testing::PrintToString(options.without);
  }
}

}  // namespace
}  // namespace Corvane::PathManagement::host
