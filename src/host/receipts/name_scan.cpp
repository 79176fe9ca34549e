#include "host/receipts/name_scan.h"

#include "host/common/path_bytes.h"

#include <sys/stat.h>

#include <algorithm>

namespace Corvane::PathManagement::host {

namespace {

constexpr std::ptrdiff_t kBeforeAll = -1;  // the position of the private folder

}  // namespace

void NameScan::Run(const ScannedQuestion& question, AskedList& list) {
  seen.clear();
  // Where all regular files count, the folder of a plain file shows all that matters of it.
  const bool plainFilesToo = files != LookupRules::Files::Regular;
  if (question.privateFolder) {
    for (std::size_t name = 0; name < question.names.size(); ++name) {
      Look(question, {kBeforeAll, false, name}, *question.privateFolder);
    }
  }
  for (std::size_t name = 0; name < question.names.size(); ++name) {
    for (const std::size_t at :
         list.FindPositions(question.names[name], question.asked, plainFilesToo)) {
      Look(question, {static_cast<std::ptrdiff_t>(at), false, name}, list.GetPlaces()[at]);
    }
  }
  if (!question.methodFolder.empty()) {
    for (const std::size_t at :
         list.FindPositions(question.methodFolder, question.asked, /*plainFilesToo=*/false)) {
      LookInMethodFolder(question, at, list.GetPlaces()[at]);
    }
  }
  if (!AddUpTo(OrderOfAnswer(question, list), question)) {
    draft.uncertain.push_back(question.number);
  }
}

/// Notes what stands at a name in a place, if that may change without a trace in the folder. The
/// name is the one that `order` says.
void NameScan::Look(const ScannedQuestion& question, Order order, std::uint32_t place) {
  const std::string& name = question.names[std::get<2>(order)];
  const std::string path = PathBelow(draft.PathOf(place), name);
  struct stat status = {};
  if (lstat(path.c_str(), &status) != 0) return;
  if (files == LookupRules::Files::Regular && !S_ISLNK(status.st_mode)) return;
  seen.push_back({order, place, LookAtFile(path, files)});
}

/// Looks in the method folder in `place`, which has that position in the list.
void NameScan::LookInMethodFolder(const ScannedQuestion& question, std::size_t position,
                                  std::uint32_t place) {
  const std::string path = PathBelow(draft.PathOf(place), question.methodFolder);
  struct stat status = {};
  if (lstat(path.c_str(), &status) != 0) return;
  const std::uint32_t folder = draft.AddPlace(path);
  draft.further.emplace_back(question.number, folder);
  for (std::size_t name = 0; name < question.names.size(); ++name) {
    Look(question, {static_cast<std::ptrdiff_t>(position), true, name}, folder);
  }
}

/// Where the search met the answer; empty when there is none.
std::optional<NameScan::Order> NameScan::OrderOfAnswer(const ScannedQuestion& question,
                                                       const AskedList& list) const {
  const ReceiptDraft::Question& answered = draft.questions[question.number];
  if (answered.place == kNoPlace) return std::nullopt;
  const auto name = static_cast<std::size_t>(
      std::find(question.names.begin(), question.names.end(), draft.FileOf(question.number)) -
      question.names.begin());
  if (question.privateFolder == answered.place) return Order{kBeforeAll, false, name};
  const std::size_t position = list.PositionOf(answered.place);
  if (position < list.GetPlaces().size()) return Order{position, false, name};
  // The answer is in a method folder. That has the position of the folder above it, the last asked.
  return Order{question.asked - 1, true, name};
}

/// Adds to the draft what was seen up to the answer, or all when there is none. Returns false when
/// something that was seen leads to another answer.
bool NameScan::AddUpTo(const std::optional<Order>& answer, const ScannedQuestion& question) {
  std::sort(seen.begin(), seen.end(),
            [](const Seen& left, const Seen& right) { return left.order < right.order; });
  for (const Seen& each : seen) {
    if (answer && each.order > *answer) break;
    const bool isAnswer = answer == each.order;
    // Where rights count, `ReceiptCheck` looks at the files of all answers anyway.
    if (!isAnswer || files == LookupRules::Files::Regular) {
      // The answer was a file that counted, whatever stands there now.
      const auto standing = static_cast<std::uint8_t>(isAnswer ? Standing::Counts : each.standing);
      const std::string& name = question.names[std::get<2>(each.order)];
      draft.files.emplace_back(question.number, each.place, draft.AddText(std::string_view(name)),
                               standing);
    }
    if (isAnswer) return true;
    // What comes before the answer should neither have ended the search nor be an answer.
    if (EndsSearch(each.standing, files)) return !answer;
    if (each.standing == Standing::Counts) return false;
  }
  return true;
}

}  // namespace Corvane::PathManagement::host
