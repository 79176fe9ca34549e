#include "searchpath/host/receipt.h"

#include "searchpath/host/depfile.h"
#include "searchpath/host/invalid_listing_exception.h"
#include "searchpath/host/native_location.h"
#include "support/temporary_tree.h"

#include <gtest/gtest.h>

#include <sstream>

namespace Corvane::PathManagement::test {
namespace {

using host::Receipt;

std::string Bytes(const Receipt& receipt) {
  std::ostringstream stream;
  receipt.Write(stream);
  return stream.str();
}

Receipt FromBytes(const std::string& bytes) {
  std::istringstream stream(bytes);
  return Receipt::Read(stream);
}

class ReceiptTest : public testing::Test {
 protected:
  ReceiptTest() {
    tree.Files({"mine/own.zt", "lib/plot.zt", "lib/axes.zt", "lib/+pkg/deep.zt", "far/last.zt",
                "far/plot.zt", "else/file", "nest/in/in.zt"});
    tree.Folder("lib/@shape");
    tree.Link("../else/file", "lib/linked.zt");
    tree.Link("../else/none", "mine/broken.zt");
    tree.Link("lib", "way");
    Age();
  }

  /// As if all folders had last changed long ago, each at another time. That they were changed so shows
  /// for as long as the kernel's clock for files may stand still.
  void Age() {
    tree.Do("for folder in $(find . -type d); do touch -d \"-$((" + std::to_string(++age) +
            " * 100)) hours\" $folder; done; sleep 0.02");
  }

  [[nodiscard]] host::EnvironmentOptions Options() const {
    return {.folders = {u"mine", u"gone", u"way", u"far", u"nest/in"}, .workingFolder = tree.IRI()};
  }

  /// So many names that the folders are listed.
  [[nodiscard]] Receipt Make() const {
    std::vector<host::Lookup> lookups;
    for (const char16_t* name : {u"own.zt", u"plot.zt", u"axes.zt", u"linked.zt", u"broken.zt",
                                 u"shape", u"last.zt", u"none.zt", u"pkg/deep.zt", u"in.zt"}) {
      lookups.push_back({.name = name});
    }
    lookups.push_back({.name = u"broken", .extensions = {u"zt"}});
    return host::Environment(Options()).FindWithReceipt(lookups);
  }

  /// "NAME: OLD > NEW" for each change, with folders relative to the tree.
  [[nodiscard]] std::string ChangesIn(const Receipt& receipt) const {
    std::string text;
    const auto shown = [this](const std::optional<FoundItem>& file) {
      return file ? *BytesFromText(host::GetNativePath(*file).substr(tree.Text().size() + 1)) : "";
    };
    for (const auto& change : receipt.Verify(host::Environment(receipt.GetOptions()))) {
      text += *BytesFromText(change.name) + ": " + shown(change.before) + " > " +
              shown(change.after) + "\n";
    }
    return text;
  }

  TemporaryTree tree;
  int age = 0;
};

TEST_F(ReceiptTest, ReportsWhatAChangeMeansForAnswers) {
  const struct {
    const char* change;
    bool staysFresh;
    const char* changes;
  } rows[] = {
      {":", true, ""},
      {"touch else/unrelated && mkdir else/folder", true, ""},
      {"echo more >lib/plot.zt", true, ""},  // contents do not count
      {"touch mine/unrelated", false, ""},
      {"touch mine/plot.zt", false, "plot.zt: way/plot.zt > mine/plot.zt\n"},
      {"rm mine/plot.zt", false, "plot.zt: mine/plot.zt > way/plot.zt\n"},
      {"touch far/none.zt", false, "none.zt:  > far/none.zt\n"},
      {"rm lib/plot.zt lib/axes.zt", false,
       "plot.zt: way/plot.zt > far/plot.zt\naxes.zt: way/axes.zt > \n"},
      {"mkdir gone && touch gone/plot.zt", false, "plot.zt: far/plot.zt > gone/plot.zt\n"},
      {"rm else/file", false, "linked.zt: way/linked.zt > \n"},
      {"touch else/none", false, "broken.zt:  > mine/broken.zt\nbroken:  > mine/broken.zt\n"},
      {"touch lib/@shape/shape", false, "shape:  > way/@shape/shape\n"},
      {"mv lib/+pkg/deep.zt .", false, "pkg/deep.zt: way/+pkg/deep.zt > \n"},
      {"cp -r far other && ln -sfn other way", false,
       "shape: way/@shape/shape > \nlast.zt: far/last.zt > way/last.zt\nnone.zt: far/none.zt > "
       "way/none.zt\n"},
      {"mv other moved && ln -s moved other", false,
       "last.zt: way/last.zt > way/last.zt\nnone.zt: way/none.zt > way/none.zt\n"},
      {"mv nest moved2 && ln -s moved2 nest", false, "in.zt: nest/in/in.zt > nest/in/in.zt\n"},
  };
  for (const auto& row : rows) {
    Age();
    const Receipt receipt = FromBytes(Bytes(Make()));
    tree.Do(row.change);
    EXPECT_EQ(receipt.IsFresh(), row.staysFresh) << row.change;
    EXPECT_EQ(ChangesIn(receipt), row.changes) << row.change;
    const Receipt renewed = receipt.Renew(host::Environment(receipt.GetOptions()));
    EXPECT_EQ(ChangesIn(renewed), "") << row.change;
  }
}

TEST_F(ReceiptTest, WatchesAllFoldersInWhichExtensionsAreTried) {
  using Extensions = std::vector<ustring>;
  host::EnvironmentOptions options = Options();
  options.rules = host::kPlainRules;
  tree.Folder("mine/broken");
  tree.Link("../../else/none", "mine/broken/last.zt");
  const struct {
    const char16_t* name;
    Extensions extensions;
    const char* change;
    const char* changes;
  } rows[] = {
      {u"plot", {u"/main.zt", u"zt"}, "touch else/unrelated", ""},
      {u"plot", {u"/main.zt", u"zt"}, "touch mine/plot.zt", "plot: way/plot.zt > mine/plot.zt\n"},
      {u"plot", {u"/main.zt", u"zt"}, "rm mine/plot.zt", "plot: mine/plot.zt > way/plot.zt\n"},
      {u"plot",
       {u"zt", u"/main.zt"},
       "mkdir mine/plot && touch mine/plot/main.zt",
       "plot: way/plot.zt > mine/plot/main.zt\n"},
      {u"plot",
       {u"zt", u"/main.zt"},
       "touch mine/plot.zt",
       "plot: mine/plot/main.zt > mine/plot.zt\n"},
      {u"broken",
       {u"/no.zt", u"zt", u"/last.zt"},
       "touch else/none",
       "broken:  > mine/broken.zt\n"},
      {u"broken",
       {u"/last.zt", u"zt", u"/no.zt"},
       "rm else/none",
       "broken: mine/broken/last.zt > \n"},
  };
  for (const auto& row : rows) {
    Age();
    const Receipt receipt = host::Environment(options).FindWithReceipt(
        {{.name = row.name, .extensions = row.extensions}});
    EXPECT_TRUE(receipt.IsFresh()) << row.change;
    tree.Do(row.change);
    EXPECT_EQ(receipt.IsFresh(), *row.changes == '\0') << row.change;
    EXPECT_EQ(ChangesIn(receipt), row.changes) << row.change;
  }
}

TEST_F(ReceiptTest, DoesNotTrustAFolderThatHasJustChanged) {
  tree.File("mine/young.zt");
  EXPECT_FALSE(Make().IsFresh());
  EXPECT_EQ(ChangesIn(Make()), "");
}

TEST_F(ReceiptTest, DoesNotTrustAFolderThatHasChangedOrGoneSinceItWasAsked) {
  for (const auto& [change, changes] :
       {std::pair("touch mine/plot.zt; touch -d '300 hours ago' mine",
                  "plot.zt: way/plot.zt > mine/plot.zt\n"),
        std::pair("rm -r mine", "plot.zt: mine/plot.zt > way/plot.zt\n")}) {
    const host::Environment environment(Options());
    host::ReceiptRecorder recorder(environment);
    const host::Lookup lookup = {.name = u"plot.zt"};
    recorder.Add(lookup, environment.Find(lookup));
    tree.Do(change);
    EXPECT_EQ(ChangesIn(recorder.Finish()), changes);
  }
}

TEST_F(ReceiptTest, AsksAgainWhenOtherFoldersAreOnThePath) {
  tree.Files({"packages/new/lib/in.zt", "packages/old/lib/in.zt"});
  tree.Do(
      R"(echo '{"name": "old", "version": "1", "folders": ["lib"]}' >packages/old/searchpath.json)");
  tree.Link("../else/begin", "nest/begin");
  tree.Link("nest/in", "cover");
  Age();
  host::EnvironmentOptions packages = Options();
  packages.folders = {u"mine"};
  packages.packages = u"packages";
  host::EnvironmentOptions recursive = Options();
  recursive.folders = {u"nest"};
  recursive.expansion = host::FolderExpansion::Recursive;
  host::EnvironmentOptions hiding = Options();
  hiding.folders = {u"nest/in", u"packages/old/lib"};
  hiding.without = {u"cover"};
  const struct {
    host::EnvironmentOptions options;
    const char* change;
    const char* changes;
  } rows[] = {
      {packages, "sed s/old/new/ packages/old/searchpath.json >packages/new/searchpath.json",
       "in.zt: packages/old/lib/in.zt > packages/new/lib/in.zt\n"},
      {recursive, "mkdir else/begin; touch else/begin/in.zt",
       "in.zt: nest/in/in.zt > nest/begin/in.zt\n"},
      {hiding, "ln -sfn else cover", "in.zt: packages/old/lib/in.zt > nest/in/in.zt\n"},
  };
  for (const auto& [options, change, changes] : rows) {
    const Receipt receipt = host::Environment(options).FindWithReceipt({{.name = u"in.zt"}});
    EXPECT_EQ(ChangesIn(receipt), "") << change;
    tree.Do(change);
    EXPECT_EQ(ChangesIn(receipt), changes) << change;
  }
}

TEST_F(ReceiptTest, HoldsQuestionsAnswersAndThePath) {
  host::EnvironmentOptions options = Options();
  options.expansion = host::FolderExpansion::Recursive;
  options.keepDuplicates = true;
  options.without = {u"else"};
  options.packages = u"packages";
  options.quoteFolders = {u"quoted"};
  options.timeout = std::chrono::milliseconds(5000);
  const std::vector<host::Lookup> lookups = {
      {.name = u"plot", .extensions = {u".c", u".zt"}, .fromFolder = u"lib"},
      {.name = u"PLOT.ZT", .policy = FilenameMatchingPolicy::IgnoreCase},
      {.name = ustring(u"nul\0.zt", 7)}};
  const Receipt receipt = FromBytes(Bytes(host::Environment(options).FindWithReceipt(lookups)));
  const auto read = receipt.GetOptions();
  EXPECT_EQ(read.folders, options.folders);
  EXPECT_EQ(read.workingFolder, options.workingFolder);
  EXPECT_EQ(read.expansion, options.expansion);
  EXPECT_EQ(read.keepDuplicates, options.keepDuplicates);
  EXPECT_EQ(read.without, options.without);
  EXPECT_EQ(read.packages, options.packages);
  EXPECT_EQ(read.quoteFolders, options.quoteFolders);
  EXPECT_EQ(read.timeout, options.timeout);
  EXPECT_EQ(read.rules, options.rules);
  ASSERT_EQ(receipt.GetCount(), lookups.size());
  for (std::size_t at = 0; at < lookups.size(); ++at) {
    const host::Lookup lookup = receipt.GetLookup(at);
    EXPECT_EQ(lookup.name, lookups[at].name);
    EXPECT_EQ(lookup.extensions, lookups[at].extensions);
    EXPECT_EQ(lookup.fromFolder, lookups[at].fromFolder);
    EXPECT_EQ(lookup.policy, lookups[at].policy);
  }
  EXPECT_EQ(host::GetNativePath(*receipt.GetAnswer(0)), tree.Text("way/plot.zt"));
  EXPECT_EQ(receipt.GetAnswer(2), std::nullopt);
}

TEST_F(ReceiptTest, IsReadWithoutFoldersWhateverTheLengthsOfItsLists) {
  const host::Environment environment(std::vector<ustring>{});
  for (std::size_t length = 0; length < 16; ++length) {
    const std::vector<host::Lookup> lookups(length % 4, {.name = ustring(length, u'x')});
    const Receipt receipt = FromBytes(Bytes(environment.FindWithReceipt(lookups)));
    EXPECT_EQ(receipt.GetCount(), length % 4) << length;
    EXPECT_TRUE(receipt.IsFresh()) << length;
  }
}

TEST_F(ReceiptTest, SaysWhatAnAnswerRestsOn) {
  const Receipt receipt = Make();
  const auto plot = receipt.GetBasis(1);
  EXPECT_EQ(plot.folders, (std::vector{tree.Text("mine"), tree.Text("way")}));
  EXPECT_EQ(plot.absent, std::vector{tree.Text("gone")});
  EXPECT_TRUE(plot.files.empty());
  EXPECT_EQ(receipt.GetBasis(3).files, std::vector{tree.Text("way/linked.zt")});
  EXPECT_EQ(receipt.GetBasis(0).folders, std::vector{tree.Text("mine")});
  EXPECT_EQ(receipt.GetBasis().absent, std::vector{tree.Text("gone")});
}

TEST_F(ReceiptTest, RefusesEveryCutAndEveryFlippedBit) {
  const std::string whole = Bytes(Make());
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_THROW(FromBytes(whole.substr(0, size)), host::InvalidListingException) << size;
  }
  for (std::size_t bit = 0; bit < 8 * whole.size(); ++bit) {
    std::string flipped = whole;
    flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ (1 << bit % 8));
    EXPECT_THROW(FromBytes(flipped), host::InvalidListingException) << bit;
  }
  EXPECT_THROW((void)Receipt::Load(tree.Text("lib")), host::InvalidListingException);
  EXPECT_THROW((void)Receipt::Load(tree.Text("none")), host::InvalidListingException);
  EXPECT_THROW((void)Receipt::Load(ustring{0xD800}), host::InvalidListingException);
}

TEST_F(ReceiptTest, ADepfileNamesFilesAndFoldersThatExist) {
  tree.File("far/a $#:b");
  tree.File("far/a;b");
  tree.Link("../none/deep/none", "mine/deep.zt");
  const auto receipt = host::Environment(Options()).FindWithReceipt({{.name = u"own.zt"},
                                                                     {.name = u"plot.zt"},
                                                                     {.name = u"broken.zt"},
                                                                     {.name = u"deep.zt"},
                                                                     {.name = u"a $#:b"},
                                                                     {.name = u"a;b"}});
  std::ostringstream stream;
  EXPECT_EQ(host::WriteDepfile(stream, u"out 1", receipt), std::vector{tree.Text("far/a;b")});
  const std::string root = tree.Path();
  std::string inputs;
  std::string rules;
  for (const char* path : {"/far/a\\ $$\\#\\:b", "/mine/own.zt", "/way/plot.zt", "", "/far",
                           "/mine", "/mine/..", "/mine/../else", "/nest/in", "/way"}) {
    inputs += " \\\n  " + root + path;
    rules += '\n' + root + path + ":\n";
  }
  EXPECT_EQ(stream.str(), "out\\ 1:" + inputs + '\n' + rules);
  EXPECT_THROW(static_cast<void>(host::WriteDepfile(stream, u"a;b", receipt)),
               std::invalid_argument);
}

}  // namespace
}  // namespace Corvane::PathManagement::test
