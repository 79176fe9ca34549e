#ifndef SEARCHPATH_SRC_HOST_FOLDER_FOLDER_STATE_H
#define SEARCHPATH_SRC_HOST_FOLDER_FOLDER_STATE_H

#include "host/folder/folder_chain.h"
#include "host/folder/folder_listing.h"
#include "host/folder/listing_source.h"
#include "host/folder/remembered_items.h"
#include "searchpath/host/folder_entry.h"
#include "searchpath/utilities/once_flag.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Corvane::PathManagement::host {

/// What a `FolderEntry` is and holds.
///
/// Threads: all operations, from any thread.
class FolderState {
 public:
  /// A folder that is put on a path. Its listing, and those of the folders below it, come from
  /// `source`; from the disk when that is null.
  [[nodiscard]] static std::shared_ptr<const FolderEntry> CreateMainFolder(
      const AbsoluteIRI& location, std::shared_ptr<const ListingSource> source);
  FolderState(const FolderState&) = delete;
  FolderState& operator=(const FolderState&) = delete;
  ~FolderState();

  [[nodiscard]] const AbsoluteIRI& Location() const noexcept { return location; }
  /// Resolved when it is first asked for: a path of many folders that is asked little needs few.
  [[nodiscard]] const CanonicalAbsoluteIRI& Canonical() { return Identify().canonical; }
  [[nodiscard]] PathEntryType Kind() const noexcept { return kind; }
  /// The folders that lead down to this one.
  [[nodiscard]] const FolderChain& Chain() { return Identify().chain; }

  /// Lists the folder unless that has been done. Precondition of all that follows.
  void List();

  [[nodiscard]] const FolderListing& Listing() const noexcept { return listing; }
  [[nodiscard]] const NameBlock& Files() const noexcept { return listing.files; }
  /// How long listing the folder took.
  [[nodiscard]] std::chrono::nanoseconds ListingTime() const noexcept { return listingTime; }
  [[nodiscard]] const FolderEntries& SpecialFolders() const noexcept { return specialFolders; }
  [[nodiscard]] FolderEntries MakeOrdinaryFolders();

  /// The item of the file at `index`: always the same object, kept as long as this one.
  [[nodiscard]] const std::shared_ptr<const PathItem>& ItemAt(std::size_t index);

  /// The files called `name`, the very name first, then, under `IgnoreCase`, the others by their
  /// bytes.
  [[nodiscard]] std::vector<std::size_t> FilesNamed(const ustring& name,
                                                    FilenameMatchingPolicy policy) const;

  /// As `FolderEntry::GetProblems`: may be asked before the folder is listed.
  [[nodiscard]] std::vector<FolderProblem> Problems();

  /// As `FolderEntry::GetFreshness`: may be asked before the folder is listed.
  [[nodiscard]] Freshness AskFreshness() const;

  // For two versions of a folder; all but the first only once it has been listed.

  /// Whether nobody has asked for what it holds, and listing it will show the folder as it is then.
  [[nodiscard]] bool IsUntouched() const noexcept;
  [[nodiscard]] bool IsListed() const noexcept { return listedOnce.IsBuilt(); }
  /// Whether files and problems are the same, whatever the order of the disk. What hangs below, and
  /// ordinary folders, which no path leads to, are not asked.
  [[nodiscard]] bool HoldsSameAs(const FolderState& other) const;
  /// The same folder, to be listed from the disk. May be asked before this one is listed.
  [[nodiscard]] std::shared_ptr<const FolderEntry> MakeUnlisted();
  /// The same folder with `below` in place of its special folders.
  [[nodiscard]] std::shared_ptr<const FolderEntry> MakeWith(FolderEntries below);

 private:
  /// Which folder this is, and how it was reached.
  struct Identity {
    CanonicalAbsoluteIRI canonical;
    FolderChain chain;
  };

  FolderState(AbsoluteIRI folderLocation, PathEntryType folderKind,
              std::shared_ptr<const ListingSource> listingSource,
              std::optional<Identity> knownIdentity);

  [[nodiscard]] const Identity& Identify();
  void AddSpecialFolder(const FolderListing::Subfolder& subfolder);
  [[nodiscard]] std::shared_ptr<const FolderEntry> MakeBelow(
      const FolderListing::Subfolder& subfolder);
  [[nodiscard]] std::shared_ptr<const FolderEntry> MakeBehindLink(
      const FolderListing::Subfolder& subfolder, CanonicalAbsoluteIRI target);
  [[nodiscard]] std::shared_ptr<const FolderEntry> Make(const FolderListing::Subfolder& subfolder,
                                                        Identity subfolderIdentity) const;
  [[nodiscard]] std::vector<std::size_t> FilesThatDifferInCase(const ustring& name) const;

  AbsoluteIRI location;
  PathEntryType kind;
  std::shared_ptr<const ListingSource> source;  // null: the disk; the listing may view it

  PathManagement::detail::OnceFlag identifiedOnce;  // guards identity
  std::optional<Identity> identity;

  std::atomic<bool> listingHasBegun = false;
  PathManagement::detail::OnceFlag listedOnce;  // guards what follows
  FolderListing listing;
  std::chrono::nanoseconds listingTime = {};
  FolderEntries specialFolders;
  std::vector<FolderProblem> cutLinks;
  RememberedItems items;
};

/// The state behind an entry, for the parts of the host that work on many at once.
[[nodiscard]] FolderState& StateOf(const FolderEntry& entry) noexcept;

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_FOLDER_STATE_H
