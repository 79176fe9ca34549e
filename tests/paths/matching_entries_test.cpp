#include "searchpath/utilities/matching_entries.h"

#include "support/recording.h"

#include <gtest/gtest.h>

namespace Corvane::PathManagement {
namespace {

using namespace test;
using current_working_folder::AbsolutizeError;
using current_working_folder::FailedToAbsolutizeException;

struct MatchingEntriesTest : testing::Test {
  CallLog log;
  FakeWorkingFolder folder{&log};
  std::shared_ptr<FakeEntry> a = std::make_shared<FakeEntry>("a", u"file:///a");
  std::shared_ptr<FakePath> p = MakePart("p", {a}, &log);

  std::string Match(const ustring& name) {
    const Scope scope(nullptr, 0);
    return log.Take(Names(GetMatchingEntries(scope, name, *p, folder, Policy::IgnoreCase)));
  }
};

TEST_F(MatchingEntriesTest, AsksForTheFolderOrForTheEndOfOne) {
  folder.everything.emplace(u"file:///working-folder");
  p->entryByIRI[folder.everything->toString()] = a;
  EXPECT_EQ(Match(u""), "");
  for (const ustring name : {u"a", u"b/c", u"a//b", u"./", u".", u"\\\\share", u"+p/@c"}) {
    EXPECT_EQ(Match(name), "a p.GetPartiallyMatchingEntries({}," + Printed(name) + ",1)");
  }
  const std::string byIRI = ") p.GetPathEntryFromAbsoluteIRI(file:///working-folder,1)";
  for (const ustring name : {u"/", u"/a", u"//", u"//share", u"~", u"~/a", u"file:///x"}) {
    EXPECT_EQ(Match(name), "a cwf.absolutize(" + Printed(name) + byIRI);
  }
  p->entryByIRI.clear();
  EXPECT_EQ(Match(u"/a"), " cwf.absolutize(/a" + byIRI);
}

TEST_F(MatchingEntriesTest, WhatCannotBeMadeAbsoluteDenotesNothing) {
  for (const std::size_t failing : {1U, 2U}) {
    log.onCall = [&](const std::string&) {
      if (log.calls.size() == failing) throw FailedToAbsolutizeException(AbsolutizeError::Absent);
      if (log.calls.size() > 2) throw std::bad_exception();
    };
    EXPECT_EQ(Match(u"/a").substr(0, 19), " cwf.absolutize(/a)");
    log.calls.resize(2);
    EXPECT_THROW(Match(u"/a"), std::bad_exception);
    log.calls.resize(failing - 1);
    EXPECT_THROW(Match(u"a"), FailedToAbsolutizeException);
    log.Take();
  }
}

}  // namespace
}  // namespace Corvane::PathManagement
