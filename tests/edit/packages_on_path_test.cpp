#include "searchpath/utilities/packages_on_path.h"

#include "support/recording_manager.h"

#include <gtest/gtest.h>

namespace Corvane::PathManagement {
namespace {

using namespace test;

TEST(PackagesOnPathTest, APackageIsOnThePathInOneVersion) {
  EXPECT_TRUE(PackageIsOnPath({u"p", u"1"}, FakeManager()));
  EXPECT_FALSE(PackageIsOnPath({u"p", u"2"}, FakeManager()));
}

TEST(PackagesOnPathTest, MetadataAndPropertiesDecideWhichFoldersAPackageHas) {
  const std::string silent = " p.GetPackage(p) p.GetMetadata()",
                    hand = silent + " p.GetProperty(ManualInstall)",
                    kind = silent + " p.GetProperty(IsQRX)", all = kind + " p.GetFolders()";
  const PropertyValue yes = true, no = false, text = u"true";
  struct Row {
    bool contributes, checksInstall;
    std::map<ustring, PropertyValue, std::less<>> properties;
    std::string expected;  // the folders, then the calls
  };
  const Row rows[] = {
      {false, true, {{u"ManualInstall", yes}, {u"IsQRX", yes}}, silent},
      {true, true, {{u"IsQRX", yes}}, hand},
      {true, true, {{u"ManualInstall", no}}, hand},
      {true, true, {{u"ManualInstall", yes}}, "root" + hand},
      {true, true, {{u"ManualInstall", text}}, "threw" + hand},
      {true, false, {{u"ManualInstall", yes}}, "five four one three two" + all},
      {true, false, {{u"IsQRX", no}}, "five four one three two" + all},
      {true, false, {{u"IsQRX", text}}, "threw" + kind},
      {true, false, {{u"IsQRX", yes}}, "root" + kind},
  };
  CallLog log;
  FakeRegistry registry(&log);
  const auto ask = [&](const std::vector<ComponentIdentifier>& packages) {
    try {
      const auto folders = GetPathFoldersForPackages(registry, packages);
      // As many as are kept, since they are counted first.
      EXPECT_TRUE(packages.size() != 1 || folders.capacity() == folders.size());
      for (const AbsoluteIRI& folder : folders)
        EXPECT_EQ(folder.getPath(), u"/" + folder.getName());
      return log.Take(Printed(FolderNames(folders)));
    } catch (const std::bad_variant_access&) {
      return log.Take("threw");
    }
  };
  const std::map<ustring, std::set<int>> tags = {
      {u"five", {0}},  {u"four", {0, 1}}, {u"none", {}},    {u"one", {0}},
      {u"other", {1}}, {u"three", {0}},   {u"two", {-1, 0}}};
  for (const auto& [name, set] : tags) {
    registry.folders.push_back(
        {AbsoluteIRI(u"file:///usr/../" + name), std::make_shared<const std::set<int>>(set)});
  }
  registry.folders.push_back({AbsoluteIRI(u"file:///untagged"), nullptr});
  for (const auto& [contributes, checksInstall, properties, expected] : rows) {
    registry.metadata.contributesToPath = contributes;
    registry.metadata.checksManualInstall = checksInstall;
    registry.properties = properties;
    EXPECT_EQ(ask({{u"p", u""}}), expected);
  }
  EXPECT_EQ(ask({{u"p", u""}, {u"q", u""}, {u"p", u""}}),
            "root root" + kind + " p.GetPackage(q)" + kind);
  EXPECT_EQ(ask({}), "");
}

}  // namespace
}  // namespace Corvane::PathManagement
