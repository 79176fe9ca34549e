#ifndef SEARCHPATH_SRC_HOST_FOLDER_NAME_ANSWERS_H
#define SEARCHPATH_SRC_HOST_FOLDER_NAME_ANSWERS_H

#include "host/folder/folder_listing.h"
#include "host/folder/item_store.h"
#include "host/folder/open_path.h"
#include "searchpath/model/search_target.h"
#include "searchpath/model/ustring.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement::host {

/// What one look-up wants to know of a folder, in bytes.
struct NameQuestion {
  NameQuestion() = default;
  /// The files that `target` may mean.
  explicit NameQuestion(const PathManagement::detail::SearchTarget& target);

  /// Adds the "@" folder of the method entry called `name`.
  void AddMethodFolder(const ustring& name);

  std::vector<std::string> files;           // the preferred one first
  std::optional<std::string> methodFolder;  // with its "@"
};

/// What the disk has answered about single names of a folder that is not listed. An answer
/// stays: a name is asked once, and a listing that is made later is made to agree with the answers.
///
/// Threads: not synchronised.
class NameAnswers {
 public:
  enum class Kind : std::uint8_t { Nothing, File, Folder };

  /// Asks for the names of `question` that have no answer yet, up to the first that is a file. The
  /// folder is opened as for listing: one that may not be listed holds no name either. Returns
  /// false when the disk gives no clear answer: then only a listing can tell.
  ///
  /// Cost: three system calls, and one for each name; one more for a link.
  [[nodiscard]] bool Ask(const AbsoluteIRI& location, const NameQuestion& question);

  /// Precondition: the name has been asked for.
  [[nodiscard]] Kind KindOf(std::string_view name) { return Find(name)->kind; }

  /// The item of a file, made by make() when it is first asked for.
  /// Precondition: the name is that of a file.
  template <class Make>
  [[nodiscard]] const PathItem& ItemOf(std::string_view name, const Make& make) {
    Answer& answer = *Find(name);
    if (answer.item == nullptr) answer.item = std::make_unique<const PathItem>(make());
    return *answer.item;
  }

  /// Why the folder could not be opened; empty when it could, or has not been asked.
  [[nodiscard]] std::optional<current_working_folder::AbsolutizeError> GetProblem() const noexcept {
    return problem;
  }
  [[nodiscard]] bool IsEmpty() const noexcept { return answers.empty() && !problem; }

  /// Puts the files that were found into the listing, and takes out what was not there.
  void ApplyTo(FolderListing& listing) const;
  /// Hands the items that were made to `items`, which are those of `files`.
  void MoveItemsTo(ItemStore& items, const NameBlock& files);

 private:
  struct Answer {
    std::string name;
    Kind kind;
    std::unique_ptr<const PathItem> item = nullptr;  // null until it is asked for
  };

  [[nodiscard]] Answer* Find(std::string_view name);
  [[nodiscard]] OpenedPath Open(const AbsoluteIRI& location);
  [[nodiscard]] bool AskIn(int folder, const std::string& name);

  std::vector<Answer> answers;  // few: a folder that is asked much is listed
  std::optional<current_working_folder::AbsolutizeError> problem;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_NAME_ANSWERS_H
