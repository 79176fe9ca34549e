#ifndef SEARCHPATH_SRC_HOST_RECEIPTS_RECEIPT_CHECK_H
#define SEARCHPATH_SRC_HOST_RECEIPTS_RECEIPT_CHECK_H

#include "host/folder/folder_stamp.h"
#include "host/receipts/receipt_body.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Corvane::PathManagement::host {

/// Which answers of a receipt rest on something that has changed since, or may have. A place is the
/// number of a folder that was asked for a file.
class ReceiptCheck {
 public:
  /// Asks the disk. Precondition: `receipt` outlives this object.
  explicit ReceiptCheck(const ReceiptBody& receipt);

  /// Whether nothing has changed.
  [[nodiscard]] bool IsFresh() const noexcept {
    return !concernsAll && !concernsPath && !concernsAny;
  }
  /// Whether all questions are to be asked again.
  [[nodiscard]] bool ConcernsAll() const noexcept { return concernsAll; }
  /// Whether other folders may be on the path now. If they are, all questions are to be asked
  /// again.
  [[nodiscard]] bool ConcernsPath() const noexcept { return concernsPath; }
  /// Whether the question is to be asked again even if neither of these two is true.
  [[nodiscard]] bool Concerns(std::uint32_t question) const;

 private:
  void CheckPlaces();
  void CheckNeighbours(std::uint32_t begin, std::uint32_t end);
  void CheckPlace(std::uint32_t number, const FolderSight& now);
  void CheckLists();
  void CheckFiles();
  void CheckAnswers();
  [[nodiscard]] bool HasWayChanged() const;
  void Mark(std::uint32_t question);

  const ReceiptBody& body;
  bool concernsAll;
  bool concernsPath;
  bool concernsAny = false;                 // whether a list or a question has changed
  std::vector<std::uint8_t> changedPlaces;  // of each place: 1 if changed; bytes, for threads
  std::vector<std::size_t> firstChanged;    // of each list: the first changed position, or its size
  std::vector<bool> changedQuestions;  // for other reasons than lists; empty when there are none
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RECEIPTS_RECEIPT_CHECK_H
