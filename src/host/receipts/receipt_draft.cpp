#include "host/receipts/receipt_draft.h"

#include "host/common/parallel.h"
#include "host/common/path_bytes.h"
#include "host/folder/folder_stamp.h"
#include "host/names/name_key.h"
#include "host/receipts/surroundings.h"
#include "searchpath/model/byte_text.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

constexpr std::chrono::nanoseconds kSecond = std::chrono::seconds(1);
constexpr std::chrono::nanoseconds kCoarseGrain = 2 * kSecond;  // of times in some file systems

/// Whether any change of a folder since `begun` would show in `sight`, which was taken after that.
/// `Receipt` promises that a folder modified in the two seconds before counts as uncertain, whatever
/// the file system. When a modification time has been set back, only the change time shows that, so
/// it must be early enough, too.
bool IsCertain(const FolderSight& sight, std::chrono::nanoseconds begun) {
  // Other errors, such as a missing right, say nothing about what is there.
  if (sight.error != 0) return sight.error == ENOENT || sight.error == ENOTDIR;
  // A time in whole seconds may come from a file system that keeps no finer ones.
  const bool isCoarse = sight.stamp.changed % kSecond.count() == 0;
  return sight.stamp.modified <= (begun - kCoarseGrain).count() &&
         (isCoarse ? sight.stamp.changed <= (begun - kCoarseGrain).count()
                   : sight.stamp.changed < begun.count());
}

}  // namespace

receipts::Text ReceiptDraft::AddText(std::string_view text) {
  if (texts.size() + text.size() > kMostBodyBytes) throw std::length_error("too many names");
  const receipts::Text added(static_cast<std::uint32_t>(texts.size()),
                             static_cast<std::uint32_t>(text.size()));
  texts.append(text);
  return added;
}

receipts::Text ReceiptDraft::AddText(const ustring& text) {
  return AddText(std::string_view(BytesFromText(text).value_or("")));
}

std::uint32_t ReceiptDraft::AddName(const ustring& name) {
  NameKey bytes;  // saves making a string of a usual name
  if (bytes.Set(name)) {
    names.append(bytes.View());
  } else {
    names.append(BytesFromText(name).value_or(""));
  }
  if (names.size() > kMostBodyBytes) throw std::length_error("too many names");
  return static_cast<std::uint32_t>(names.size());
}

std::string_view ReceiptDraft::FileOf(std::uint32_t question) const {
  const Question& answered = questions[question];
  if (answered.file.size() > 0) return TextOf(answered.file);
  const std::uint32_t begin = question == 0 ? 0 : questions[question - 1].nameEnd;
  return LastPart(std::string_view(names).substr(begin, answered.nameEnd - begin));
}

std::optional<std::uint32_t> ReceiptDraft::FindPlace(std::string_view path) const {
  const auto known = placesByPath.find(path);
  return known == placesByPath.end() ? std::nullopt : std::optional(known->second);
}

std::uint32_t ReceiptDraft::AddPlace(std::string_view path) {
  if (const auto known = FindPlace(path)) return *known;
  const auto place = static_cast<std::uint32_t>(paths.size());
  placesByPath.emplace(paths.emplace_back(path), place);
  return place;
}

/// Keeps only the places that questions have asked or that answers rest on, and numbers them anew.
void ReceiptDraft::DropIdlePlaces() {
  std::vector<std::uint32_t> numbers(paths.size(), kNoPlace);  // the new ones, by old number
  std::deque<std::string> kept;
  const auto keep = [&](std::uint32_t place) {
    if (numbers[place] == kNoPlace) {
      numbers[place] = static_cast<std::uint32_t>(kept.size());
      kept.push_back(std::move(paths[place]));
    }
    return numbers[place];
  };
  for (List& list : lists) {
    list.places.resize(list.asked);
    for (std::uint32_t& place : list.places) place = keep(place);
  }
  for (auto& question : questions) {
    if (question.place != kNoPlace) question.place = keep(question.place);
  }
  for (auto& about : further) about = {about.question(), keep(about.place())};
  for (auto& file : files) {
    file = {file.question(), keep(file.place()), file.name(), file.standing()};
  }
  paths = std::move(kept);
  placesByPath.clear();
  for (std::uint32_t place = 0; place < paths.size(); ++place) {
    placesByPath.emplace(paths[place], place);
  }
}

/// Finds out what is at the places and where they lead, waiting for each up to `limit`.
void ReceiptDraft::LookAtPlaces(DiskPatience::Limit limit,
                                std::chrono::system_clock::time_point begun) {
  std::vector<FolderSight> sights(paths.size());
  std::vector<std::string> canonical(paths.size());
  const auto links = std::make_shared<LinkResolver>();
  ForEachInParallel(paths.size(), [&](std::size_t place) {
    const std::string& path = paths[place];
    DiskPatience patience(limit);
    const auto sight = patience.Ask([path] { return LookAtFolder(path); });
    sights[place] = sight.value_or(FolderSight{.error = ETIMEDOUT});
    canonical[place] =
        patience.Ask([links, path] { return WithoutLinks(*links, path); }).value_or(path);
  });
  std::vector<bool> hasAnswer(paths.size());
  for (const Question& question : questions) {
    if (question.place != kNoPlace) hasAnswer[question.place] = true;
  }
  for (std::size_t place = 0; place < paths.size(); ++place) {
    const FolderSight& sight = sights[place];
    // A folder that holds an answer was there when it was asked.
    const bool isGone = sight.error != 0 && hasAnswer[place];
    const receipts::Text path = AddText(std::string_view(paths[place]));
    places.emplace_back(sight.stamp.modified, sight.stamp.changed, sight.stamp.inode, path,
                        AddTarget(path, canonical[place]), static_cast<std::uint16_t>(sight.error),
                        !isGone && IsCertain(sight, begun.time_since_epoch()));
  }
  const std::set<std::string> found = FindWays(canonical);
  const std::vector<std::string> passed(found.begin(), found.end());
  std::vector<std::string> targets(passed.size());
  const auto resolve = [&](std::size_t at) {
    const std::string& way = passed[at];
    // A way that does not answer in time is saved as free of links: if it has some, it is seen as
    // changed.
    targets[at] =
        DiskPatience(limit).Ask([links, way] { return WithoutLinks(*links, way); }).value_or(way);
  };
  ForEachInParallel(passed.size(), resolve, /*threadsAtFirst=*/1);
  for (std::size_t at = 0; at < passed.size(); ++at) {
    const receipts::Text path = AddText(std::string_view(passed[at]));
    ways.emplace_back(path, AddTarget(path, targets[at]));
  }
}

/// The text of `target`, to which `path` leads. Mostly both are the same; the text is then
/// not added again.
receipts::Text ReceiptDraft::AddTarget(const receipts::Text& path, const std::string& target) {
  return TextOf(path) == target ? path : AddText(std::string_view(target));
}

/// The paths whose links decide where places lead: the folder above each place, and places whose
/// canonical path is not their own.
std::set<std::string> ReceiptDraft::FindWays(const std::vector<std::string>& canonical) const {
  std::set<std::string> found;
  for (std::size_t place = 0; place < paths.size(); ++place) {
    const std::string& path = paths[place];
    found.insert(FolderAbove(path));
    if (canonical[place] != path) found.insert(path);
  }
  return found;
}

/// A usual question is of the first kind. Either its answer is the file of that name in the last
/// place asked, or the whole list was asked in vain. All other questions are exceptions.
ReceiptDraft::Written ReceiptDraft::WriteQuestions() const {
  Written written;
  written.nameEnds.reserve(questions.size());
  written.asked.reserve(questions.size());
  for (const Question& question : questions) {
    const auto number = static_cast<std::uint32_t>(written.asked.size());
    const auto& list = lists[question.list].places;
    const bool isAnswered = question.place != kNoPlace;
    const bool endsAsUsual = isAnswered
                                 ? question.asked > 0 && list[question.asked - 1] == question.place
                                 : question.asked == list.size();
    if (question.kind != 0 || question.file.size() > 0 || !endsAsUsual) {
      written.exceptions.emplace_back(number, question.kind, question.asked, question.place,
                                      question.file);
    }
    written.nameEnds.push_back(question.nameEnd);
    written.asked.push_back(isAnswered && endsAsUsual ? question.asked : 0);
    // The run of the question before may go on: a longer one then replaces it.
    const bool goesOn = !written.runs.empty() && written.runs.back().list() == question.list;
    if (goesOn) written.runs.pop_back();
    written.runs.emplace_back(number + 1, question.list);
  }
  return written;
}

flatbuffers::Offset<receipts::Path> ReceiptDraft::WritePath(flatbuffers::FlatBufferBuilder& builder,
                                                            const EnvironmentOptions& options) {
  const auto write = [&](const std::vector<ustring>& folders) {
    std::vector<receipts::Text> written;
    written.reserve(folders.size());
    for (const ustring& folder : folders) written.push_back(AddText(folder));
    return builder.CreateVectorOfStructs(written);
  };
  const auto folders = write(options.folders);
  const auto without = write(options.without);
  const auto quoteFolders = write(options.quoteFolders);
  const auto packages =
      write(options.packages ? std::vector<ustring>{*options.packages} : std::vector<ustring>());
  const auto workingFolder =
      AddText(options.workingFolder ? options.workingFolder->getPath() : ustring());
  const LookupRules& given = options.rules;
  const receipts::Rules rules(given.foldersHaveMeaning, static_cast<std::uint8_t>(given.separator),
                              static_cast<std::uint8_t>(given.files),
                              static_cast<std::uint8_t>(given.emptyPart), given.expandsParts,
                              given.dropsRepeats);
  return receipts::CreatePath(builder, folders, without, quoteFolders, packages, &workingFolder,
                              &rules, options.timeout ? options.timeout->count() : -1,
                              options.expansion == FolderExpansion::Recursive,
                              options.keepDuplicates, pathIsUncertain);
}

std::shared_ptr<const ReceiptBody> ReceiptDraft::Finish(
    const EnvironmentOptions& options, std::chrono::system_clock::time_point begun) {
  DropIdlePlaces();
  LookAtPlaces(options.timeout, begun);
  std::vector<std::uint32_t> listEnds;
  std::vector<std::uint32_t> listed;
  for (const List& list : lists) {
    listed.insert(listed.end(), list.places.begin(), list.places.end());
    listEnds.push_back(static_cast<std::uint32_t>(listed.size()));
  }
  const Written written = WriteQuestions();
  // An estimate, so the limit is half of what a body may have.
  if (texts.size() + names.size() + places.size() * sizeof(places[0]) +
          (questions.size() + written.exceptions.size()) * sizeof(receipts::Exception) +
          (listed.size() + files.size() + further.size()) * sizeof(receipts::File) >
      kMostBodyBytes / 2) {
    throw std::length_error("too many names for a receipt");
  }
  flatbuffers::FlatBufferBuilder builder(texts.size() + names.size() +
                                         questions.size() * 2 * sizeof(std::uint32_t));
  const auto path = WritePath(builder, options);  // adds the last texts; they are saved next
  const auto write = [&](const std::string& bytes) {
    return builder.CreateVector(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  };
  const auto text = write(texts);
  const auto name = write(names);
  builder.Finish(receipts::CreateReceipt(
      builder, text, name, path, RightsOfProcess(), builder.CreateVectorOfStructs(places),
      builder.CreateVectorOfStructs(ways), builder.CreateVector(listEnds),
      builder.CreateVector(listed), builder.CreateVectorOfStructs(kinds),
      builder.CreateVectorOfStructs(extensions), builder.CreateVector(written.nameEnds),
      builder.CreateVector(written.asked), builder.CreateVectorOfStructs(written.runs),
      builder.CreateVectorOfStructs(written.exceptions), builder.CreateVectorOfStructs(further),
      builder.CreateVectorOfStructs(files), builder.CreateVector(uncertain)));
  ListingBody body;
  body.size = builder.GetSize();
  body.bytes = std::make_unique_for_overwrite<char[]>(body.size);  // no `NameBlock` views them
  std::memcpy(body.bytes.get(), builder.GetBufferPointer(), body.size);
  return std::make_shared<const ReceiptBody>(std::move(body));
}

}  // namespace Corvane::PathManagement::host
