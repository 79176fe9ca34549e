#ifndef SEARCHPATH_SRC_HOST_RECEIPTS_ASKED_LISTS_H
#define SEARCHPATH_SRC_HOST_RECEIPTS_ASKED_LISTS_H

#include "host/receipts/asked_list.h"
#include "host/receipts/folder_patience.h"
#include "host/receipts/name_scan.h"
#include "host/receipts/receipt_draft.h"
#include "host/rules/ruled_path.h"
#include "searchpath/host/environment.h"

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Corvane::PathManagement::host {

/// Where a question looks, as far as the answer rests on it. A place is the number of a folder in
/// the `ReceiptDraft`.
struct QuestionScope {
  std::uint32_t list = 0;  // the number of the list of folders that is asked
  bool asksAll = false;    // whether the answer rests on the whole list, not only up to its place
  bool isCertain = true;   // false when the answer may rest on more than is said here
  std::vector<std::uint32_t> further = {};  // places that matter besides the list
  // The private folder of the folder that asks; asked before the list.
  std::optional<std::uint32_t> privateFolder = {};
};

/// The lists of folders that the questions of a receipt ask, as in `ReceiptDraft::lists`. The first
/// one has the folders of the search path.
class AskedLists {
 public:
  /// `ruledPath` is the same path under rules by which folders have no meaning; null where they
  /// have one. Relative folders are below `base`, which is copied; the other arguments outlive this
  /// object.
  AskedLists(ReceiptDraft& receiptDraft, FolderPatience& folderPatience, const PathView& pathView,
             const RuledPath* ruledPath, const WorkingFolder& base);

  /// Where `lookup` looks; adds its list when there is none yet. `kind` is the number of its kind
  /// in the draft.
  ///
  /// Errors: `FailedToAbsolutizeException` when the folder that asks has no location.
  [[nodiscard]] QuestionScope ScopeOf(const Lookup& lookup, std::uint32_t kind);
  /// Sets the names that `question` looks for in each place of its list, and its `methodFolder`.
  void SetNames(const Lookup& lookup, ScannedQuestion& question) const;

  /// The list with this number; valid as long as this object.
  [[nodiscard]] AskedList& At(std::uint32_t list) { return lists[list]; }

 private:
  [[nodiscard]] std::uint32_t Add(std::vector<std::uint32_t> places,
                                  AskedList::Listings listings = {});
  [[nodiscard]] std::uint32_t AddPathList();
  /// The list of the folders of the path and of all special folders below them.
  [[nodiscard]] std::uint32_t ListOfAllFolders();
  [[nodiscard]] QuestionScope ScopeOnPath(const Lookup& lookup);
  [[nodiscard]] QuestionScope ScopeByRules(const Lookup& lookup, std::uint32_t kind);
  [[nodiscard]] std::uint32_t MakeListByRules(const Lookup& lookup,
                                              const std::vector<std::string>& folders);
  [[nodiscard]] AskedList::Listings ListingsBelow(const std::string& relative) const;
  [[nodiscard]] std::uint32_t PlaceAt(const ustring& folder);
  /// The place of the folder that an absolute name begins with; empty for other names.
  [[nodiscard]] std::optional<std::uint32_t> PlaceInName(const ustring& name);

  ReceiptDraft& draft;
  FolderPatience& patience;
  const PathView& view;
  const RuledPath* ruled;  // may be null
  WorkingFolder workingFolder;
  std::deque<AskedList> lists;
  std::optional<std::uint32_t> allFolders;  // the number of the list that ListOfAllFolders has made
  // The lists for names that `ruled` looks for: by the kind of question and the folders that the
  // names begin with.
  std::map<std::pair<std::uint32_t, std::vector<std::string>>, std::uint32_t> byRules;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RECEIPTS_ASKED_LISTS_H
