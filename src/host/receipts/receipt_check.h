#ifndef SEARCHPATH_SRC_HOST_RECEIPTS_RECEIPT_CHECK_H
#define SEARCHPATH_SRC_HOST_RECEIPTS_RECEIPT_CHECK_H

#include "host/folder/folder_stamp.h"
#include "host/receipts/receipt_body.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Corvane::PathManagement::host {

/// Which answers of a receipt rest on something that has changed since, or may have.
class ReceiptCheck {
 public:
  /// Asks the disk. Precondition: `receipt` outlives this object.
  explicit ReceiptCheck(const ReceiptBody& receipt);

  /// Whether nothing has changed.
  [[nodiscard]] bool IsFresh() const noexcept { return !all && !path && !any; }
  /// Whether all questions are to be asked again.
  [[nodiscard]] bool ConcernsAll() const noexcept { return all; }
  /// Whether other folders may be on the path now. If they are, all questions are to be asked
  /// again.
  [[nodiscard]] bool ConcernsPath() const noexcept { return path; }
  /// Whether the question is to be asked again for a reason of its own, beside the two above.
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
  bool all;
  bool path;
  bool any = false;                         // whether a list or a question has changed
  std::vector<std::uint8_t> changedPlaces;  // of each place: 1 if changed; bytes, for threads
  std::vector<std::size_t> firstChanged;    // of each list: the first changed position, or its size
  std::vector<bool> changedQuestions;  // for other reasons than lists; empty when there are none
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RECEIPTS_RECEIPT_CHECK_H
