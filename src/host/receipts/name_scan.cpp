#include "host/receipts/name_scan.h"

#include "host/common/path_bytes.h"

#include <sys/stat.h>

#include <algorithm>

namespace Corvane::PathManagement::host {

namespace {

constexpr std::ptrdiff_t kBeforeAll = -1;

}  // namespace

void NameScan::Run(const ScannedQuestion& question, AskedList& list) {
  seen.clear();
  const bool all = files != LookupRules::Files::Regular;
  if (question.first) {
    for (std::size_t name = 0; name < question.names.size(); ++name) {
      Look(question, {kBeforeAll, false, name}, *question.first);
    }
  }
  for (std::size_t name = 0; name < question.names.size(); ++name) {
    for (const std::size_t at : list.FindPositions(question.names[name], question.asked, all)) {
      Look(question, {static_cast<std::ptrdiff_t>(at), false, name}, list.GetPlaces()[at]);
    }
  }
  if (!question.methodFolder.empty()) {
    for (const std::size_t at :
         list.FindPositions(question.methodFolder, question.asked, /*all=*/false)) {
      LookInMethodFolder(question, at, list.GetPlaces()[at]);
    }
  }
  if (!LeadsTo(question, OrderOfAnswer(question, list))) {
    draft.uncertain.push_back(question.number);
  }
}

/// Notes what stands at a name in a place, if that may change without a trace in the folder.
void NameScan::Look(const ScannedQuestion& question, Order order, std::uint32_t place) {
  const std::string& name = question.names[std::get<2>(order)];
  const std::string path = PathBelow(draft.PathOf(place), name);
  struct stat status = {};
  if (lstat(path.c_str(), &status) != 0) return;
  if (files == LookupRules::Files::Regular && !S_ISLNK(status.st_mode)) return;
  seen.push_back({order, place, LookAtFile(path, files)});
}

void NameScan::LookInMethodFolder(const ScannedQuestion& question, std::size_t position,
                                  std::uint32_t above) {
  const std::string path = PathBelow(draft.PathOf(above), question.methodFolder);
  struct stat status = {};
  if (lstat(path.c_str(), &status) != 0) return;
  const std::uint32_t place = draft.AddPlace(path);
  draft.further.emplace_back(question.number, place);
  for (std::size_t name = 0; name < question.names.size(); ++name) {
    Look(question, {static_cast<std::ptrdiff_t>(position), true, name}, place);
  }
}

/// Empty when there is no answer.
std::optional<NameScan::Order> NameScan::OrderOfAnswer(const ScannedQuestion& question,
                                                       const AskedList& list) const {
  const ReceiptDraft::Question& answered = draft.questions[question.number];
  if (answered.place == kNone) return std::nullopt;
  const auto name = static_cast<std::size_t>(
      std::find(question.names.begin(), question.names.end(), draft.FileOf(question.number)) -
      question.names.begin());
  if (question.first == answered.place) return Order{kBeforeAll, false, name};
  const std::size_t position = list.PositionOf(answered.place);
  // A file in a method folder has the position of the folder above, the last one asked.
  if (position < list.GetPlaces().size()) return Order{position, false, name};
  return Order{question.asked - 1, true, name};
}

/// Adds what was seen up to the answer to the draft. Returns false when something among it leads to
/// another answer.
bool NameScan::LeadsTo(const ScannedQuestion& question, const std::optional<Order>& answer) {
  std::sort(seen.begin(), seen.end(),
            [](const Seen& left, const Seen& right) { return left.order < right.order; });
  for (const Seen& each : seen) {
    if (answer && each.order > *answer) break;
    const bool isAnswer = answer == each.order;
    // Where more than its presence counts, the file of an answer is checked in any case.
    if (!isAnswer || files == LookupRules::Files::Regular) {
      // At the answer stood a file that counts, whatever has happened to it since.
      const auto standing = static_cast<std::uint8_t>(isAnswer ? Standing::Counts : each.standing);
      const std::string& name = question.names[std::get<2>(each.order)];
      draft.files.emplace_back(question.number, each.place, draft.AddText(std::string_view(name)),
                               standing);
    }
    if (isAnswer) return true;
    if (EndsSearch(each.standing, files)) return !answer;
    if (each.standing == Standing::Counts) return false;
  }
  return true;
}

}  // namespace Corvane::PathManagement::host
