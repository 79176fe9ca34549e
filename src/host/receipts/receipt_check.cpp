#include "host/receipts/receipt_check.h"

#include "host/common/parallel.h"
#include "host/common/path_bytes.h"
#include "host/folder/open_path.h"
#include "host/receipts/surroundings.h"

#include <fcntl.h>

#include <algorithm>
#include <memory>
#include <string>
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

DiskPatience::Limit LimitOf(const ReceiptBody& receipt) {
  const std::int64_t timeout = receipt.Get().path()->timeout();
  if (timeout < 0) return std::nullopt;
  return std::chrono::milliseconds(timeout);
}

}  // namespace

ReceiptCheck::ReceiptCheck(const ReceiptBody& receipt)
    : body(receipt),
      counted(static_cast<LookupRules::Files>(receipt.Get().path()->rules()->files())),
      patience(LimitOf(receipt)),
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
  Descriptor folder(-1);
  // Opening the folder may take any time, so with a limit it is not opened.
  if (!patience.GetLimit() && end - begin >= kFewestNeighbours) {
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
      CheckPlace(number, patience.Ask(number, look).value_or(FolderSight{.error = ETIMEDOUT}));
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
  const auto& files = *body.Get().files();
  std::vector<std::uint8_t> changed(files.size());  // of each file: 1 if changed
  const auto check = [&](std::size_t at) {
    const receipts::File& file = *files.Get(static_cast<std::uint32_t>(at));
    const auto standing = static_cast<Standing>(file.standing());
    changed[at] = StillStands(file.place(), body.TextOf(file.name()), standing) ? 0 : 1;
  };
  ForEachInParallel(changed.size(), check, /*threadsAtFirst=*/1);
  for (std::uint32_t at = 0; at < changed.size(); ++at) {
    if (changed[at] == 0) continue;
    const std::uint32_t question = files.Get(at)->question();
    if (question == kWholePath) {
      // A link in a folder of a recursive path. It decides only which folders are on the path.
      concernsPath = true;
    } else {
      Mark(question);
    }
  }
}

/// Whether `standing` is what `name` has in a place; no when the disk does not say so in time.
bool ReceiptCheck::StillStands(std::uint32_t place, std::string_view name, Standing standing) {
  const auto look = [path = body.PathOf(place, name), files = counted] {
    return LookAtFile(path, files);
  };
  return patience.Ask(place, look) == standing;
}

/// Checks the files of answers where rights decide which files count: rights may change without a
/// change of the folder.
void ReceiptCheck::CheckAnswers() {
  if (counted == LookupRules::Files::Regular) return;
  std::vector<std::uint8_t> changed(body.CountQuestions());  // of each question: 1 if changed
  const auto check = [&](std::size_t at) {
    const AskedQuestion question = body.QuestionAt(static_cast<std::uint32_t>(at));
    if (question.place == kNoPlace) return;
    changed[at] = StillStands(question.place, question.file, Standing::Counts) ? 0 : 1;
  };
  ForEachInParallel(changed.size(), check, /*threadsAtFirst=*/1);
  for (std::uint32_t number = 0; number < changed.size(); ++number) {
    if (changed[number] != 0) Mark(number);
  }
}

/// Whether links lead elsewhere than they did, or where they lead is not known in time.
bool ReceiptCheck::HasWayChanged() const {
  const auto links = std::make_shared<LinkResolver>();
  const auto& ways = *body.Get().ways();
  const auto hasChanged = [&](std::size_t at) {
    const receipts::Way& way = *ways.Get(static_cast<std::uint32_t>(at));
    const auto resolve = [links, path = std::string(body.TextOf(way.path()))] {
      return WithoutLinks(*links, path);
    };
    return DiskPatience(patience.GetLimit()).Ask(resolve) != body.TextOf(way.canonical());
  };
  return AnyInParallel(ways.size(), hasChanged, /*threadsAtFirst=*/1);
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
