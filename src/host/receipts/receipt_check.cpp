#include "host/receipts/receipt_check.h"

#include "host/common/disk_patience.h"
#include "host/common/parallel.h"
#include "host/common/path_bytes.h"
#include "host/folder/open_path.h"
#include "host/receipts/surroundings.h"
#include "host/rules/asked_file.h"

#include <fcntl.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

constexpr std::uint32_t kFewestNeighbours = 4;  // places in one folder that make it worth opening
constexpr std::uint32_t kMostNeighbours = 64;   // the most places that one thread takes at a time

/// An absolute path without its last part, but with the separator before that.
std::string_view FolderPart(std::string_view path) {
  path.remove_suffix(LastPart(path).size());
  return path;
}

}  // namespace

ReceiptCheck::ReceiptCheck(const ReceiptBody& receipt)
    : body(receipt),
      concernsAll(receipt.Get().rights() != RightsOfProcess() || HasWayChanged()),
      concernsPath(receipt.Get().path()->uncertain()),
      changedPlaces(receipt.Get().places()->size()) {
  CheckPlaces();
  CheckLists();
  CheckUnlisted();
  CheckAnswers();
}

/// Compares the places with what the disk has now. Places that follow one another and are in the
/// same folder are asked for relative to that folder: with whole paths, most of the time would go
/// into finding the folder anew for each of them.
void ReceiptCheck::CheckPlaces() {
  const std::uint32_t count = body.Get().places()->size();
  std::vector<std::uint32_t> ends;
  for (std::uint32_t number = 0, begin = 0; number < count; ++number) {
    const bool isLast = number + 1 == count || number + 1 - begin == kMostNeighbours ||
                        FolderPart(body.PathAt(number + 1)) != FolderPart(body.PathAt(number));
    if (!isLast) continue;
    begin = number + 1;
    ends.push_back(begin);
  }
  ForEachInParallel(ends.size(),
                    [&](std::size_t at) { CheckNeighbours(at == 0 ? 0 : ends[at - 1], ends[at]); });
}

/// Checks the places from `begin` up to `end`, which are all in one folder.
void ReceiptCheck::CheckNeighbours(std::uint32_t begin, std::uint32_t end) {
  const std::int64_t timeout = body.Get().path()->timeout();
  DiskPatience::Limit limit;
  if (timeout >= 0) limit = std::chrono::milliseconds(timeout);
  Descriptor folder(-1);
  // Opening the folder may take any time, so with a limit it is not opened.
  if (!limit && end - begin >= kFewestNeighbours) {
    folder = OpenPath(std::string(FolderPart(body.PathAt(begin))), O_PATH | O_DIRECTORY);
  }
  std::string name;  // outside the loop, which then uses its memory again
  for (std::uint32_t number = begin; number < end; ++number) {
    const std::string_view place = body.PathAt(number);
    if (folder.IsOpen()) {
      name = LastPart(place);  // "" for the root, which is in no other folder
      CheckPlace(number, LookAtFolder(folder.Get(), name.empty() ? "." : name.c_str()));
    } else {
      const auto look = [path = std::string(place)] { return LookAtFolder(path); };
      CheckPlace(number, DiskPatience(limit).Ask(look).value_or(FolderSight{.error = ETIMEDOUT}));
    }
  }
}

void ReceiptCheck::CheckPlace(std::uint32_t number, const FolderSight& now) {
  const receipts::Place& place = body.PlaceAt(number);
  const FolderSight then = {
      .error = place.error(),
      .stamp = {.modified = place.modified(), .changed = place.changed(), .inode = place.inode()}};
  changedPlaces[number] = place.certain() && now == then ? 0 : 1;
}

void ReceiptCheck::CheckLists() {
  const auto count = static_cast<std::uint32_t>(body.Get().list_ends()->size());
  for (std::uint32_t list = 0; list < count; ++list) {
    const auto places = body.ListAt(list);
    const auto found = std::find_if(places.begin(), places.end(),
                                    [&](std::uint32_t place) { return changedPlaces[place] != 0; });
    firstChanged.push_back(static_cast<std::size_t>(found - places.begin()));
    concernsSome = concernsSome || found != places.end();
  }
  // A changed folder of a recursive path may hold a new folder, which is then on the path, too.
  concernsPath =
      concernsPath || (body.Get().path()->recursive() && firstChanged[0] < body.ListAt(0).size());
}

/// Checks what questions rest on that is in none of their lists: uncertain answers, further places,
/// and what stands at single names.
void ReceiptCheck::CheckUnlisted() {
  for (const std::uint32_t question : *body.Get().uncertain()) Mark(question);
  for (const auto* further : *body.Get().further()) {
    if (changedPlaces[further->place()] == 0) continue;
    if (further->question() == kWholePath) {
      // A place that decides which folders are hidden, or which come after `Lookup::afterFolder`. A
      // comparison of the folders on the path would not show the change.
      concernsAll = true;
    } else {
      Mark(further->question());
    }
  }
  const auto counted = static_cast<LookupRules::Files>(body.Get().path()->rules()->files());
  for (const auto* file : *body.Get().files()) {
    const auto standing =
        LookAtFile(body.PathOf(file->place(), body.TextOf(file->name())), counted);
    if (static_cast<std::uint8_t>(standing) == file->standing()) continue;
    if (file->question() == kWholePath) {
      // A link in a folder of a recursive path. It decides only which folders are on the path.
      concernsPath = true;
    } else {
      Mark(file->question());
    }
  }
}

/// Checks the files of answers where rights decide which files count: rights may change without a
/// change of the folder.
void ReceiptCheck::CheckAnswers() {
  const auto counted = static_cast<LookupRules::Files>(body.Get().path()->rules()->files());
  if (counted == LookupRules::Files::Regular) return;
  for (std::uint32_t number = 0; number < body.CountQuestions(); ++number) {
    const AskedQuestion question = body.QuestionAt(number);
    if (question.place == kNoPlace) continue;
    const std::string file = body.PathOf(question.place, question.file);
    if (LookAtFile(file, counted) != Standing::Counts) Mark(number);
  }
}

/// Whether links lead elsewhere than they did.
bool ReceiptCheck::HasWayChanged() const {
  LinkResolver links;
  return std::any_of(body.Get().ways()->begin(), body.Get().ways()->end(), [&](const auto* way) {
    return WithoutLinks(links, std::string(body.TextOf(way->path()))) !=
           body.TextOf(way->canonical());
  });
}

/// Notes that a question is to be asked again.
void ReceiptCheck::Mark(std::uint32_t question) {
  changedQuestions.resize(body.CountQuestions());
  changedQuestions[question] = true;
  concernsSome = true;
}

bool ReceiptCheck::Concerns(std::uint32_t question) const {
  const AskedQuestion asked = body.QuestionAt(question);
  return asked.asked > firstChanged[asked.list] ||
         (!changedQuestions.empty() && changedQuestions[question]);
}

}  // namespace Corvane::PathManagement::host
