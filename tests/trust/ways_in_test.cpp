#include "searchpath/host/environment.h"
#include "support/refused_calls.h"
#include "trust/thing.h"

#include <array>

namespace Corvane::PathManagement::host {
namespace {

using test::Bytes;
using test::ListBytes;
using test::Thing;
constexpr auto kFolder = Thing::Type::Folder;
constexpr auto kFile = Thing::Type::File;
constexpr auto kLink = Thing::Type::Link;
constexpr auto kDevice = Thing::Type::Device;

std::string Line(const TrustFinding& finding) {
  constexpr std::array kKinds = {"writable",  "owner",    "parent-writable", "file-writable",
                                 "creatable", "relative", "empty-part"};
  std::string line = kKinds.at(static_cast<std::size_t>(finding.kind));
  for (const ustring& text : {finding.folder, finding.object}) line += ' ' + Bytes(text);
  for (const Intruder& who : finding.who) line += ' ' + Bytes(GetText(who));
  const char* separator = ": ";
  for (const ustring& name : finding.names) line += separator + Bytes(name), separator = " ";
  return line + '\n';
}

struct Row {
  std::vector<Thing> things;
  std::vector<ustring> path;
  std::string expected;
  LookupRules rules = kPlainRules;
  std::vector<ustring> quoteFolders = {};
};

/// What is wrong with the rows, each on a machine of its own.
void Check(const std::vector<Row>& rows, bool withNames) {
  if (!test::CanBecomeOthers()) return;
  for (const Row& row : rows) {
    test::InSmallMachine([&] {
      umask(0);
      for (const Thing& thing : row.things) test::Make(thing);
      const Environment environment(
          {.folders = row.path, .rules = row.rules, .quoteFolders = row.quoteFolders});
      std::string lines;
      const TrustReport report =
          environment.ExamineTrust({.user = test::kOwner, .names = withNames});
      for (const TrustFinding& finding : report.findings) lines += Line(finding);
      return lines == row.expected ? "" : "expected\n" + row.expected + "found\n" + lines;
    });
  }
}

const std::string kEveMayWrite = ListBytes({{ACL_USER_OBJ, 7},
                                            {ACL_USER, 7, test::kEve},
                                            {ACL_GROUP_OBJ, 5},
                                            {ACL_MASK, 7},
                                            {ACL_OTHER, 5}});
const std::string kEveMayReadAlone = ListBytes({{ACL_USER_OBJ, 7},
                                                {ACL_USER, 7, test::kEve},
                                                {ACL_GROUP_OBJ, 7},
                                                {ACL_MASK, 5},
                                                {ACL_OTHER, 5}});

// Whom such a list names has the rights of the others: the kernel does not ask it.
const std::string kNobodyInGroupMayWrite = ListBytes({{ACL_USER_OBJ, 7},
                                                      {ACL_USER, 0, test::kEve},
                                                      {ACL_GROUP_OBJ, 0},
                                                      {ACL_MASK, 0},
                                                      {ACL_OTHER, 7}});

TEST(TrustTest, EachWayInIsReportedWithItsKind) {
  Check(
      {
          {{{kFolder, "/lib", "", 0, test::kBothGroup, 0775}},
           {u"/lib"},
           "writable /lib /lib group both (eve, mallory)\n"},
          {{{kFolder, "/lib", "", 0, 0, 0777}}, {u"/lib"}, "writable /lib /lib everyone\n"},
          {{{kFolder, "/lib", "", 0, 0, 0755, kEveMayWrite}},
           {u"/lib"},
           "writable /lib /lib user eve\n"},
          {{{kFolder, "/lib", "", test::kEve}}, {u"/lib"}, "owner /lib /lib user eve\n"},
          {{{kFolder, "/lib"}, {kFile, "/lib/plot.zt", "", test::kStranger}},
           {u"/lib"},
           "owner /lib /lib/plot.zt user 1109\n"},
          {{{kFolder, "/open", "", 0, 0, 0777}, {kFolder, "/open/lib"}},
           {u"/open/lib"},
           "parent-writable /open/lib /open everyone\n"},
          {{{kFolder, "/open", "", 0, 0, 01777}, {kFolder, "/open/lib", "", test::kEve}},
           {u"/open/lib"},
           "parent-writable /open/lib /open user eve\nowner /open/lib /open/lib user eve\n"},
          {{{kFolder, "/open", "", 0, 0, 01777},
            {kFolder, "/lib"},
            {kLink, "/open/first", "second", test::kEve},
            {kLink, "/open/second", "/lib", test::kMallory}},
           {u"/open/first"},
           "parent-writable /open/first /open user eve user mallory\n"},
          {{{kFolder, "/part", "", 0, test::kBothGroup, 01775},
            {kFolder, "/lib"},
            {kLink, "/part/first", "second", test::kEve},
            {kLink, "/part/second", "third", test::kMallory},
            {kLink, "/part/third", "/lib", test::kEve}},
           {u"/part/first"},
           "parent-writable /part/first /part group both (eve, mallory)\n"},
          {{{kFolder, "/eve", "", test::kEve}, {kFolder, "/eve/lib"}, {kLink, "/lib", "eve/lib"}},
           {u"/lib"},
           "parent-writable /lib /eve user eve\n"},
          {{{kFolder, "/lib"}, {kFile, "/lib/plot.zt", "", 0, 0, 0666}},
           {u"/lib"},
           "file-writable /lib /lib/plot.zt everyone\n"},
          {{{kFolder, "/open", "", 0, 0, 01777}},
           {u"/open/lib/deep"},
           "creatable /open/lib/deep /open/lib everyone\n"},
          {{{kFolder, "/lib"}, {kFile, "/lib/plot", "", test::kEve, 0, 0644}},
           {u"/lib"},
           "owner /lib /lib/plot user eve\n",
           kProgramRules},
          {{{kFolder, "/mine"},
            {kFile, "/mine/plot.zt"},
            {kFolder, "/lib"},
            {kFile, "/lib/plot.zt", "", 0, 0, 0666},
            {kLink, "/lib/back", "."}},
           {u"/mine", u"/lib"},
           "file-writable /lib /lib/plot.zt everyone\n"},
          {{{kFolder, "/mine"},
            {kFile, "/mine/plot.zt"},
            {kFolder, "/lib"},
            {kFile, "/lib/plot.zt", "", 0, 0, 0666}},
           {u"/mine", u"/lib"},
           "file-writable /lib /lib/plot.zt everyone\n",
           kEnvironmentRules},
          {{{kFolder, "/lib"}, {kFolder, "/quoted", "", test::kEve}},
           {u"/lib"},
           "owner /quoted /quoted user eve\n",
           kIncludeRules,
           {u"/quoted"}},
          {{{kFolder, "/lib"}, {kDevice, "/lib/plot.h", "", test::kEve, 0, 0666}},
           {u"/lib"},
           "owner /lib /lib/plot.h user eve\nfile-writable /lib /lib/plot.h everyone\n",
           kIncludeRules},
          {{{kFolder, "/part", "", 0, test::kBothGroup, 0750},
            {kFolder, "/part/lib", "", 0, 0, 0755, kNobodyInGroupMayWrite}},
           {u"/part/lib"},
           "writable /part/lib /part/lib user eve user mallory\n"},
          {{{kFolder, "/open", "", 0, 0, 0777},
            {kFolder, "/lib"},
            {kFolder, "/lib/resources"},
            {kLink, "/lib/resources/far", "/open/none"},
            {kLink, "/lib/resources/+far", "/open/gone"}},
           {u"/lib"},
           "creatable /lib/resources /open/gone everyone\n",
           kEnvironmentRules},
          {{{kFolder, "/~"}, {kFolder, "/~/lib"}},
           {u"~/lib"},
           "relative /~/lib ~/lib whoever chooses the working folder\n"},
          {{{kFolder, "/lib"}}, {u"lib"}, "relative /lib lib whoever chooses the working folder\n"},
          {{}, {u""}, "empty-part / . whoever chooses the working folder\n", kProgramRules},
      },
      false);
}

TEST(TrustTest, WhatNobodyElseCanUseIsNotReported) {
  Check(
      {
          {{{kFolder, "/lib"}, {kFile, "/lib/plot.zt"}}, {u"/lib", u"/none"}, ""},
          {{{kFolder, "/open", "", 0, 0, 01777}, {kFolder, "/open/lib"}}, {u"/open/lib"}, ""},
          {{{kFolder, "/lib", "", test::kOwner, test::kOwnersGroup, 0775}}, {u"/lib"}, ""},
          {{{kFolder, "/lib", "", 0, test::kNobodysGroup, 0775}}, {u"/lib"}, ""},
          {{{kFolder, "/lib", "", 0, 0, 0755, kEveMayReadAlone}}, {u"/lib"}, ""},
          {{{kFolder, "/lib"}}, {u"~root/lib"}, "", kEnvironmentRules},
          {{{kFolder, "/lib"}, {kFile, "/lib/plot", "", 0, 0, 0666}}, {u"/lib"}, "", kProgramRules},
          {{{kFolder, "/lib"}, {kDevice, "/lib/plot.h", "", test::kEve, 0, 0666}}, {u"/lib"}, ""},
          {{{kFolder, "/mine"},
            {kFile, "/mine/plot.zt"},
            {kFolder, "/lib"},
            {kFile, "/lib/plot.zt", "", 0, 0, 0666}},
           {u"/mine", u"/lib"},
           ""},
          {{{kFolder, "/lib"},
            {kFolder, "/lib/resources"},
            {kFile, "/lib/resources/plot.zt", "", 0, 0, 0666}},
           {u"/lib"},
           "",
           kEnvironmentRules},
          {{{kFolder, "/shut", "", 0, 0, 0700}, {kFolder, "/shut/lib", "", 0, 0, 0777}},
           {u"/shut/lib"},
           ""},
      },
      false);
}

TEST(TrustTest, AFolderThatCannotBeReadToItsEndIsNotCalledSound) {
  if (!test::CanBecomeOthers()) return;
  test::InSmallMachine([] {
    test::Make({kFolder, "/lib"});
    const Environment environment({.folders = {u"/lib"}, .rules = kPlainRules});
    test::Refusing(SYS_getdents64, 2, ~0U, EIO)();
    const TrustReport report = environment.ExamineTrust({.user = test::kOwner});
    const bool isRight = report.unexamined.size() == 1 && report.unexamined[0].folder == u"/lib";
    return isRight ? "" : "found " + std::to_string(report.unexamined.size());
  });
}

TEST(TrustTest, WhatIsTooDeepIsNotCalledSound) {
  if (!test::CanBecomeOthers()) return;
  test::InSmallMachine([] {
    ustring path;
    for (int level = 0; level < 2100; ++level) {
      path += u"/d";
      test::MustBeZero(mkdir("d", 0755));
      test::MustBeZero(chdir("d"));
    }
    const TrustReport report = Environment({path}).ExamineTrust({.user = test::kOwner});
    for (int level = 0; level < 2100; ++level) {
      test::MustBeZero(chdir(".."));
      test::MustBeZero(rmdir("d"));
    }
    const bool isRight = report.findings.empty() && report.unexamined.size() == 1;
    return isRight ? "" : "found " + std::to_string(report.unexamined.size());
  });
}

TEST(TrustTest, WhatIsWrittenToTheNullDeviceChangesNoAnswer) {
  const test::TemporaryTree tree;
  tree.Link("/dev/null", "lib/plot.h");
  const Environment environment({.folders = {tree.Text("lib")}, .rules = kIncludeRules});
  EXPECT_TRUE(environment.Find({.name = u"plot.h"}));
  for (const TrustFinding& finding : environment.ExamineTrust().findings) {
    EXPECT_NE(finding.kind, TrustKind::FileWritable) << Line(finding);
  }
}

TEST(TrustTest, NamesThatAnEarlierFolderAnswersAreOutOfReach) {
  const std::vector<Thing> things = {{kFolder, "/mine"},
                                     {kFile, "/mine/plot.zt"},
                                     {kFolder, "/open", "", 0, 0, 0777},
                                     {kFile, "/open/plot.zt"},
                                     {kFile, "/open/area.zt"},
                                     {kFolder, "/lib"},
                                     {kFolder, "/lib/+geometry", "", 0, 0, 0777},
                                     {kFile, "/lib/+geometry/cone.zt"},
                                     {kFile, "/lib/axes.zt", "", test::kEve}};
  Check({{things,
          {u"/mine", u"/open", u"/lib"},
          "writable /open /open everyone: +geometry/cone.zt area.zt axes.zt\n"
          "owner /lib /lib/axes.zt user eve: axes.zt\n"
          "writable /lib/+geometry /lib/+geometry everyone: +geometry/cone.zt\n"},
         {things,
          {u"/mine", u"/open", u"/lib"},
          "writable /open /open everyone: area.zt axes.zt geometry/cone.zt\n"
          "owner /lib /lib/axes.zt user eve: axes.zt\n"
          "writable /lib/+geometry /lib/+geometry everyone: geometry/cone.zt\n",
          kEnvironmentRules},
         {{{kFolder, "/sticky", "", 0, 0, 01777},
           {kFile, "/sticky/plot.zt"},
           {kFolder, "/lib"},
           {kFile, "/lib/plot.zt"},
           {kFile, "/lib/area.zt"}},
          {u"/sticky", u"/lib"},
          "writable /sticky /sticky everyone: area.zt\n"},
         {{{kFolder, "/sticky", "", 0, 0, 01777},
           {kLink, "/sticky/plot.zt", "/lib/plot.zt", test::kMallory},
           {kLink, "/sticky/area.zt", "/lib/area.zt"},
           {kFolder, "/lib"},
           {kFile, "/lib/plot.zt"},
           {kFile, "/lib/area.zt"},
           {kFile, "/lib/axes.zt"}},
          {u"/sticky", u"/lib"},
          "writable /sticky /sticky everyone: axes.zt\n"
          "parent-writable /sticky /sticky user mallory: plot.zt\n"}},
        true);
}

}  // namespace
}  // namespace Corvane::PathManagement::host
