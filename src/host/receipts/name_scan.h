#ifndef SEARCHPATH_SRC_HOST_RECEIPTS_NAME_SCAN_H
#define SEARCHPATH_SRC_HOST_RECEIPTS_NAME_SCAN_H

#include "host/receipts/asked_list.h"
#include "host/receipts/folder_patience.h"
#include "host/receipts/receipt_draft.h"
#include "host/rules/asked_file.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace Corvane::PathManagement::host {

/// One question, as far as single files matter to it. A place is the number of a folder in the
/// `ReceiptDraft`.
struct ScannedQuestion {
  std::uint32_t number = 0;  // in the draft
  std::uint32_t list = 0;    // the number of the list of places that it asks
  std::size_t asked = 0;     // how many places at the beginning of the list
  // How many places of the list belong to each root: one for each folder that names begin with.
  std::size_t foldersOfRoot = 1;
  std::vector<std::string> names = {};  // looked for in a place, the preferred one first
  // For each name, in which of the places of a root it is looked for; below `foldersOfRoot`.
  std::vector<std::size_t> folders = {};
  // The name of a folder whose files answer to it, too: "@area" for "area"; "" when there is none.
  std::string methodFolder = {};
  // The private folder of the folder that asks; asked before the list.
  std::optional<std::uint32_t> privateFolder = {};
};

/// Finds what an answer rests on besides folders: links and, where rights decide which files count,
/// every file of the name. The time stamp of a folder does not show it when the target of a link or
/// the rights of a file change.
class NameScan {
 public:
  /// The first two arguments outlive this object.
  NameScan(ReceiptDraft& receiptDraft, FolderPatience& folderPatience,
           LookupRules::Files countedFiles)
      : draft(receiptDraft), patience(folderPatience), files(countedFiles) {}

  /// Adds what stands at the names of `question` in `list` to the draft, up to the answer. If that
  /// does not lead to the answer that the draft has, or the disk does not answer in time, also makes
  /// the question an uncertain one.
  void Run(const ScannedQuestion& question, AskedList& list);

 private:
  /// Sorts as the search goes: number of the root (the position in the list, when a root has one
  /// place there), whether in a method folder, index in `ScannedQuestion::names`.
  using Order = std::tuple<std::ptrdiff_t, bool, std::size_t>;
  /// What stood at a name.
  struct Seen {
    Order order;
    std::uint32_t place;
    Standing standing;
  };

  void Look(const ScannedQuestion& question, Order order, std::uint32_t place);
  void LookInMethodFolder(const ScannedQuestion& question, std::size_t position,
                          std::uint32_t place);
  [[nodiscard]] std::optional<Order> OrderOfAnswer(const ScannedQuestion& question,
                                                   const AskedList& list) const;
  [[nodiscard]] std::optional<Order> OrderInList(const ScannedQuestion& question,
                                                 const AskedList& list) const;
  [[nodiscard]] bool AddUpTo(const std::optional<Order>& answer, const ScannedQuestion& question);

  ReceiptDraft& draft;
  FolderPatience& patience;
  LookupRules::Files files;  // which files count
  std::vector<Seen> seen;    // for the question of `Run`
  bool hasSeenAll = true;    // likewise; false once the disk has not answered in time
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RECEIPTS_NAME_SCAN_H
