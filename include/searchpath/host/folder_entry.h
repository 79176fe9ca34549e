#ifndef SEARCHPATH_HOST_FOLDER_ENTRY_H
#define SEARCHPATH_HOST_FOLDER_ENTRY_H

#include "searchpath/export.h"
#include "searchpath/host/folder_problem.h"
#include "searchpath/host/freshness.h"
#include "searchpath/model/path_entry.h"

#include <atomic>
#include <cstddef>
#include <memory>
#include <vector>

namespace Corvane::PathManagement::host {

class FolderEntry;
class FolderState;

/// Several folders; what returns them says in which order.
using FolderEntries = std::vector<std::shared_ptr<const FolderEntry>>;

/// A folder on disk, as it was when it was first asked.
///
/// The folder is listed once, at its first question, with one pass of directory reads, and never
/// again: an entry is a snapshot. The listing may also come from a `PathEntryFactory`. Its items are
/// the regular files, also through links; folders, devices, dangling links and the like are none. A
/// folder that cannot be read is an empty entry with a problem.
///
/// Special folders below it ("+", "@", private, resources) are entries of their own. A link that
/// leads back to a folder above it is cut and reported as a problem.
///
/// Threads: all operations, from any thread.
/// Ownership: an entry owns those below it.
/// Errors: the disk's are problems, not exceptions.
/// Cost: the first question lists the folder; the first one about its identity resolves its links;
/// names stay in one block as the disk gave them, and an item is made when it is first asked for and
/// then kept.
class SEARCHPATH_EXPORT FolderEntry : public IPathEntry,
                                      public std::enable_shared_from_this<FolderEntry> {
 public:
  /// An entry for a folder that is put on a path. It is of the kind `Ordinary` whatever its name
  /// is: a folder on the path itself is searched.
  [[nodiscard]] static std::shared_ptr<const FolderEntry> Create(const AbsoluteIRI& location);

  FolderEntry(const FolderEntry&) = delete;
  FolderEntry& operator=(const FolderEntry&) = delete;
  ~FolderEntry() override;

  [[nodiscard]] PathEntryType GetPathEntryType() const override;
  /// How many items there are; makes none. Lists the folder.
  [[nodiscard]] std::size_t GetItemCount() const;
  /// In the order of the bytes of their names.
  [[nodiscard]] std::shared_ptr<const PathItems> GetItems() const override;
  [[nodiscard]] CanonicalAbsoluteIRI GetCanonicalAbsoluteIRI() const override;
  [[nodiscard]] AbsoluteIRI GetAbsoluteIRI() const override;
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetSingleSubfolderEntryA() const override;
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetSingleSubfolderEntryB() const override;
  [[nodiscard]] std::shared_ptr<const PathEntries> GetSubfolderEntriesA() const override;
  [[nodiscard]] std::shared_ptr<const PathEntries> GetSubfolderEntriesB() const override;
  /// Empty: no further folders hang below a folder on disk.
  [[nodiscard]] std::shared_ptr<const PathEntries> GetSubfolderEntriesC() const override;
  [[nodiscard]] std::shared_ptr<const PathItem> FindItem(
      const PathManagement::detail::SearchTarget& target,
      FilenameMatchingPolicy policy) const override;
  /// In the order of the extensions; under `IgnoreCase` the very name before names that differ in
  /// case.
  [[nodiscard]] PathItems FindItems(const PathManagement::detail::SearchTarget& target,
                                    FilenameMatchingPolicy policy) const override;
  bool ForEachEntryInScope(SearchScope scope, const PathEntryVisitor& visitor) const override;
  /// Visits on the calling thread: below one folder there is too little to share out.
  bool ConcurrentForEachEntryInScope(SearchScope scope,
                                     const PathEntryVisitor& visitor) const override;
  [[nodiscard]] std::shared_ptr<std::function<bool(const ustring&, const ustring&)>>
  GetFilenameComparator(FilenameMatchingPolicy policy) const override;

  /// The entries directly below, in path order: private, resources, "+" folders, "@" folders, each
  /// group in the order of the bytes of their names.
  [[nodiscard]] const FolderEntries& GetSpecialFolders() const;

  /// Entries for the ordinary folders directly below, in the order of the bytes of their names.
  /// Made anew at each call: nothing on the path leads to them.
  [[nodiscard]] FolderEntries CreateOrdinaryFolders() const;

  /// What keeps this folder, or a link directly below it, from being searched. Opens the folder
  /// when it has not been listed, but does not list it; an entry from a cache is listed.
  [[nodiscard]] std::vector<FolderProblem> GetProblems() const;

  /// Whether the folder is still as its listing says, which may have come from a cache. Lists
  /// nothing: an entry that has no listing yet is `Unknown`.
  ///
  /// Cost: one question to the disk.
  [[nodiscard]] Freshness GetFreshness() const;

 private:
  friend FolderState& StateOf(const FolderEntry& entry) noexcept;
  friend std::shared_ptr<const FolderEntry> CreateEntry(
      std::unique_ptr<FolderState> state, std::unique_ptr<FolderEntries> specialFolders);

  FolderEntry(std::unique_ptr<FolderState> initialState,
              std::unique_ptr<FolderEntries> initialFolders);
  [[nodiscard]] static FolderEntries CreateAll(std::vector<std::unique_ptr<FolderState>> states);
  [[nodiscard]] FolderState& ListedState() const;

  std::unique_ptr<FolderState> state;
  mutable std::atomic<FolderEntries*> specialFolders;  // owned; null until they are asked for
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_FOLDER_ENTRY_H
