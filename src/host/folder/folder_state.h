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

#include <boost/container/small_vector.hpp>

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

class ClosingBatch;

/// The item of the file called `file` in `folder`.
[[nodiscard]] PathItem CreateItem(AbsoluteIRI folder, std::string_view file);

/// What is known of a folder: where it is, which folder that is once links are resolved, and
/// what it holds. Knows nothing of entries.
///
/// Threads: all operations, from any thread.
class FolderState {
 public:
  using Folders = std::vector<std::unique_ptr<FolderState>>;

  /// A folder that is put on a path. Its listing, and those of the folders below it, come from
  /// `listingSource`; from the disk when that is null. `limit` says how long to wait for the disk,
  /// for each of these folders: see `DiskPatience`.
  FolderState(AbsoluteIRI folderLocation, std::shared_ptr<const ListingSource> listingSource,
              DiskPatience::Limit limit = {})
      : FolderState(std::move(folderLocation), PathEntryType::Ordinary, std::move(listingSource),
                    limit, std::nullopt) {}
  FolderState(const FolderState&) = delete;
  FolderState& operator=(const FolderState&) = delete;
  ~FolderState() = default;

  [[nodiscard]] const AbsoluteIRI& Location() const noexcept { return location; }
  [[nodiscard]] PathEntryType Kind() const noexcept { return kind; }
  /// Resolves the links on the first call, and not in the constructor: most folders of a long path
  /// are never asked for it.
  [[nodiscard]] const FolderIdentity& Identity() { return Identity(/*links=*/nullptr); }
  /// The same; unless `links` is null, it resolves the links. Many folders may share one resolver.
  [[nodiscard]] const FolderIdentity& Identity(const std::shared_ptr<LinkResolver>& links);
  [[nodiscard]] const AbsoluteIRI& Canonical() { return Identity().Canonical(); }

  /// As `FolderEntry::GetProblems`.
  [[nodiscard]] std::vector<FolderProblem> Problems();
  /// As `FolderEntry::GetFreshness`.
  [[nodiscard]] Freshness AskFreshness();

  [[nodiscard]] bool IsListed() const noexcept { return listedOnce.IsBuilt(); }
  [[nodiscard]] DiskPatience::Limit GetLimit() const noexcept { return patience.GetLimit(); }
  /// What ask() returns about something in or below the folder; `nullopt` when the folder is given
  /// up, because the disk has not answered in time. Precondition: that of `DiskPatience::Ask`.
  template <class Call>
  [[nodiscard]] auto AskDisk(Call ask) {
    return patience.Ask(std::move(ask));
  }
  [[nodiscard]] bool IsGivenUp() const noexcept { return patience.HasGivenUp(); }
  /// Whether the folder has yet to be listed, and the listing will show what is on disk by then,
  /// not what was there when a listing was saved.
  [[nodiscard]] bool ShowsTheDisk() const noexcept {
    return !listingHasBegun && (source == nullptr || source->FollowsTheDisk());
  }
  /// Whether nothing has been asked yet about what the folder holds, and the folder `ShowsTheDisk`
  /// and is not given up.
  [[nodiscard]] bool IsUntouched();
  /// The same folder, to be listed from the disk.
  [[nodiscard]] std::unique_ptr<FolderState> CopyUnlisted();

  /// What a look-up learns of the folder.
  struct Answer {
    /// The first file of the question that is here; all that are, if the question wants all files.
    boost::container::small_vector<const PathItem*, 1> items = {};
    bool hasFolder = false;  // false also where the question leaves this open
  };
  /// Answers a question. For the first 16 questions the disk is asked about their names alone. For
  /// later ones, and whenever the listing comes from a cache, the folder is listed. Whoever asks
  /// many folders passes a `batch`, which then closes them.
  [[nodiscard]] Answer Ask(const NameQuestion& question, ClosingBatch* batch = nullptr);
  /// Asks the disk on a separate thread, so that the answer may be there by the time `Ask` is
  /// called with the same question. If `Ask` never is, nobody waits for the thread.
  void AskAhead(const NameQuestion& question);

  /// The problems that questions about the folder have met so far. Does not ask the disk.
  [[nodiscard]] std::vector<FolderProblem> ProblemsMet();

  /// Lists the folder unless that has been done.
  void List();

  // Precondition of all that follows: the folder has been listed.

  /// The listing without the special folders that are links to a folder above.
  [[nodiscard]] const FolderListing& Listing() const noexcept { return listing; }
  [[nodiscard]] const NameBlock& Files() const noexcept { return listing.files; }
  /// How long listing the folder took.
  [[nodiscard]] std::chrono::nanoseconds ListingTime() const noexcept { return listingTime; }

  /// The folders directly below, made anew at each call.
  [[nodiscard]] Folders MakeSpecialFolders();
  [[nodiscard]] Folders MakeOrdinaryFolders();

  /// The item of the file at `index`: always the same object, kept as long as this state.
  [[nodiscard]] const PathItem& ItemAt(std::size_t index);

  /// The index of the file of exactly this name; `nullopt` when there is none.
  [[nodiscard]] std::optional<std::size_t> FileNamed(std::string_view name) const;
  /// The indices of the files called `name`: first the exact name, then, under `IgnoreCase`, the
  /// others in the order of their bytes.
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

  /// An answer that the disk is asked for before its question comes.
  struct Ahead {
    NameAnswers::Unanswered unanswered;
    DetachedAnswer<NameAnswers::FromDisk> answer;
  };

  [[nodiscard]] AbsoluteIRI Resolved(const AbsoluteIRI& folder,
                                     const std::shared_ptr<LinkResolver>& links = nullptr);
  [[nodiscard]] bool AsksNames() const noexcept;
  [[nodiscard]] std::optional<NameAnswers::FromDisk> TakeAhead(
      const NameAnswers::Unanswered& unanswered);
  [[nodiscard]] NameAnswers::FromDisk AskFor(const NameAnswers::Unanswered& unanswered,
                                             ClosingBatch* batch);
  [[nodiscard]] std::vector<FolderProblem> ProblemOf(
      std::optional<current_working_folder::AbsolutizeError> reason) const;
  void FollowSpecialLinks();
  [[nodiscard]] std::optional<Answer> AnswerByNames(const NameQuestion& question,
                                                    ClosingBatch* batch);
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

  std::mutex answersMutex;  // guards what follows, up to listedOnce
  NameAnswers answers;
  std::optional<Ahead> ahead;
  unsigned questionCount = 0;
  /// Once true, the disk is not asked for single names any more. Read also without the mutex.
  std::atomic<bool> listingHasBegun = false;
  PathManagement::detail::OnceFlag listedOnce;  // guards what follows
  FolderListing listing;
  std::chrono::nanoseconds listingTime = {};
  std::vector<AbsoluteIRI> linkTargets;  // of the special folders that are links, in their order
  std::vector<FolderProblem> cutLinks;   // special links to a folder above, which are left out
  ItemStore items;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_FOLDER_STATE_H
