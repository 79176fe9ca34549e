#ifndef SEARCHPATH_SRC_DIFF_DESCENT_CHECK_H
#define SEARCHPATH_SRC_DIFF_DESCENT_CHECK_H

#include <boost/unordered/unordered_flat_set.hpp>

#include <cstddef>

namespace Corvane::PathManagement::detail {

/// For assertions: notices when an entry is below itself. Each entry of a level is below an entry
/// of the level before, so a chain with one entry for each level leads down to it. When there have
/// been more levels than entries, some entry is in the chain twice.
class DescentCheck {
 public:
  /// To be called with the entries of each level, those in `before` and those in `after`. False
  /// when there have been more levels than different entries. True for an empty level, the last
  /// one.
  template <class List>
  [[nodiscard]] bool MayGoBelow(const List& before, const List& after) {
    for (const List* const entries : {&before, &after}) {
      for (const auto& entry : *entries) met.insert(entry.get());
    }
    return (before.empty() && after.empty()) || ++levels <= met.size();
  }

 private:
  boost::unordered_flat_set<const void*> met;  // the entries of all levels
  std::size_t levels = 0;                      // so far, without an empty one
};

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_DIFF_DESCENT_CHECK_H
