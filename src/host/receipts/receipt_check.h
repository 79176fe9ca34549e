#ifndef SEARCHPATH_SRC_HOST_RECEIPTS_RECEIPT_CHECK_H
#define SEARCHPATH_SRC_HOST_RECEIPTS_RECEIPT_CHECK_H

#include "host/folder/folder_stamp.h"
#include "host/receipts/folder_patience.h"
#include "host/receipts/receipt_body.h"
#include "host/rules/asked_file.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement::host {

/// Which answers of a receipt rest on something that has changed since the receipt was made, or may
/// have changed. A place is the number of a folder that was asked for a file.
class ReceiptCheck {
 public:
  /// Asks the disk, up to the time limit of the receipt's path for each place. What does not answer
  /// in time counts as changed. Precondition: `receipt` outlives this object.
  explicit ReceiptCheck(const ReceiptBody& receipt);

  /// Whether nothing has changed.
  [[nodiscard]] bool IsFresh() const noexcept {
    return !concernsAll && !concernsPath && !concernsSome;
  }
  /// Whether all questions are to be asked again.
  [[nodiscard]] bool ConcernsAll() const noexcept { return concernsAll; }
  /// Whether other folders may be on the path now. If they are, all questions are to be asked
  /// again.
  [[nodiscard]] bool ConcernsPath() const noexcept { return concernsPath; }
  /// Whether the question is to be asked again even if neither `ConcernsAll` nor `ConcernsPath` is
  /// true.
  [[nodiscard]] bool Concerns(std::uint32_t question) const;

 private:
  void CheckPlaces();
  void CheckNeighbours(std::uint32_t begin, std::uint32_t end);
  void CheckPlace(std::uint32_t number, const FolderSight& now);
  void CheckLists();
  void CheckUnlisted();
  void CheckAnswers();
  [[nodiscard]] bool StillStands(std::uint32_t place, std::string_view name, Standing standing);
  [[nodiscard]] bool HasWayChanged() const;
  void Mark(std::uint32_t question);

  const ReceiptBody& body;
  const LookupRules::Files counted;  // which files count
  FolderPatience patience;
  bool concernsAll;
  bool concernsPath;
  bool concernsSome = false;  // whether something has changed that `Concerns` may return true for
  std::vector<std::uint8_t> changedPlaces;  // of each place: 1 if changed; bytes, for threads
  std::vector<std::size_t> firstChanged;  // of each list: the first changed position, or its length
  // Questions to be asked again for another reason than a changed list; empty when there are none.
  std::vector<bool> changedQuestions;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RECEIPTS_RECEIPT_CHECK_H
