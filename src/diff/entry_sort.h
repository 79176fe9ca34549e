#ifndef SEARCHPATH_SRC_DIFF_ENTRY_SORT_H
#define SEARCHPATH_SRC_DIFF_ENTRY_SORT_H

#include "searchpath/export.h"
#include "searchpath/model/path_entry.h"

#include <memory>

namespace Corvane::PathManagement::detail {

/// Functions that sort lists of entries, long ones on several threads. They are called through
/// pointers, since their code may be in a module that is opened at the first sort, see
/// `FindInModule`.
struct EntrySort {
  using Order = bool (*)(const std::shared_ptr<const IPathEntry>& left,
                         const std::shared_ptr<const IPathEntry>& right);

  void (*byAddress)(PathEntries& entries);
  /// An exception of `comesBefore` passes through.
  void (*inOrder)(PathEntries& entries, Order comesBefore);
};

/// Never null. It returns a pointer, since a function with C linkage should not return a reference.
///
/// Errors: `std::runtime_error` when the code is in a module that cannot be opened.
extern "C" SEARCHPATH_EXPORT const EntrySort* SearchpathEntrySort();

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_DIFF_ENTRY_SORT_H
