#ifndef SEARCHPATH_SRC_DIFF_DESCENT_CHECK_H
#define SEARCHPATH_SRC_DIFF_DESCENT_CHECK_H

#include <boost/unordered/unordered_flat_set.hpp>

#include <cstddef>

namespace Corvane::PathManagement::detail {

/// Notices when entries hang below themselves, for assertions. Each entry of a level hangs below
/// one of the level before, so a chain of entries leads to it that is as long as there were levels.
/// With more levels than entries, some entry is in its chain twice.
class DescentCheck {
 public:
  /// Called with the entries of each level; false when there were more levels than entries.
  template <class List>
  [[nodiscard]] bool MayGoBelow(const List& before, const List& after) {
    for (const List* const entries : {&before, &after}) {
      for (const auto& entry : *entries) met.insert(entry.get());
    }
    return (before.empty() && after.empty()) || ++levels <= met.size();
  }

 private:
  boost::unordered_flat_set<const void*> met;
  std::size_t levels = 0;
};

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_DIFF_DESCENT_CHECK_H
