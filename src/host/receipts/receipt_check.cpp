#include "host/receipts/receipt_check.h"

#include "host/common/disk_patience.h"
#include "host/folder/folder_stamp.h"
#include "host/receipts/surroundings.h"
#include "host/rules/asked_file.h"

#include <algorithm>

namespace Corvane::PathManagement::host {

ReceiptCheck::ReceiptCheck(const ReceiptBody& receipt)
    : body(receipt),
      all(receipt.Get().rights() != RightsOfProcess() || HasWayChanged()),
      path(receipt.Get().path()->uncertain()),
      changedPlaces(receipt.Get().places()->size()) {
  CheckPlaces();
  CheckLists();
  CheckFiles();
  CheckAnswers();
}

void ReceiptCheck::CheckPlaces() {
  const std::int64_t timeout = body.Get().path()->timeout();
  DiskPatience::Limit limit;
  if (timeout >= 0) limit = std::chrono::milliseconds(timeout);
  const auto& places = *body.Get().places();
  for (std::uint32_t number = 0; number < places.size(); ++number) {
    const receipts::Place& place = *places[number];
    const FolderSight then = {
        .error = place.error(),
        .stamp = {
            .modified = place.modified(), .changed = place.changed(), .inode = place.inode()}};
    const auto look = [path = std::string(body.TextOf(place.path()))] {
      return LookAtFolder(path);
    };
    changedPlaces[number] = !place.certain() || DiskPatience(limit).Ask(look) != then;
  }
}

void ReceiptCheck::CheckLists() {
  const auto count = static_cast<std::uint32_t>(body.Get().list_ends()->size());
  for (std::uint32_t list = 0; list < count; ++list) {
    const auto places = body.ListAt(list);
    const auto found = std::find_if(places.begin(), places.end(),
                                    [&](std::uint32_t place) { return changedPlaces[place]; });
    firstChanged.push_back(static_cast<std::size_t>(found - places.begin()));
    any = any || found != places.end();
  }
  // A folder that came in one of them is searched as well.
  path = path || (body.Get().path()->recursive() && firstChanged[0] < body.ListAt(0).size());
}

/// What questions rest on besides their lists.
void ReceiptCheck::CheckFiles() {
  for (const std::uint32_t question : *body.Get().uncertain()) Mark(question);
  for (const auto* further : *body.Get().further()) {
    if (!changedPlaces[further->place()]) continue;
    if (further->question() == kNone) {
      all = true;
    } else {
      Mark(further->question());
    }
  }
  const auto counted = static_cast<LookupRules::Files>(body.Get().path()->rules()->files());
  for (const auto* file : *body.Get().files()) {
    const auto standing =
        LookAtFile(body.PathOf(file->place(), body.TextOf(file->name())), counted);
    if (static_cast<std::uint8_t>(standing) == file->standing()) continue;
    if (file->question() == kNone) {
      path = true;
    } else {
      Mark(file->question());
    }
  }
}

/// Rights change without a change of the folder.
void ReceiptCheck::CheckAnswers() {
  const auto counted = static_cast<LookupRules::Files>(body.Get().path()->rules()->files());
  if (counted == LookupRules::Files::Regular) return;
  for (std::uint32_t number = 0; number < body.CountQuestions(); ++number) {
    const AskedQuestion question = body.QuestionAt(number);
    if (question.place == kNone) continue;
    const std::string file = body.PathOf(question.place, question.file);
    if (LookAtFile(file, counted) != Standing::Counts) Mark(number);
  }
}

bool ReceiptCheck::HasWayChanged() const {
  LinkResolver links;
  return std::any_of(body.Get().ways()->begin(), body.Get().ways()->end(), [&](const auto* way) {
    return WithoutLinks(links, std::string(body.TextOf(way->path()))) !=
           body.TextOf(way->canonical());
  });
}

void ReceiptCheck::Mark(std::uint32_t question) {
  changedQuestions.resize(body.CountQuestions());
  changedQuestions[question] = true;
  any = true;
}

bool ReceiptCheck::Concerns(std::uint32_t question) const {
  const AskedQuestion asked = body.QuestionAt(question);
  return asked.asked > firstChanged[asked.list] ||
         (!changedQuestions.empty() && changedQuestions[question]);
}

}  // namespace Corvane::PathManagement::host
