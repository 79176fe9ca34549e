#include "searchpath/utilities/packages_on_path.h"

#include "support/recording_manager.h"

#include <gtest/gtest.h>

namespace Corvane::PathManagement {
namespace {

using namespace test;
using PackageRegistry::PackageFolder;
using PackageRegistry::PropertyValue;

TEST(PackagesOnPathTest, APackageIsOnThePathInOneVersion) {
  CallLog log;
  FakeManager manager(&log);
  EXPECT_FALSE(PackageIsOnPath({u"a", u"1"}, manager));
  manager.packages = {{u"b", u"1"}, {u"a", u"1"}, {u"a", u"1"}};
  EXPECT_TRUE(PackageIsOnPath({u"a", u"1"}, manager));
  EXPECT_FALSE(PackageIsOnPath({u"a", u"2"}, manager));
  EXPECT_EQ(log.Take().size(), 3U);
}

TEST(PackagesOnPathTest, MetadataAndPropertiesDecideWhichFoldersAPackageHas) {
  struct Row {
    bool contributes, checksInstall;
    std::map<ustring, PropertyValue, std::less<>> properties;
    std::string expected;  // the folders, then the calls
  };
  const std::string start = " registry.GetPackage(p) p.GetMetadata()";
  const std::string asksInstall = start + " p.GetProperty(ManualInstall)",
                    asksKind = start + " p.GetProperty(IsQRX)",
                    asksFolders = asksKind + " p.GetFolders()";
  const PropertyValue yes = true, no = false, text = u"true";
  const Row rows[] = {
      {false, true, {{u"ManualInstall", yes}, {u"IsQRX", yes}}, start},
      {true, true, {{u"IsQRX", yes}}, asksInstall},
      {true, true, {{u"ManualInstall", no}, {u"IsQRX", yes}}, asksInstall},
      {true, true, {{u"ManualInstall", yes}}, "root" + asksInstall},
      {true, true, {{u"ManualInstall", text}}, "threw" + asksInstall},
      {true, false, {{u"ManualInstall", yes}}, "one two" + asksFolders},
      {true, false, {{u"IsQRX", no}}, "one two" + asksFolders},
      {true, false, {{u"IsQRX", yes}}, "root" + asksKind},
      {true, false, {{u"IsQRX", text}}, "threw" + asksKind},
  };
  const auto folder = [](const ustring& name, std::set<int> tags) {
    return PackageFolder{AbsoluteIRI(u"file:///absent/" + name),
                         std::make_shared<const std::set<int>>(std::move(tags))};
  };
  const std::vector<ComponentIdentifier> packages = {{u"p", u"1"}};
  for (const Row& row : rows) {
    CallLog log;
    FakeRegistry registry(&log);
    const PackageRegistry::PackageMetadata metadata = {row.contributes, row.checksInstall,
                                                       AbsoluteIRI(u"file:///absent/root")};
    auto package = registry.packages[u"p"] = std::make_shared<FakePackage>("p", metadata, &log);
    package->properties = row.properties;
    package->folders = {folder(u"one", {0}), folder(u"none", {}), folder(u"other", {1}),
                        folder(u"two", {-1, 0, 1})};
    std::string folders;
    try {
      folders = Printed(Names(GetPathFoldersForPackages(registry, packages)));
    } catch (const std::bad_variant_access&) {
      folders = "threw";
    }
    EXPECT_EQ(log.Take(folders), row.expected);
  }
}

TEST(PackagesOnPathTest, PackagesFollowOneAnotherWithRepeats) {
  FakeRegistry registry;
  for (const ustring name : {u"p", u"q"}) {
    registry.packages[name] = std::make_shared<FakePackage>(
        "", PackageRegistry::PackageMetadata{true, false, AbsoluteIRI(u"file:///bin/../" + name)},
        nullptr);
    registry.packages[name]->properties = {{u"IsQRX", true}};
  }
  const std::vector<ComponentIdentifier> packages = {
      {u"q", u""}, {u"absent", u""}, {u"p", u""}, {u"q", u""}};
  EXPECT_EQ(Names(GetPathFoldersForPackages(registry, packages)), u"q p q");
  EXPECT_TRUE(GetPathFoldersForPackages(registry, {}).empty());
}

}  // namespace
}  // namespace Corvane::PathManagement
