#ifndef SEARCHPATH_SRC_DIFF_ENTRY_SORT_H
#define SEARCHPATH_SRC_DIFF_ENTRY_SORT_H

#include "searchpath/export.h"
#include "searchpath/model/path_entry.h"

#include <memory>

namespace Corvane::PathManagement::detail {

/// Sorts on several threads when the list is long.
struct EntrySort {
  using Order = bool (*)(const std::shared_ptr<const IPathEntry>& left,
                         const std::shared_ptr<const IPathEntry>& right);

  void (*byAddress)(PathEntries& entries);
  /// What `comesBefore` raises arrives at the caller, always.
  void (*inOrder)(PathEntries& entries, Order comesBefore);
};

/// Never null. A pointer, since a reference has no C linkage.
///
/// Errors: `std::runtime_error` when it is in a module that cannot be opened.
extern "C" SEARCHPATH_EXPORT const EntrySort* SearchpathEntrySort();

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_DIFF_ENTRY_SORT_H
