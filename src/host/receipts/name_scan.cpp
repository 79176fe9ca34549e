#include "host/receipts/name_scan.h"

#include "host/common/path_bytes.h"
#include "host/folder/open_path.h"

#include <sys/stat.h>

#include <algorithm>

namespace Corvane::PathManagement::host {

namespace {

constexpr std::ptrdiff_t kBeforeAll = -1;  // the position of the private folder

/// What `lstat` finds at a path.
enum class Found : std::uint8_t { Nothing, Link, Other };

Found LookAtName(const std::string& path) {
  struct stat status = {};
  if (lstat(path.c_str(), &status) != 0) return Found::Nothing;
  return S_ISLNK(status.st_mode) ? Found::Link : Found::Other;
}

/// A look at a name. No value: what stands there shows in the folder when it changes.
struct NameSight {
  std::optional<Standing> standing;
};

NameSight LookAtUnseen(const std::string& path, LookupRules::Files files) {
  const Found found = LookAtName(path);
  if (found == Found::Nothing) return {};
  if (files == LookupRules::Files::Regular && found != Found::Link) return {};
  return {LookAtFile(path, files)};
}

}  // namespace

void NameScan::Run(const ScannedQuestion& question, AskedList& list) {
  seen.clear();
  hasSeenAll = true;
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
      if (at % question.foldersOfRoot != question.folders[name]) continue;
      const auto root = static_cast<std::ptrdiff_t>(at / question.foldersOfRoot);
      Look(question, {root, false, name}, list.GetPlaces()[at]);
    }
  }
  if (!question.methodFolder.empty()) {
    for (const std::size_t at :
         list.FindPositions(question.methodFolder, question.asked, /*plainFilesToo=*/false)) {
      LookInMethodFolder(question, at, list.GetPlaces()[at]);
    }
  }
  const auto answer = OrderOfAnswer(question, list);
  const bool isPlaced = answer || draft.questions[question.number].place == kNoPlace;
  if (!AddUpTo(answer, question) || !isPlaced || !hasSeenAll)
    draft.uncertain.push_back(question.number);
}

/// Notes what stands at a name in a place, if that may change without a trace in the folder. The
/// name is the one that `order` says.
void NameScan::Look(const ScannedQuestion& question, Order order, std::uint32_t place) {
  const std::string& name = question.names[std::get<2>(order)];
  const auto sight = patience.Ask(place, [path = PathBelow(draft.PathOf(place), name),
                                          counted = files] { return LookAtUnseen(path, counted); });
  hasSeenAll = hasSeenAll && sight;
  if (sight && sight->standing) seen.push_back({order, place, *sight->standing});
}

/// Looks in the method folder in `place`, which has that position in the list.
void NameScan::LookInMethodFolder(const ScannedQuestion& question, std::size_t position,
                                  std::uint32_t place) {
  const std::string path = PathBelow(draft.PathOf(place), question.methodFolder);
  const auto found = patience.Ask(place, [path] { return LookAtName(path); });
  hasSeenAll = hasSeenAll && found;
  if (!found || *found == Found::Nothing) return;
  const std::uint32_t folder = draft.AddPlace(path);
  draft.further.emplace_back(question.number, folder);
  for (std::size_t name = 0; name < question.names.size(); ++name) {
    Look(question, {static_cast<std::ptrdiff_t>(position), true, name}, folder);
  }
}

/// Where the search met the answer; empty when there is none, or when that cannot be told.
std::optional<NameScan::Order> NameScan::OrderOfAnswer(const ScannedQuestion& question,
                                                       const AskedList& list) const {
  const std::uint32_t place = draft.questions[question.number].place;
  if (place == kNoPlace) return std::nullopt;
  const auto found =
      std::find(question.names.begin(), question.names.end(), draft.FileOf(question.number));
  if (found == question.names.end()) return std::nullopt;
  const auto name = static_cast<std::size_t>(found - question.names.begin());
  if (question.privateFolder == place) return Order{kBeforeAll, false, name};
  if (question.foldersOfRoot > 1) return OrderInList(question, list);
  const std::size_t position = list.PositionOf(place);
  if (position < list.GetPlaces().size()) return Order{position, false, name};
  // A method folder has the position of the folder above it.
  const std::string& path = draft.PathOf(place);
  const auto above = draft.FindPlace(FolderAbove(path));
  if (!above || LastPart(path) != question.methodFolder) return std::nullopt;
  const std::size_t abovePosition = list.PositionOf(*above);
  if (abovePosition == list.GetPlaces().size()) return std::nullopt;
  return Order{abovePosition, true, name};
}

/// As `OrderOfAnswer`, for an answer in a place of the list. Empty also when the search may have
/// met it by several names, such as "a/b.zt" in one root and "b.zt" in another.
std::optional<NameScan::Order> NameScan::OrderInList(const ScannedQuestion& question,
                                                     const AskedList& list) const {
  const std::uint32_t place = draft.questions[question.number].place;
  const std::string_view file = draft.FileOf(question.number);
  const auto& places = list.GetPlaces();
  std::optional<Order> first;
  for (std::size_t at = 0; at < places.size(); ++at) {
    if (places[at] != place) continue;
    for (std::size_t name = 0; name < question.names.size(); ++name) {
      const bool isAskedFor = question.folders[name] == at % question.foldersOfRoot;
      if (!isAskedFor || question.names[name] != file) continue;
      if (first && std::get<2>(*first) != name) return std::nullopt;
      if (!first) first = Order{at / question.foldersOfRoot, false, name};
    }
  }
  return first;
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
