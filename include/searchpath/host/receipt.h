#ifndef SEARCHPATH_HOST_RECEIPT_H
#define SEARCHPATH_HOST_RECEIPT_H

#include "searchpath/export.h"
#include "searchpath/host/environment.h"
#include "searchpath/host/name_changes.h"
#include "searchpath/model/found_item.h"
#include "searchpath/model/ustring.h"
#include "searchpath/platform/filesystem.h"

#include <boost/optional.hpp>

#include <cstddef>
#include <istream>
#include <memory>
#include <optional>
#include <ostream>
#include <vector>

namespace Corvane::PathManagement::host {

class ReceiptBody;

/// What an answer rests on, as native paths, each once: while nothing comes, goes or is replaced at
/// these paths, the answer stays right.
struct AnswerBasis {
  /// The existing folders that were searched, up to and including the one that held the answer.
  std::vector<ustring> folders;
  std::vector<ustring> absent;  ///< the folders that would have been searched if they existed
  /// Links on which the answer depends: their targets may come and go without a trace in a folder.
  /// Where rights decide which files a name can mean, see `LookupRules::Files`, also the files of
  /// the name.
  std::vector<ustring> files;
};

/// Names, the files that they mean, and what these answers rest on: the folders that were searched
/// up to each answer, with their time stamps; folders that did not exist; and what may change
/// without a trace in its folder, such as the target of a link or the right to execute a file.
///
/// A folder that changed less than two seconds before the environment was made is never known to be
/// unchanged, since a later change could leave the same stamp. A receipt is of use only on the
/// machine that made it.
///
/// Threads: immutable; all operations, from any thread.
/// Ownership: copies share the bytes.
class SEARCHPATH_EXPORT Receipt {
 public:
  /// Reads a receipt that `Write` or `Save` has written.
  ///
  /// Errors: `InvalidListingException` for anything but a whole receipt in the version that this
  /// program reads.
  [[nodiscard]] static Receipt Read(std::istream& stream);
  /// Reads a file in the same way; `InvalidListingException` also when it cannot be opened or is no
  /// regular file.
  [[nodiscard]] static Receipt Load(const fl::filesystem::path& file);

  /// Errors: those of the stream.
  void Write(std::ostream& stream) const;
  /// Replaces the file in one step.
  ///
  /// Errors: `std::system_error`; the old file then stays as it was.
  void Save(const fl::filesystem::path& file) const;

  /// How many questions were asked, one name each.
  [[nodiscard]] std::size_t GetCount() const noexcept;
  // Precondition of the operations that take `at`, the number of a question: `at` < `GetCount()`.
  /// The name as it was asked for.
  [[nodiscard]] ustring GetName(std::size_t at) const;
  /// The file that the name meant; empty when there was none. The entry of the item is a new one
  /// for the folder of that file.
  [[nodiscard]] std::optional<FoundItem> GetAnswer(std::size_t at) const;
  /// The question as it was asked, for an environment made of `GetOptions()`.
  [[nodiscard]] Lookup GetLookup(std::size_t at) const;
  /// What the answer rests on.
  [[nodiscard]] AnswerBasis GetBasis(std::size_t at) const;
  /// What all answers together rest on, and what decides which folders are on the path.
  [[nodiscard]] AnswerBasis GetBasis() const;

  /// The options for an environment that answers the same questions anew. Folders are as they were
  /// given; the working folder is absolute, so that they mean the same in any process. Caches and
  /// `EnvironmentOptions::source` are left out.
  [[nodiscard]] EnvironmentOptions GetOptions() const;

  /// Whether all answers are certain to be still right. If not, they may be right all the same.
  ///
  /// Cost: one question to the disk for each folder in `GetBasis()`, absent ones included, and one
  /// or two for each file there; and what it takes to resolve the links on the way to the folders.
  [[nodiscard]] bool IsFresh() const;

  /// The names that no longer mean the file in the receipt, in the order of the receipt. Two files
  /// are the same when their names are, and their folders by canonical location; contents do not
  /// matter. Names whose answers are certain to be right are not looked up again. A name asked for
  /// from a folder that is gone means no file.
  ///
  /// Precondition: `environment` has been made of `GetOptions()`, after the changes that are to be
  /// seen: an environment does not ask the disk again for what it knows already.
  /// Cost: that of `IsFresh`, and of the look-ups.
  [[nodiscard]] std::vector<NameChange> Verify(const Environment& environment) const;

  /// A receipt for the same questions, with the answers of `environment`. Precondition: as for
  /// `Verify`.
  [[nodiscard]] Receipt Renew(const Environment& environment) const;

 private:
  friend class ReceiptRecorder;
  friend std::vector<ustring> WriteDepfile(std::ostream& stream, const ustring& target,
                                           const Receipt& receipt);

  explicit Receipt(std::shared_ptr<const ReceiptBody> verified);
  [[nodiscard]] bool IsSamePath(const Environment& environment) const;

  std::shared_ptr<const ReceiptBody> body;
};

/// Makes one receipt of questions that are asked one after the other.
///
/// Threads: one at a time.
/// Cost: for each question, little beside finding the file; memory for the name.
class SEARCHPATH_EXPORT ReceiptRecorder {
 public:
  /// Precondition: `environment` outlives this object; its caches, if any, are used
  /// `ListingUse::WhileFresh`.
  /// Errors: `std::logic_error` for an environment that was made of an `IPath`, as a receipt could
  /// not say how to make it again, or by `Environment::WithoutFiles`.
  explicit ReceiptRecorder(const Environment& environment);
  ReceiptRecorder(const ReceiptRecorder&) = delete;
  ReceiptRecorder& operator=(const ReceiptRecorder&) = delete;
  ~ReceiptRecorder();

  /// Precondition: `answer` is what `Environment::Find` has answered to `lookup`.
  /// Errors: `FailedToAbsolutizeException` when the asking folder of `lookup` cannot be used.
  void Add(const Lookup& lookup, const boost::optional<FoundItem>& answer);

  /// The receipt of all that was added. Asks the disk for the time stamps of the folders.
  ///
  /// Precondition: called once, as the last operation.
  /// Errors: `std::length_error` for more than a receipt can hold.
  [[nodiscard]] Receipt Finish();

 private:
  friend class Receipt;
  class State;

  std::unique_ptr<State> state;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_RECEIPT_H
