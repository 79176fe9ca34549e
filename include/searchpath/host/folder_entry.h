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

/// A folder on disk, as it was when its names were first asked for.
///
/// An entry is a snapshot: the folder is listed once, when a question first needs that, and never
/// again. The listing is one pass of directory reads, or comes from a cache: a `PathEntryFactory`
/// that has read saved listings. Up to 16 questions for single names are answered without a
/// listing: the disk is asked about these names alone. A listing that is made after such answers
/// agrees with them, whatever has changed meanwhile.
///
/// The items are the regular files, and links to regular files; folders, devices, broken links and
/// the like are left out. A folder that cannot be read is an empty entry with a problem.
///
/// The special folders directly below ("+", "@", private, resources) have entries of their own. A
/// link with the name of a special folder that leads back to a folder above it is not followed, and
/// is reported as a problem.
///
/// Threads: all operations, from any thread.
/// Ownership: an entry owns the entries of its special folders.
/// Errors: an error of the disk is a problem of the entry, not an exception.
/// Cost: `FindItem` and `FindItems` open the folder and make a system call for each name until the
/// folder is listed; under `IgnoreCase` they list. The first question about the canonical location
/// resolves links. Names stay in one block as the disk gave them; items, and the entries below, are
/// made when they are first asked for and then kept.
class SEARCHPATH_EXPORT FolderEntry : public IPathEntry,
                                      public std::enable_shared_from_this<FolderEntry> {
 public:
  /// An entry for a folder that is put on a path. Its kind is `Ordinary` whatever its name is: a
  /// folder on the path itself, even one called "+pkg", is searched as any other.
  [[nodiscard]] static std::shared_ptr<const FolderEntry> Create(const AbsoluteIRI& location);

  FolderEntry(const FolderEntry&) = delete;
  FolderEntry& operator=(const FolderEntry&) = delete;
  ~FolderEntry() override;

  [[nodiscard]] PathEntryType GetPathEntryType() const override;
  /// How many items there are. Lists the folder, but makes no items.
  [[nodiscard]] std::size_t GetItemCount() const;
  /// In the order of the bytes of their names.
  [[nodiscard]] std::shared_ptr<const PathItems> GetItems() const override;
  [[nodiscard]] CanonicalAbsoluteIRI GetCanonicalAbsoluteIRI() const override;
  [[nodiscard]] AbsoluteIRI GetAbsoluteIRI() const override;
  /// The private folder; null when there is none.
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetSingleSubfolderEntryA() const override;
  /// The resources folder; null when there is none.
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetSingleSubfolderEntryB() const override;
  /// The "+" folders.
  [[nodiscard]] std::shared_ptr<const PathEntries> GetSubfolderEntriesA() const override;
  /// The "@" folders.
  [[nodiscard]] std::shared_ptr<const PathEntries> GetSubfolderEntriesB() const override;
  /// Always empty: a folder on disk has no other special folders than those of the four getters
  /// above.
  [[nodiscard]] std::shared_ptr<const PathEntries> GetSubfolderEntriesC() const override;
  [[nodiscard]] std::shared_ptr<const PathItem> FindItem(
      const PathManagement::detail::SearchTarget& target,
      FilenameMatchingPolicy policy) const override;
  /// In the order of the extensions; under `IgnoreCase` the exact name comes before names that
  /// differ in case.
  [[nodiscard]] PathItems FindItems(const PathManagement::detail::SearchTarget& target,
                                    FilenameMatchingPolicy policy) const override;
  bool ForEachEntryInScope(SearchScope scope, const PathEntryVisitor& visitor) const override;
  /// Visits on the calling thread: below one folder, more threads would not pay.
  bool ConcurrentForEachEntryInScope(SearchScope scope,
                                     const PathEntryVisitor& visitor) const override;
  [[nodiscard]] std::shared_ptr<std::function<bool(const ustring&, const ustring&)>>
  GetFilenameComparator(FilenameMatchingPolicy policy) const override;

  /// The entries directly below, in path order: private, resources, "+" folders, "@" folders, each
  /// group in the order of the bytes of their names.
  [[nodiscard]] const FolderEntries& GetSpecialFolders() const;

  /// Entries for the ordinary folders directly below, in the order of the bytes of their names.
  /// They are not on the path and are made anew at each call.
  [[nodiscard]] FolderEntries CreateOrdinaryFolders() const;

  /// Why this folder, or a link directly below it, is not searched. A folder that has not been
  /// listed is only opened, to see whether it can be read. One that a cache has a listing of is
  /// listed, as if a question needed that: it mostly costs less and shows more.
  [[nodiscard]] std::vector<FolderProblem> GetProblems() const;

  /// Whether the folder is still as its listing says, be the listing from the disk or from a cache.
  /// Does not list the folder: without a listing the answer is `Unknown`.
  ///
  /// Cost: one question to the disk.
  [[nodiscard]] Freshness GetFreshness() const;

 private:
  friend FolderState& StateOf(const FolderEntry& entry) noexcept;
  friend std::shared_ptr<const FolderEntry> CreateEntry(
      std::unique_ptr<FolderState> state, std::unique_ptr<FolderEntries> specialFolders);

  FolderEntry(std::unique_ptr<FolderState> initialState,
              std::unique_ptr<FolderEntries> initialSpecialFolders);
  /// An entry for each of `states`.
  [[nodiscard]] static FolderEntries CreateAll(std::vector<std::unique_ptr<FolderState>> states);
  /// Lists the folder unless it is listed, and returns its state.
  [[nodiscard]] FolderState& ListedState() const;

  std::unique_ptr<FolderState> state;
  mutable std::atomic<FolderEntries*> specialFolders;  // owned; null until they are asked for
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_FOLDER_ENTRY_H
