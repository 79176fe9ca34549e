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

/// How a question is asked, as far as it decides what the answer rests on.
struct QuestionScope {
  std::uint32_t list = 0;
  bool asksAll = false;   // of the list, whatever the answer is
  bool isCertain = true;  // false when what the answer rests on is not known in full
  std::vector<std::uint32_t> further = {};
  std::optional<std::uint32_t> first = {};  // as of `ScannedQuestion`
};

/// The lists of folders that the questions of a receipt ask. The first one is the path.
class AskedLists {
 public:
  /// `ruledPath` is null where folders have a meaning. All outlive this object.
  AskedLists(ReceiptDraft& receiptDraft, const PathView& pathView, const RuledPath* ruledPath,
             const WorkingFolder& base);

  /// `kind` is the number of the kind of the question.
  ///
  /// Errors: `FailedToAbsolutizeException` when the folder that asks has no location.
  [[nodiscard]] QuestionScope ScopeOf(const Lookup& lookup, std::uint32_t kind);
  /// What a question asks each place of its list for.
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
  std::map<std::pair<std::uint32_t, std::string>, std::uint32_t> byRules;  // by kind and folder
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RECEIPTS_ASKED_LISTS_H
