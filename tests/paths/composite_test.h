#ifndef SEARCHPATH_TESTS_PATHS_COMPOSITE_TEST_H
#define SEARCHPATH_TESTS_PATHS_COMPOSITE_TEST_H

#include "support/names.h"

#include <gtest/gtest.h>

namespace Corvane::PathManagement::test {

using Parts = std::vector<std::shared_ptr<const IPath>>;

inline const std::uint32_t kKinds[] = {1, 3};
inline const SearchScope kScope(kKinds, 2);
inline const Target kTarget(u"t", {u".x"});
inline constexpr Policy kPolicy = Policy::IgnoreCase;

/// Two parts: p holds the entries a and b, q holds b and twice c; neither holds d.
struct CompositeTest : testing::Test {
  CallLog log;
  std::shared_ptr<FakeEntry> a = std::make_shared<FakeEntry>("a", u"file:///a");
  std::shared_ptr<FakeEntry> b = std::make_shared<FakeEntry>("b", u"file:///b");
  std::shared_ptr<FakeEntry> c = std::make_shared<FakeEntry>("c", u"file:///c");
  std::shared_ptr<FakeEntry> d = std::make_shared<FakeEntry>("d", u"file:///d");
  std::shared_ptr<FakePath> p = MakePart("p", {a, b}, &log);
  std::shared_ptr<FakePath> q = MakePart("q", {b, c, c}, &log);

  template <class Answer>
  std::string Asked(const Answer& answer) {
    return log.Take(Names(answer));
  }
  /// Visits the entries of `path` up to `last`.
  bool Visit(const IPath& path, bool (IPath::*forEach)(SearchScope, const Visitor&) const,
             const EntryPointer& last) {
    return (path.*forEach)(kScope, [&](const EntryPointer& entry) {
      log.Add(Names(entry));
      return entry == last;
    });
  }
  /// `answer`, after both parts were asked.
  static std::string Both(const std::string& answer, const std::string& call) {
    return answer + " p." + call + " q." + call;
  }
};

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_PATHS_COMPOSITE_TEST_H
