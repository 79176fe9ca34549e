#ifndef SEARCHPATH_TESTS_ROBUSTNESS_CACHE_OPERATIONS_H
#define SEARCHPATH_TESTS_ROBUSTNESS_CACHE_OPERATIONS_H

#include "searchpath/utilities/toolbox_path_cache.h"
#include "support/temporary_tree.h"

#include <istream>

namespace Corvane::PathManagement::test {

/// A cache on the disk, alone in its folder, and the factory of what it holds.
struct CacheWorld : IPathEntryFactory {
  void Renew() { WriteToolboxPathCache(tree.Text("cache"), u"/a-folder-on-the-heap", *this); }
  void Forget() {
    const std::filesystem::directory_iterator names(tree.Path());
    if (std::distance(begin(names), end(names)) > 1) throw std::runtime_error("left behind");
  }
  void ReadEntries(std::istream& stream, const AbsoluteIRI& /*root*/) override {
    if (stream.get() != 'x') throw std::bad_alloc();
  }
  void WriteEntries(std::ostream& stream, const AbsoluteIRI& /*root*/) const override {
    stream << 'x';
  }

  TemporaryTree tree;
};

/// As `ForEachPathOperation`. What the operations raise without memory says no more than that.
template <class Visit>
void ForEachCacheOperation(const Visit& visit) {
  visit("write a cache", [](CacheWorld& w) {
    try {
      return w.Renew(), true;
    } catch (const UnableToSaveToolboxCacheException&) {
      throw std::bad_alloc();
    }
  });
  visit("load a cache", [](CacheWorld& w) {
    try {
      return LoadToolboxPathCache(w.tree.Text("cache"), u"/a-folder-on-the-heap", w), true;
    } catch (const ToolboxCacheWrongFormatException&) {
      throw std::bad_alloc();
    }
  });
}

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_ROBUSTNESS_CACHE_OPERATIONS_H
