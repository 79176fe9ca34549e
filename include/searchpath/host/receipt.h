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

/// What an answer rests on, as native paths, each once: while nothing comes, goes or is replaced
/// there, the answer stays right.
struct AnswerBasis {
  std::vector<ustring> folders;  ///< that were asked before the answer and at it
  std::vector<ustring> absent;   ///< that were asked for and do not exist
  std::vector<ustring> files;    ///< links and files that may cease to count, or begin to
};

/// Names, the files that they mean, and what these answers rest on: the folders that were asked
/// up to each answer, with their stamps. Folders that do not exist are asked, too, and so is what
/// may change without leaving a trace in a folder: what links lead to, who may execute a file.
///
/// A folder that changed less than two seconds before the environment was made is never known to be
/// unchanged, since a later change could leave the same stamp. A copy of a receipt on another machine
/// is of no use.
///
/// Threads: immutable; all operations, from any thread.
/// Ownership: copies share the bytes.
class SEARCHPATH_EXPORT Receipt {
 public:
  /// Errors: `InvalidListingException` for anything but a whole receipt in the version that this
  /// program reads.
  [[nodiscard]] static Receipt Read(std::istream& stream);
  /// The same of a file; one that cannot be opened, or is no regular file, is refused as well.
  [[nodiscard]] static Receipt Load(const fl::filesystem::path& file);

  /// Errors: those of the stream.
  void Write(std::ostream& stream) const;
  /// Replaces the file in one step.
  ///
  /// Errors: `std::system_error`; the old file then stays as it was.
  void Save(const fl::filesystem::path& file) const;

  /// How many names there are.
  [[nodiscard]] std::size_t GetCount() const noexcept;
  // Precondition: `at` is below that number.
  /// The name as it was asked.
  [[nodiscard]] ustring GetName(std::size_t at) const;
  /// The file that it meant; empty when there was none. Not the entry that found it, but one for the
  /// same folder.
  [[nodiscard]] std::optional<FoundItem> GetAnswer(std::size_t at) const;
  /// The question, with which the name means the same in any working folder.
  [[nodiscard]] Lookup GetLookup(std::size_t at) const;
  /// What this answer rests on.
  [[nodiscard]] AnswerBasis GetBasis(std::size_t at) const;
  /// What all answers rest on together, and the path itself.
  [[nodiscard]] AnswerBasis GetBasis() const;

  /// What an environment is made of that answers the names anew: absolute folders, without caches.
  [[nodiscard]] EnvironmentOptions GetOptions() const;

  /// Whether all answers are certain to be still right. If not, they may be right all the same.
  ///
  /// Cost: one question to the disk for each place, and for each file in `AnswerBasis`; one or two for
  /// each answer where not all regular files count.
  [[nodiscard]] bool IsFresh() const;

  /// The names that mean another file than in the receipt, in its order; a file is another one as
  /// for `FindNameChanges`. Names whose answers are certain to be right are not asked for. One whose
  /// asking folder is gone means no file.
  ///
  /// Precondition: `environment` has been made of `GetOptions()`, after the changes that are to be
  /// seen: what it has found out before is not asked again.
  /// Cost: as `IsFresh`, and the questions that are asked.
  [[nodiscard]] std::vector<NameChange> Verify(const Environment& environment) const;

  /// A receipt for the same questions. Precondition: as `Verify`.
  [[nodiscard]] Receipt Renew(const Environment& environment) const;

 private:
  friend class ReceiptRecorder;
  friend std::vector<ustring> WriteDepfile(std::ostream& stream, const ustring& target,
                                           const Receipt& receipt);

  explicit Receipt(std::shared_ptr<const ReceiptBody> verified);
  [[nodiscard]] bool IsSamePath(const Environment& environment) const;

  std::shared_ptr<const ReceiptBody> body;
};

/// Makes the receipt of questions that are asked one after the other.
///
/// Threads: one at a time.
/// Cost: little beside finding a file; memory for the name.
class SEARCHPATH_EXPORT ReceiptRecorder {
 public:
  /// Precondition: `environment` outlives this object; its caches, if any, are used while they are
  /// fresh.
  /// Errors: `std::logic_error` for an environment on a path that was handed over: a receipt could
  /// not say how to make it again.
  explicit ReceiptRecorder(const Environment& environment);
  ReceiptRecorder(const ReceiptRecorder&) = delete;
  ReceiptRecorder& operator=(const ReceiptRecorder&) = delete;
  ~ReceiptRecorder();

  /// Precondition: `answer` is what `Environment::Find` has answered to `lookup`.
  /// Errors: `FailedToAbsolutizeException` when the folder that asks cannot be used.
  void Add(const Lookup& lookup, const boost::optional<FoundItem>& answer);

  /// The receipt of all that was added. Asks for the stamps of the folders.
  ///
  /// Precondition: called once.
  /// Errors: `std::length_error` for more than a receipt can hold.
  [[nodiscard]] Receipt Finish();

 private:
  friend class Receipt;
  class State;

  std::unique_ptr<State> state;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_RECEIPT_H
