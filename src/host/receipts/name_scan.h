#ifndef SEARCHPATH_SRC_HOST_RECEIPTS_NAME_SCAN_H
#define SEARCHPATH_SRC_HOST_RECEIPTS_NAME_SCAN_H

#include "host/receipts/asked_list.h"
#include "host/receipts/receipt_draft.h"
#include "host/rules/asked_file.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace Corvane::PathManagement::host {

/// One question, as far as single files matter to it.
struct ScannedQuestion {
  std::uint32_t number = 0;
  std::uint32_t list = 0;
  std::size_t asked = 0;                    // how many places at the beginning of the list
  std::vector<std::string> names = {};      // looked for in a place, the preferred one first
  std::string methodFolder = {};            // its name, with "@"; "" when none can answer
  std::optional<std::uint32_t> first = {};  // a place that is asked before the list
};

/// Finds what an answer rests on besides folders: links and, where more than the presence of a file
/// counts, every file. When a link's target or a file's rights change, their folder does not show
/// it.
class NameScan {
 public:
  NameScan(ReceiptDraft& receiptDraft, LookupRules::Files countedFiles)
      : draft(receiptDraft), files(countedFiles) {}

  /// Adds what it finds to the draft. Also adds the question to the uncertain ones, when what is
  /// found does not lead to the answer that the draft has.
  void Run(const ScannedQuestion& question, AskedList& list);

 private:
  /// Sorts as the search goes: position in the list, whether in a method folder, index of the name.
  using Order = std::tuple<std::ptrdiff_t, bool, std::size_t>;
  struct Seen {
    Order order;
    std::uint32_t place;
    Standing standing;
  };

  void Look(const ScannedQuestion& question, Order order, std::uint32_t place);
  void LookInMethodFolder(const ScannedQuestion& question, std::size_t position,
                          std::uint32_t above);
  [[nodiscard]] std::optional<Order> OrderOfAnswer(const ScannedQuestion& question,
                                                   const AskedList& list) const;
  [[nodiscard]] bool LeadsTo(const ScannedQuestion& question, const std::optional<Order>& answer);

  ReceiptDraft& draft;
  LookupRules::Files files;
  std::vector<Seen> seen;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RECEIPTS_NAME_SCAN_H
