#include "support/shown.h"
#include "support/text_table.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace Corvane::PathManagement::host {
namespace {

ustring Many(int count, const ustring& text) {
  ustring all;
  while (count-- > 0) all += text;
  return all;
}

struct PackageRegistryTest : testing::Test {
  // `text` is a whole manifest, or what follows the beginning of one that is called as its folder.
  void Manifest(const std::string& folder, const ustring& text) const {
    const bool isWhole = text.empty() || ustring(u"{[\uFEFF").find(text[0]) != ustring::npos;
    const std::string begin = "{\"name\": \"" + folder + "\", \"version\": \"1\",\n\"folders\": [";
    tree.File(folder + "/searchpath.json");
    std::ofstream file(tree.Path(folder + "/searchpath.json"));
    file << (isWhole ? "" : begin) << BytesFromText(text).value();
  }

  test::TemporaryTree tree;
};

TEST_F(PackageRegistryTest, ABadManifestIsAProblem) {
  const std::vector<ustring> rows = {
      u" => :1: not JSON here",
      u"\n\"\xDCFF\"] => :3: not UTF-8 here",
      u"{\n\"name\": \"a\"} => :1: version: missing",
      u"],\n\"name\": \"b\"} => :3: name: given twice",
      u"],\n\"a\\n\": 1} => :3: \"a\\u000a\": no such field; yours go into \"properties\"",
      u"\"x\",\n3]} => :3: folders[1]: expected a text or an object",
      uR"( {"tags": []}]} => :2: folders[0].folder: missing)",
      uR"( {"folder": "x", "tags": [0, 1.5]}]} => :2: folders[0].tags[1]: expected an integer)",
      uR"( {"folder": "x", "tags": [2147483648]}]} => :2: folders[0].tags[0]: out of range)",
      uR"("x/../y"]} => :2: folders[0]: not below the package's folder; for others write an IRI)",
      uR"("~/x"]} => :2: folders[0]: not below the package's folder; for others write an IRI)",
      uR"("file:///\u0000"]} => :2: folders[0]: invalid IRI "file:///\u0000": a NUL names no file)",
      uR"(], "properties": {"p": {}}} => :2: properties.p: expected a truth value, number or text)",
      u"],\n\"properties\": {\"IsQRX\": 1}} => :3: properties.IsQRX: expected true or false",
      uR"(], "properties": {"ManualInstall": ""}} => :2: properties.ManualInstall: )"
      u"expected true or false",
      u"],\n\"properties\": {\"p\": 9223372036854775808}} => :3: properties.p: out of range",
      u"],\n\"properties\": {\"p\": -99999999999999999999}} => :3: properties.p: out of range",
      u"],\n\"properties\": {\"p\": -1e999\n}} => :3: properties.p: out of range",
      Many(31, u" [") + u" => :2: folders" + Many(31, u"[0]") + u": deeper than 32 levels",
      Many(9995, u" 1,") + u"1]} => :2: folders[0]: expected a text or an object",
      Many(9996, u" 1,") + u"1]} => : more than 10,000 values",
      u'{' + Many((1 << 20) - 1, u"\n") + u" => :1048575: not JSON here",
      u'{' + Many(1 << 20, u"\n") + u" => : larger than 1 MiB"};
  test::ExpectTable(rows, [&](const ustring& text) {
    Manifest("p", text);
    const ustring problem = PackageRegistry(tree.Text()).GetProblems().at(0).GetText();
    return problem.substr(tree.Text("p/searchpath.json").size());
  });
}

TEST_F(PackageRegistryTest, PackagesAreInTheOrderOfTheirFoldersWithoutTheBadOnes) {
  Manifest("\xFF", u"\uFEFF{\"name\": \"B\", \"version\": \"2\", \"folders\": [\"x\"]}");
  Manifest("@a", u"]}");
  Manifest(".b",
           uR"("./x", {"folder": ".", "tags": [7, -1]}, {"folder": "y"},
        "file:///b%20c"],
        "contributesToPath": false, "checksManualInstall": true, "properties":
        {"t": true, "i": -9223372036854775808, "d": 1.5, "s": "\ud83d\ude00"}})");
  tree.Link(tree.Path("@a"), "@link");
  tree.Folder("c/searchpath.json");
  tree.Folder("d");
  ASSERT_EQ(mkfifo(tree.Path("d/searchpath.json").c_str(), 0600), 0);
  tree.Link("searchpath.json", "e/searchpath.json");
  const PackageRegistry registry(tree.Text());
  ustring shown;
  for (const PackageProblem& problem : registry.GetProblems()) shown += problem.GetText() + u'\n';
  const ustring at = tree.Text() + u'/';
  EXPECT_EQ(shown, at + u"@link/searchpath.json:1: name: the same name and version as in " + at +
                       u"@a/searchpath.json\n" + at + u"c/searchpath.json: not a regular file\n" +
                       at + u"d/searchpath.json: not a regular file\n" + at +
                       u"e/searchpath.json: cannot be read: Too many levels of symbolic links\n");
  shown.clear();
  for (const auto& [name, version] : registry.GetIdentifiers()) shown += name + version + u' ';
  const auto package = registry.GetPackage({u".b", u"1"});
  for (const auto& [folder, tags] : package->GetFolders()) {
    shown += folder.toString() + TextFromBytes(testing::PrintToString(*tags));
  }
  EXPECT_EQ(shown, u".b1 @a1 B2 file://" + at + u".b/x{ 0 }file://" + at + u".b{ -1, 7 }file://" +
                       at + u".b/y{ 0 }file:///b%20c{ 0 }");
  const Corvane::PackageRegistry::PropertyValue values[] = {true, INT64_MIN, 1.5, u"\U0001F600"};
  for (const std::size_t i : {0U, 1U, 2U, 3U}) {
    EXPECT_EQ(package->GetProperty(std::u16string_view(u"tids").substr(i, 1)), values[i]);
  }
  const auto& metadata = package->GetMetadata();
  EXPECT_TRUE(!metadata.contributesToPath && metadata.checksManualInstall);
  EXPECT_EQ(registry.GetPackage({u"B", u"1"}), nullptr);
}

TEST_F(PackageRegistryTest, MemoryAndProblemsHaveABound) {
  const std::string deep = "deep" + BytesFromText(Many(9, u"/" + ustring(220, u'd'))).value();
  const ustring folders = Many(9000, u"\"x\",") + u"\"x\"]}";
  for (const char* name : {"/0", "/1", "/2"}) Manifest(deep + name, folders);
  for (int i = 3000; i < 4000; ++i) tree.File(deep + '/' + std::to_string(i) + "/searchpath.json");
  const PackageRegistry registry(tree.Text(deep));
  EXPECT_EQ(registry.GetIdentifiers().size(), 2U);
  EXPECT_EQ(registry.GetProblems().at(0).fault, PackageFault::TooMuch);
  EXPECT_EQ(registry.GetProblems().size(), 1000U);
  EXPECT_EQ(registry.GetProblemCount(), 1001U);
}

TEST_F(PackageRegistryTest, FoldersOfPackagesComeLastOnAPath) {
  tree.Files({"one/f", "root/p/lib/f", "root/p/lib/private/f", "root/q/f", "root/p/two/f"});
  Manifest("root/p", uR"("two", "lib", "two", {"folder": "q", "tags": [1]}]})");
  Manifest("root/q", uR"(], "properties": {"IsQRX": true}})");
  Manifest("root/r", uR"("loop", "ok"]})");
  tree.Link("loop", "root/r/loop");
  const Environment environment({.folders = {tree.Text("one"), tree.Text("root/p/two")},
                                 .without = {tree.Text("root/q")},
                                 .packages = tree.Text("root")});
  EXPECT_EQ(test::Shown(environment.FindAll({u"f"}), tree), "one/f root/p/two/f root/p/lib/f");
  EXPECT_EQ(environment.FindOrigin(*environment.FindFolders({u"private"})[0]).package->name,
            u"root/p");
  EXPECT_EQ(environment.FindProblems().at(0).folder, tree.Text("root/r/loop"));

  // A manager knows the packages and shares the entries; a hidden folder is not on its path.
  const auto manager = environment.CreateManager();
  EXPECT_EQ(manager->GetPath()->GetMainFolders(), environment.GetMainFolders());
  ASSERT_EQ(manager->GetPackagesOnPath()->size(), 1U);
  EXPECT_EQ(manager->GetPackagesOnPath()->front().name, u"root/p");
  EXPECT_TRUE(RemoveFolders(std::vector<ustring>{tree.Text("root/p/lib")},
                            environment.GetWorkingFolder(), *manager)
                  .empty());
  EXPECT_TRUE(manager->GetPackagesOnPath()->empty());
  EXPECT_EQ(Environment({.packages = u"ftp://h/"}).FindProblems().at(0).folder, u"ftp://h/");
}

}  // namespace
}  // namespace Corvane::PathManagement::host
