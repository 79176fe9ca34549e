#ifndef SEARCHPATH_SRC_HOST_FOLDER_STATE_H
#define SEARCHPATH_SRC_HOST_FOLDER_STATE_H

#include "host/folder_chain.h"
#include "host/folder_listing.h"
#include "host/remembered_items.h"
#include "searchpath/host/folder_entry.h"
#include "searchpath/utilities/once_flag.h"

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
  using Folders = std::vector<std::shared_ptr<const FolderEntry>>;

  /// The state of a folder that is put on a path.
  [[nodiscard]] static std::unique_ptr<FolderState> OfMainFolder(const AbsoluteIRI& location);
  FolderState(const FolderState&) = delete;
  FolderState& operator=(const FolderState&) = delete;
  ~FolderState();

  [[nodiscard]] const AbsoluteIRI& Location() const noexcept { return location; }
  [[nodiscard]] const CanonicalAbsoluteIRI& Canonical() const noexcept { return canonical; }
  [[nodiscard]] PathEntryType Kind() const noexcept { return kind; }
  /// The folders that lead down to this one.
  [[nodiscard]] const FolderChain& Chain() const noexcept { return chain; }

  /// Lists the folder unless that has been done. Precondition of all that follows.
  void List();

  [[nodiscard]] const NameBlock& Files() const noexcept { return listing.files; }
  /// How long listing the folder took.
  [[nodiscard]] std::chrono::nanoseconds ListingTime() const noexcept { return listingTime; }
  [[nodiscard]] const Folders& SpecialFolders() const noexcept { return specialFolders; }
  [[nodiscard]] Folders MakeOrdinaryFolders() const;

  /// The item of the file at `index`: always the same object, kept as long as this one.
  [[nodiscard]] const std::shared_ptr<const PathItem>& ItemAt(std::size_t index);

  /// The files called `name`, the very name first, then, under `IgnoreCase`, the others by their
  /// bytes.
  [[nodiscard]] std::vector<std::size_t> FilesNamed(const ustring& name,
                                                    FilenameMatchingPolicy policy) const;

  /// As `FolderEntry::GetProblems`: may be asked before the folder is listed.
  [[nodiscard]] std::vector<FolderProblem> Problems() const;

 private:
  FolderState(AbsoluteIRI folderLocation, CanonicalAbsoluteIRI identity, PathEntryType folderKind,
              FolderChain folderChain);

  void AddSpecialFolder(const FolderListing::Subfolder& subfolder);
  [[nodiscard]] std::shared_ptr<const FolderEntry> MakeBelow(
      const FolderListing::Subfolder& subfolder) const;
  [[nodiscard]] std::shared_ptr<const FolderEntry> MakeBehindLink(
      const FolderListing::Subfolder& subfolder, CanonicalAbsoluteIRI target) const;
  [[nodiscard]] std::vector<std::size_t> FilesThatDifferInCase(const ustring& name) const;

  AbsoluteIRI location;
  CanonicalAbsoluteIRI canonical;
  PathEntryType kind;
  FolderChain chain;

  PathManagement::detail::OnceFlag listedOnce;  // guards what follows
  FolderListing listing;
  std::chrono::nanoseconds listingTime = {};
  Folders specialFolders;
  std::vector<FolderProblem> cutLinks;
  RememberedItems items;
};

/// The state behind an entry, for the parts of the host that work on many at once.
[[nodiscard]] FolderState& StateOf(const FolderEntry& entry) noexcept;

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_STATE_H
