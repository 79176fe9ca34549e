#ifndef SEARCHPATH_SRC_HOST_RECEIPTS_ASKED_LISTS_H
#define SEARCHPATH_SRC_HOST_RECEIPTS_ASKED_LISTS_H

#include "host/receipts/asked_list.h"
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

/// Where a question looks, as far as the answer rests on it.
struct QuestionScope {
  std::uint32_t list = 0;  // the number of the list of folders
  bool asksAll = false;    // whether all of the list is asked, even after an answer
  bool isCertain = true;   // false when the answer may rest on more than is known
  std::vector<std::uint32_t> further = {};  // places that matter besides the list
  std::optional<std::uint32_t> first = {};  // a place that is asked before the list
};

/// The lists of folders that the questions of a receipt ask. The first one is the path.
class AskedLists {
 public:
  /// `ruledPath` is null where folders have a meaning. Relative folders are below `base`, which is
  /// copied; the other arguments outlive this object.
  AskedLists(ReceiptDraft& receiptDraft, const PathView& pathView, const RuledPath* ruledPath,
             const WorkingFolder& base);

  /// Where `lookup` looks; adds its list when there is none yet. `kind` is the number of its kind
  /// in the draft.
  ///
  /// Errors: `FailedToAbsolutizeException` when the folder that asks has no location.
  [[nodiscard]] QuestionScope ScopeOf(const Lookup& lookup, std::uint32_t kind);
  /// Sets the names that `question` looks for in each place of its list.
  void SetNames(const Lookup& lookup, ScannedQuestion& question) const;

  [[nodiscard]] AskedList& At(std::uint32_t list) { return lists[list]; }

 private:
  [[nodiscard]] std::uint32_t Add(std::vector<std::uint32_t> places,
                                  AskedList::Listings listings = {});
  [[nodiscard]] std::uint32_t AddMain();
  [[nodiscard]] std::uint32_t ListOfAllFolders();
  [[nodiscard]] QuestionScope ScopeOnPath(const Lookup& lookup);
  [[nodiscard]] QuestionScope ScopeByRules(const Lookup& lookup, std::uint32_t kind);
  [[nodiscard]] std::uint32_t MakeListByRules(const Lookup& lookup, const std::string& name);
  [[nodiscard]] AskedList::Listings ListingsBelow(const std::string& name) const;
  [[nodiscard]] std::uint32_t PlaceAt(const ustring& folder);

  ReceiptDraft& draft;
  const PathView& view;
  const RuledPath* ruled;
  WorkingFolder workingFolder;
  std::deque<AskedList> lists;
  std::optional<std::uint32_t> allFolders;
  // Of names looked for by rules: the list, by kind and by the folder of the name.
  std::map<std::pair<std::uint32_t, std::string>, std::uint32_t> byRules;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RECEIPTS_ASKED_LISTS_H
