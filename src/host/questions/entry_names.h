#ifndef SEARCHPATH_SRC_HOST_QUESTIONS_ENTRY_NAMES_H
#define SEARCHPATH_SRC_HOST_QUESTIONS_ENTRY_NAMES_H

#include "host/names/name_block.h"
#include "searchpath/model/found_item.h"
#include "searchpath/model/path_entry.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace Corvane::PathManagement::host {

class FolderState;

/// The names of the files in one entry, as bytes. Those of a folder on disk are as the disk gave
/// them, and no items are made for them; those of any other entry are made from its items, and a
/// name that stands for no bytes is left out.
class EntryNames {
 public:
  EntryNames() = default;
  /// Lists a folder on disk.
  explicit EntryNames(std::shared_ptr<const IPathEntry> namedEntry);

  /// Valid until this object is moved or destroyed.
  [[nodiscard]] const NameBlock& Get() const noexcept;
  /// The file whose name has this index.
  [[nodiscard]] FoundItem At(std::size_t index) const;

 private:
  std::shared_ptr<const IPathEntry> entry;
  FolderState* onDisk = nullptr;  // owned by the entry; null when it is no folder on disk
  // Only of an entry that is no folder on disk:
  NameBlock names;
  PathItems items;  // in the order of `names`
};

/// The names of each of `entries`, in their order. Lists them on all processors.
[[nodiscard]] std::vector<EntryNames> NamesOf(const PathEntries& entries);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_QUESTIONS_ENTRY_NAMES_H
