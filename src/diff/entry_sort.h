#ifndef SEARCHPATH_SRC_DIFF_ENTRY_SORT_H
#define SEARCHPATH_SRC_DIFF_ENTRY_SORT_H

#include "searchpath/export.h"
#include "searchpath/model/path_entry.h"

#include <memory>

namespace Corvane::PathManagement::detail {

/// Sorts lists of entries, long ones on several threads. As pointers to functions, since the code
/// may be in a module that is opened at the first sort, see `FindInModule`.
struct EntrySort {
  using Order = bool (*)(const std::shared_ptr<const IPathEntry>& left,
                         const std::shared_ptr<const IPathEntry>& right);

  void (*byAddress)(PathEntries& entries);
  /// Whatever `comesBefore` raises is raised to the caller.
  void (*inOrder)(PathEntries& entries, Order comesBefore);
};

/// Never null; a pointer, since functions with C linkage return no reference.
///
/// Errors: `std::runtime_error` when it is in a module that cannot be opened.
extern "C" SEARCHPATH_EXPORT const EntrySort* SearchpathEntrySort();

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_DIFF_ENTRY_SORT_H
