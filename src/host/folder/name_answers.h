#ifndef SEARCHPATH_SRC_HOST_FOLDER_NAME_ANSWERS_H
#define SEARCHPATH_SRC_HOST_FOLDER_NAME_ANSWERS_H

#include "host/folder/folder_listing.h"
#include "host/folder/item_store.h"
#include "platform/descriptor.h"
#include "searchpath/model/search_target.h"
#include "searchpath/model/ustring.h"

#include <boost/container/small_vector.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement::host {

/// What one look-up asks about a folder. Names are in bytes.
struct NameQuestion {
  NameQuestion() = default;
  /// Asks for the files that `target` may mean.
  explicit NameQuestion(const PathManagement::detail::SearchTarget& target);

  /// Asks also whether there is a folder called `name`. This is left open when a file is found,
  /// unless all files are wanted.
  void AddFolder(const ustring& name);

  boost::container::small_vector<std::string, 1> files;  // the preferred one first
  bool wantsAllFiles = false;                            // false: only the first that is there
  std::optional<std::string> folder;
};

/// What the disk has answered about single names of a folder that is not listed. An answer is
/// final: each name is asked for once, and a listing that is made later is made to agree with the
/// answers.
///
/// Threads: not synchronised.
class NameAnswers {
 public:
  enum class Kind : std::uint8_t { Nothing, File, Folder };

  /// The names of a question that have no answer yet.
  struct Unanswered {
    std::vector<std::string> names;  // files, then the folder
    /// One file among the first `fileCount` names is enough: the names after that file are not
    /// asked for. 0 when all files are wanted.
    std::size_t fileCount = 0;

    bool operator==(const Unanswered& other) const = default;
  };
  /// What the disk says about the names that had no answer.
  struct FromDisk {
    std::optional<current_working_folder::AbsolutizeError> problem = {};  // why it says nothing
    std::vector<Kind> kinds = {};  // of the first names, as far as they were asked for
    bool isClear = true;           // false: only a listing can tell what the next name is
    fl::filesystem::detail::Descriptor folder{-1};  // open if `AskDisk` was to leave it open
  };

  /// What remains to be asked before `question` can be answered.
  [[nodiscard]] Unanswered FindUnanswered(const NameQuestion& question) const;

  /// Asks the disk about the folder at `path`. The folder is opened as for listing, so that a
  /// folder that may not be listed answers for no name either; with `leavesOpen`, the caller closes
  /// it. Uses nothing but its arguments, as a `DetachedAnswer` requires.
  ///
  /// Cost: two system calls, and one for each name; one more for a link.
  [[nodiscard]] static FromDisk AskDisk(const std::string& path, const Unanswered& unanswered,
                                        bool leavesOpen = false);

  /// Takes in what the disk says about `unanswered`. After a problem, counts all these names as not
  /// there. Returns false when only a listing can tell the rest.
  [[nodiscard]] bool Add(const Unanswered& unanswered, const FromDisk& fromDisk);

  /// What `name` is. Precondition: it has been asked for.
  [[nodiscard]] Kind KindOf(std::string_view name) const { return Find(name)->kind; }

  /// The item of a file, made by make() when it is first asked for.
  /// Precondition: the name is that of a file.
  template <class Make>
  [[nodiscard]] const PathItem& ItemOf(std::string_view name, const Make& make) {
    // By its index, since `Find` returns a pointer to const.
    Answer& answer = answers[static_cast<std::size_t>(Find(name) - answers.data())];
    if (answer.item == nullptr) answer.item = std::make_unique<const PathItem>(make());
    return *answer.item;
  }

  /// Why the folder could not be opened; `nullopt` when it could, or has not been asked.
  [[nodiscard]] std::optional<current_working_folder::AbsolutizeError> GetProblem() const noexcept {
    return problem;
  }
  /// Whether the disk has not answered anything yet.
  [[nodiscard]] bool IsEmpty() const noexcept { return answers.empty() && !problem; }

  /// Makes the listing agree with the answers: adds the files that were found, and removes what was
  /// not there. A listing that is changed loses its stamp, since it is not what the disk has.
  void ApplyTo(FolderListing& listing) const;
  /// Hands over to `items` the items that were made. `items` has an item for each of `files`.
  /// Precondition: `files` has been made to agree with the answers.
  void MoveItemsTo(ItemStore& items, const NameBlock& files);

 private:
  struct Answer {
    std::string name;
    Kind kind;
    std::unique_ptr<const PathItem> item = nullptr;  // null until it is asked for
  };

  /// Null when the name has not been asked for.
  [[nodiscard]] const Answer* Find(std::string_view name) const;

  std::vector<Answer> answers;  // few: a folder that is asked often is listed
  std::optional<current_working_folder::AbsolutizeError> problem;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_NAME_ANSWERS_H
