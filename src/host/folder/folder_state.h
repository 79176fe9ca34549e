#ifndef SEARCHPATH_SRC_HOST_FOLDER_FOLDER_STATE_H
#define SEARCHPATH_SRC_HOST_FOLDER_FOLDER_STATE_H

#include "host/common/disk_patience.h"
#include "host/folder/folder_identity.h"
#include "host/folder/folder_listing.h"
#include "host/folder/item_store.h"
#include "host/folder/name_answers.h"
#include "platform/canonical_path.h"
#include "searchpath/host/folder_problem.h"
#include "searchpath/model/filename_matching_policy.h"
#include "searchpath/utilities/once_flag.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement::host {

using foundation::storage::vfs::detail::LinkResolver;

/// The item of the file called `file` in `folder`.
[[nodiscard]] PathItem CreateItem(AbsoluteIRI folder, std::string_view file);

/// What is known of a folder: where it stands, which one it is, what it holds. Knows nothing of
/// entries.
///
/// Threads: all operations, from any thread.
class FolderState {
 public:
  using Folders = std::vector<std::unique_ptr<FolderState>>;

  /// A folder that is put on a path. Its listing, and those of the folders below it, come from
  /// `listingSource`; from the disk when that is null. For each of them the disk is waited for as
  /// long as `limit` says.
  FolderState(AbsoluteIRI folderLocation, std::shared_ptr<const ListingSource> listingSource,
              DiskPatience::Limit limit = {})
      : FolderState(std::move(folderLocation), PathEntryType::Ordinary, std::move(listingSource),
                    limit, std::nullopt) {}
  FolderState(const FolderState&) = delete;
  FolderState& operator=(const FolderState&) = delete;
  ~FolderState() = default;

  [[nodiscard]] const AbsoluteIRI& Location() const noexcept { return location; }
  [[nodiscard]] PathEntryType Kind() const noexcept { return kind; }
  /// Found out when first asked for: on a long path, most folders may never be.
  [[nodiscard]] const FolderIdentity& Identity() { return Identity(nullptr); }
  /// Makes `links` resolve the location if that has not been done.
  [[nodiscard]] const FolderIdentity& Identity(const std::shared_ptr<LinkResolver>& links);
  [[nodiscard]] const AbsoluteIRI& Canonical() { return Identity().Canonical(); }

  /// As `FolderEntry::GetProblems`.
  [[nodiscard]] std::vector<FolderProblem> Problems();
  /// As `FolderEntry::GetFreshness`.
  [[nodiscard]] Freshness AskFreshness();

  [[nodiscard]] bool IsListed() const noexcept { return listedOnce.IsBuilt(); }
  [[nodiscard]] DiskPatience::Limit GetLimit() const noexcept { return patience.GetLimit(); }
  /// What ask() says of something in or below the folder; empty when the folder is given up. As for
  /// `DiskPatience::Ask`.
  template <class Call>
  [[nodiscard]] auto AskDisk(Call ask) {
    return patience.Ask(std::move(ask));
  }
  [[nodiscard]] bool IsGivenUp() const noexcept { return patience.HasGivenUp(); }
  /// Whether listing the folder, which has not been done, will show it as it is then.
  [[nodiscard]] bool ShowsTheDisk() const noexcept {
    return !listingHasBegun && (source == nullptr || source->FollowsTheDisk());
  }
  /// Whether nobody has asked for what the folder holds, and listing it will show it as it is then.
  [[nodiscard]] bool IsUntouched();
  /// The same folder, to be listed from the disk.
  [[nodiscard]] std::unique_ptr<FolderState> CopyUnlisted();

  /// What a look-up learns of the folder.
  struct Answer {
    std::vector<const PathItem*> items = {};  // the first file that is here, or all that are wanted
    bool hasFolder = false;                   // false where that does not matter
  };
  /// Answers a single question. The disk is asked for the names alone as long as the folder has
  /// been asked little. After that, and whenever the listing comes from a cache, the folder is
  /// listed.
  [[nodiscard]] Answer Ask(const NameQuestion& question);
  /// Has a thread of its own ask the disk, so that the answer to the same question may be there by
  /// the time it is asked. Nobody waits for one that is never asked.
  void AskAhead(const NameQuestion& question);

  /// The problems that questions have come upon so far.
  [[nodiscard]] std::vector<FolderProblem> ProblemsMet();

  /// Lists the folder unless that has been done.
  void List();

  // Precondition of all that follows: the folder has been listed.

  /// Without the special folders whose links lead back.
  [[nodiscard]] const FolderListing& Listing() const noexcept { return listing; }
  [[nodiscard]] const NameBlock& Files() const noexcept { return listing.files; }
  /// How long listing the folder took.
  [[nodiscard]] std::chrono::nanoseconds ListingTime() const noexcept { return listingTime; }

  /// The folders directly below, made anew at each call.
  [[nodiscard]] Folders MakeSpecialFolders();
  [[nodiscard]] Folders MakeOrdinaryFolders();

  /// The item of the file at `index`: always the same object, kept as long as this one.
  [[nodiscard]] const PathItem& ItemAt(std::size_t index);

  /// The file of exactly this name.
  [[nodiscard]] std::optional<std::size_t> FileNamed(std::string_view name) const;
  /// The files called `name`, the very name first, then, under `IgnoreCase`, the others by their
  /// bytes.
  [[nodiscard]] std::vector<std::size_t> FilesNamed(const ustring& name,
                                                    FilenameMatchingPolicy policy) const;

  /// Whether another version of the folder, which has been listed as well, has the same files and
  /// problems, in whatever order. The folders below are not compared.
  [[nodiscard]] bool HoldsSameAs(const FolderState& other) const;

  /// The same folder with the same listing, and with no items made.
  [[nodiscard]] std::unique_ptr<FolderState> CopyListed();

 private:
  FolderState(AbsoluteIRI folderLocation, PathEntryType folderKind,
              std::shared_ptr<const ListingSource> listingSource, DiskPatience::Limit limit,
              std::optional<FolderIdentity> knownIdentity)
      : location(std::move(folderLocation)),
        kind(folderKind),
        source(std::move(listingSource)),
        patience(limit),
        identity(std::move(knownIdentity)) {}

  /// An answer to a question that may come.
  struct Ahead {
    NameAnswers::Unanswered unanswered;
    DetachedAnswer<NameAnswers::FromDisk> answer;
  };

  [[nodiscard]] AbsoluteIRI Resolved(const AbsoluteIRI& folder,
                                     const std::shared_ptr<LinkResolver>& links = nullptr);
  [[nodiscard]] bool AsksNames() const noexcept;
  [[nodiscard]] std::optional<NameAnswers::FromDisk> TakeAhead(
      const NameAnswers::Unanswered& unanswered);
  [[nodiscard]] NameAnswers::FromDisk AskFor(const NameAnswers::Unanswered& unanswered);
  [[nodiscard]] std::vector<FolderProblem> ProblemOf(
      std::optional<current_working_folder::AbsolutizeError> reason) const;
  void FollowSpecialLinks();
  [[nodiscard]] std::optional<Answer> AskDisk(const NameQuestion& question);
  template <class ItemNamed, class HasFolder>
  [[nodiscard]] static Answer MakeAnswer(const NameQuestion& question, const ItemNamed& itemNamed,
                                         const HasFolder& hasFolder);
  [[nodiscard]] std::unique_ptr<FolderState> MakeBelow(const FolderListing::Subfolder& subfolder);
  [[nodiscard]] std::unique_ptr<FolderState> MakeBehindLink(
      const FolderListing::Subfolder& subfolder, AbsoluteIRI target);
  [[nodiscard]] std::vector<std::size_t> FilesThatDifferInCase(const ustring& name) const;

  AbsoluteIRI location;
  PathEntryType kind;
  std::shared_ptr<const ListingSource> source;  // null: the disk; the listing may view it
  DiskPatience patience;

  PathManagement::detail::OnceFlag identifiedOnce;  // guards identity
  std::optional<FolderIdentity> identity;

  std::mutex answersMutex;  // guards what follows up to the flag
  NameAnswers answers;
  std::optional<Ahead> ahead;
  unsigned questionCount = 0;
  std::atomic<bool> listingHasBegun = false;    // from then on there are no more single answers
  PathManagement::detail::OnceFlag listedOnce;  // guards what follows
  FolderListing listing;
  std::chrono::nanoseconds listingTime = {};
  std::vector<AbsoluteIRI> linkTargets;  // of the special folders that are links, in their order
  std::vector<FolderProblem> cutLinks;   // that lead back
  ItemStore items;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_FOLDER_STATE_H
