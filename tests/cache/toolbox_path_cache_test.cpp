#include "searchpath/utilities/toolbox_path_cache.h"

#include "support/temporary_tree.h"

#include <boost/exception_ptr.hpp>
#include <boost/throw_exception.hpp>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <functional>
#include <map>
#include <pthread.h>
#include <thread>

namespace Corvane::PathManagement {
namespace {

using ReadError = ToolboxCacheWrongFormatException;
using WriteError = UnableToSaveToolboxCacheException;

struct FakeFactory : IPathEntryFactory {
  void ReadEntries(std::istream& stream, const AbsoluteIRI& root) override {
    entries = root.toString() + (stream ? u" " : u" failed");
    onCall(stream);
    for (std::string line; std::getline(stream, line);) entries += TextFromBytes(line);
  }
  void WriteEntries(std::ostream& stream, const AbsoluteIRI& root) const override {
    stream << BytesFromText(root.toString()).value() << std::flush;
    onCall(stream);
    stream << " new";
  }

  std::function<void(std::ios&)> onCall = [](std::ios&) {};
  ustring entries;
};

struct ToolboxPathCacheTest : testing::Test {
  ToolboxPathCacheTest() { tree.File("cache", "old"); }

  void Write() const { WriteToolboxPathCache(cache, root, factory); }
  void Load() { LoadToolboxPathCache(cache, root, factory); }

  void ExpectNothingChanged(const std::string& what) const {
    std::string content;
    std::getline(std::ifstream(tree.Path("cache")), content);
    EXPECT_EQ(content, "old") << what;
    const std::filesystem::directory_iterator names(tree.Path());
    EXPECT_EQ(std::distance(begin(names), end(names)), 1) << what << " left something behind";
  }

  test::TemporaryTree tree;
  ustring cache = tree.Text("cache"), root = u"/lib \xDCFF";
  FakeFactory factory;
};

TEST_F(ToolboxPathCacheTest, WhatWasWrittenIsReadBack) {
  std::vector<std::ios::iostate> masks;
  factory.onCall = [&](auto& stream) { masks.push_back(stream.exceptions()); };
  Write(), Load();
  EXPECT_EQ(masks, std::vector({std::ios::failbit | std::ios::badbit, std::ios::goodbit}));
  EXPECT_EQ(factory.entries, u"file:///lib%20%FF file:///lib%20%FF new");
}

TEST_F(ToolboxPathCacheTest, WhateverAFactoryThrowsBecomesOneException) {
  const std::map<std::string, std::function<void(std::ios&)>> rows = {
      {"an exception", [](auto&) { throw std::bad_alloc(); }},
      {"another thing", [](auto&) { throw 1; }},
      {"a bad stream", [](auto& s) { s.exceptions(s.goodbit), s.setstate(s.badbit); }}};
  for (const auto& [name, onCall] : rows) {
    factory.onCall = onCall;
    EXPECT_THROW(Write(), WriteError) << name;
    ExpectNothingChanged(name);
    EXPECT_THROW(Load(), ReadError) << name;
  }
}

// The address sanitizer misses that a cancelled stack is gone, unless its presets' options are set.
TEST_F(ToolboxPathCacheTest, AThreadMayBeCancelledInAFactoryAndOnlyThere) {
  for (const bool atOnce : {true, false}) {
    factory.onCall = [atOnce](auto&) {
      pthread_cancel(pthread_self());
      if (atOnce) pthread_testcancel();
      throw 1;  // and closing the file must not act on the cancellation
    };
    for (const bool isWrite : {true, false}) {
      bool isCaught = false;
      std::thread([&] {
        try {
          isWrite ? Write() : Load();
        } catch (const std::exception&) {
          isCaught = true;
        }
      }).join();
      EXPECT_EQ(isCaught, !atOnce);
      ExpectNothingChanged("a cancellation");
    }
  }
}

TEST_F(ToolboxPathCacheTest, OddPathsEndInTheSameExceptions) {
  ASSERT_EQ(mkfifo(tree.Path("fifo").c_str(), 0600), 0);
  const ustring good = cache, lib = u"/lib", absent = tree.Text("absent/cache");
  for (const auto& [oddCache, oddRoot] :
       std::vector<std::pair<ustring, ustring>>{{absent, lib},
                                                {tree.Text(), lib},
                                                {tree.Text("fifo"), lib},
                                                {u"", lib},
                                                {u"/\xD800", lib},
                                                {good, u"lib"},
                                                {good, u""},
                                                {good, u"/\xD800"}}) {
    cache = oddCache, root = oddRoot;
    const std::string name = testing::PrintToString(cache + u", " + root);
    EXPECT_THROW(Write(), WriteError) << name;
    EXPECT_THROW(Load(), ReadError) << name;
    // A stream that is not open is for the factory to see, a root that is none is not.
    EXPECT_EQ(std::exchange(factory.entries, u""), root == lib ? u"file:///lib failed" : u"")
        << name;
  }
  std::filesystem::remove(tree.Path("fifo"));
  ExpectNothingChanged("a row");
}

TEST(UnableToSaveToolboxCacheExceptionTest, KeepsItsTypeThroughBoost) {
  for (const std::function<void()>& raise : std::initializer_list<std::function<void()>>{
           [] { throw WriteError(); }, [] { boost::throw_exception(WriteError()); },
           [] { throw boost::enable_current_exception(WriteError()); },
           [] { boost::rethrow_exception(boost::copy_exception(WriteError())); }}) {
    boost::exception_ptr kept;
    try {
      raise();
    } catch (const foundation::core::except::IInternalException&) {
      kept = boost::current_exception();
    }
    EXPECT_THROW(boost::rethrow_exception(kept), WriteError);
  }
  static_assert(std::is_nothrow_move_assignable_v<WriteError>);
}

}  // namespace
}  // namespace Corvane::PathManagement
