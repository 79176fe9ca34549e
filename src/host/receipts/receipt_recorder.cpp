#include "host/common/path_bytes.h"
#include "host/folder/entry_state.h"
#include "host/folder/open_path.h"
#include "host/path/path_view.h"
#include "host/receipts/asked_lists.h"
#include "host/receipts/folder_patience.h"
#include "host/receipts/name_scan.h"
#include "host/receipts/receipt_draft.h"
#include "searchpath/host/receipt.h"
#include "searchpath/model/byte_text.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

/// The lengths of the names of files and folders that may decide a question. All lengths, when only
/// the names themselves would tell.
NameLengths LengthsOf(const Lookup& lookup) {
  const std::u16string_view file = LastPart(lookup.name);
  const bool isAscii =
      std::all_of(file.begin(), file.end(), [](char16_t unit) { return unit < 0x80; });
  NameLengths lengths;
  if (lookup.extensions.empty() && isAscii) {
    lengths.Add(file.size());
    lengths.Add(file.size() + 1);  // the method folder: "@area" for "area"
  } else {
    lengths.AddAll();
  }
  return lengths;
}

bool IsSameKind(const Lookup& left, const Lookup& right) {
  return left.policy == right.policy && left.extensions == right.extensions &&
         left.fromFolder == right.fromFolder && left.afterFolder == right.afterFolder;
}

}  // namespace

/// A place is the number of a folder in the draft.
class ReceiptRecorder::State {
 public:
  explicit State(const Environment& asked)
      : environment(asked),
        patience(asked.options->timeout),
        lists(draft, patience, *asked.view, asked.ruled.get(), asked.workingFolder),
        scan(draft, patience, asked.rules.files) {}

  void Add(const Lookup& lookup, const boost::optional<FoundItem>& answer);
  [[nodiscard]] std::shared_ptr<const ReceiptBody> Finish();

 private:
  /// The number of the question's kind, which is added when it is new.
  [[nodiscard]] std::uint32_t KindOf(const Lookup& lookup);
  [[nodiscard]] std::uint32_t PlaceOf(const FoundItem& file);
  [[nodiscard]] receipts::Text FileOf(const FoundItem& file, const Lookup& lookup);
  [[nodiscard]] std::optional<std::size_t> EndOfSearch(const AskedList& list,
                                                       std::uint32_t answer) const;
  void NotePath();
  void NoteLinks(std::uint32_t place, const FolderListing& listing);
  [[nodiscard]] EnvironmentOptions OptionsAnywhere() const;

  const Environment& environment;
  ReceiptDraft draft;
  FolderPatience patience;
  AskedLists lists;
  NameScan scan;
  std::vector<Lookup> kinds;  // as in draft.kinds; without names
  boost::unordered_flat_map<std::shared_ptr<const IPathEntry>, std::uint32_t> placesOfEntries;
  std::vector<ScannedQuestion> pending;  // whose folders were not listed yet; scanned at the end
};

void ReceiptRecorder::State::Add(const Lookup& lookup, const boost::optional<FoundItem>& answer) {
  const std::uint32_t kind = KindOf(lookup);
  const QuestionScope scope = lists.ScopeOf(lookup, kind);
  AskedList& list = lists.At(scope.list);
  const std::uint32_t place = answer ? PlaceOf(*answer) : kNoPlace;
  const auto number = static_cast<std::uint32_t>(draft.questions.size());
  const std::optional<std::size_t> end = answer ? EndOfSearch(list, place) : std::nullopt;
  const std::size_t asked = end && !scope.asksAll ? *end : list.GetPlaces().size();
  // Nothing would show a change of a folder that the question is not known to have asked.
  const bool isPlaced = !answer || end || scope.privateFolder == place;
  draft.questions.push_back({.nameEnd = draft.AddName(lookup.name),
                             .file = answer ? FileOf(*answer, lookup) : receipts::Text(),
                             .place = place,
                             .kind = kind,
                             .list = scope.list,
                             .asked = static_cast<std::uint32_t>(asked)});
  draft.lists[scope.list].asked = std::max(draft.lists[scope.list].asked, asked);
  for (const std::uint32_t further : scope.further) draft.further.emplace_back(number, further);
  if (!scope.isCertain || !isPlaced) {
    draft.uncertain.push_back(number);
  } else if (scope.privateFolder || list.MayHoldAnyOf(LengthsOf(lookup))) {
    ScannedQuestion question{
        .number = number, .list = scope.list, .asked = asked, .privateFolder = scope.privateFolder};
    lists.SetNames(lookup, question);
    if (list.IsListed()) {
      scan.Run(question, list);
    } else {
      pending.push_back(std::move(question));
    }
  }
}

std::uint32_t ReceiptRecorder::State::KindOf(const Lookup& lookup) {
  // From the end: most questions are of the kind of the one before.
  const auto known = std::find_if(kinds.rbegin(), kinds.rend(),
                                  [&](const Lookup& kind) { return IsSameKind(kind, lookup); });
  if (known != kinds.rend()) return static_cast<std::uint32_t>(kinds.rend() - known - 1);
  Lookup kind = lookup;
  kind.name.clear();
  for (const ustring& extension : kind.extensions) {
    draft.extensions.push_back(draft.AddText(extension));
  }
  draft.kinds.emplace_back(static_cast<std::uint32_t>(kind.policy),
                           static_cast<std::uint32_t>(draft.extensions.size()),
                           draft.AddText(kind.fromFolder.value_or(ustring())),
                           draft.AddText(kind.afterFolder.value_or(ustring())),
                           kind.fromFolder.has_value(), kind.afterFolder.has_value());
  kinds.push_back(std::move(kind));
  return static_cast<std::uint32_t>(kinds.size() - 1);
}

/// The place of the folder that holds `file`.
std::uint32_t ReceiptRecorder::State::PlaceOf(const FoundItem& file) {
  const auto [known, isNew] = placesOfEntries.try_emplace(file.GetPathEntry(), std::uint32_t{0});
  if (isNew) {
    known->second = draft.AddPlace(NativeBytes(known->first->GetAbsoluteIRI()).value_or(""));
  }
  return known->second;
}

/// The name of the file in its folder; empty when it is the last part of the name in `lookup`.
receipts::Text ReceiptRecorder::State::FileOf(const FoundItem& file, const Lookup& lookup) {
  // Then the names are equal; comparing them would take as long as the rest of `Add`.
  if (lookup.extensions.empty() && lookup.policy != FilenameMatchingPolicy::IgnoreCase) return {};
  const PathItem& item = *file.GetPathItem();
  const ustring name = item.GetName() + item.GetExtension();
  return name == LastPart(lookup.name) ? receipts::Text() : draft.AddText(name);
}

/// How many places of `list` were asked up to the place `answer`; empty when it is none of them.
/// For a method folder such as "@area", which is in no list, the folder above was the last one.
std::optional<std::size_t> ReceiptRecorder::State::EndOfSearch(const AskedList& list,
                                                               std::uint32_t answer) const {
  const std::size_t size = list.GetPlaces().size();
  std::size_t position = list.PositionOf(answer);
  if (position == size) {
    const std::string& path = draft.PathOf(answer);
    const auto above = draft.FindPlace(FolderAbove(path));
    if (above && LastPart(std::string_view(path)).starts_with('@')) {
      position = list.PositionOf(*above);
    }
  }
  return position == size ? std::nullopt : std::optional(position + 1);
}

/// Notes what decides which folders are on the path.
void ReceiptRecorder::State::NotePath() {
  const EnvironmentOptions& options = *environment.options;
  draft.pathIsUncertain = options.packages || !environment.view->GetUnlocated().empty();
  for (const ustring& folder : options.without) {
    try {
      const AbsoluteIRI hidden = environment.workingFolder.Locate(folder);
      draft.further.emplace_back(kWholePath,
                                 draft.AddPlace(NativeBytes(hidden).value_or("/dev/null")));
    } catch (const current_working_folder::FailedToAbsolutizeException&) {
      draft.pathIsUncertain = true;
    }
  }
  const bool isRecursive = options.expansion == FolderExpansion::Recursive;
  if (!isRecursive && !draft.pathIsUncertain) return;
  ReceiptDraft::List& path = draft.lists.front();  // all of which matters now
  path.asked = path.places.size();
  if (!isRecursive) return;
  const auto& folders = environment.view->GetFolderPath().GetMainFolders();
  for (std::size_t at = 0; at < folders.size(); ++at) {
    const FolderState& folder = StateOf(*folders[at]);
    if (folder.IsListed()) NoteLinks(path.places[at], folder.Listing());
  }
}

/// Notes the links in a folder whose subfolders are searched: each may come to lead to a folder, or
/// cease to.
void ReceiptRecorder::State::NoteLinks(std::uint32_t place, const FolderListing& listing) {
  for (const auto& link : listing.links) {
    const auto standing = patience.Ask(place, [path = PathBelow(draft.PathOf(place), link.name)] {
      return LookAtFile(path, LookupRules::Files::Regular);
    });
    // Otherwise the link has changed since it was listed, or the disk does not say.
    const bool isAsListed =
        standing && (*standing == Standing::Folder) == (link.target == LinkTarget::Folder);
    draft.pathIsUncertain = draft.pathIsUncertain || !isAsListed;
    if (!standing) continue;
    draft.files.emplace_back(kWholePath, place, draft.AddText(std::string_view(link.name)),
                             static_cast<std::uint8_t>(*standing));
  }
}

/// The options with which a process in any working folder searches the same path.
EnvironmentOptions ReceiptRecorder::State::OptionsAnywhere() const {
  EnvironmentOptions options = *environment.options;
  try {
    options.workingFolder = environment.workingFolder.Locate(u".");
  } catch (const current_working_folder::FailedToAbsolutizeException&) {
    options.workingFolder.reset();  // there is none, so no relative folder has been found
  }
  return options;
}

std::shared_ptr<const ReceiptBody> ReceiptRecorder::State::Finish() {
  for (const ScannedQuestion& question : pending) scan.Run(question, lists.At(question.list));
  NotePath();
  return draft.Finish(OptionsAnywhere(), environment.begun);
}

ReceiptRecorder::ReceiptRecorder(const Environment& environment) {
  if (environment.options == nullptr) {
    throw std::logic_error(
        "there are no receipts of a path that was handed over, or that is without files");
  }
  state = std::make_unique<State>(environment);
}

ReceiptRecorder::~ReceiptRecorder() = default;

void ReceiptRecorder::Add(const Lookup& lookup, const boost::optional<FoundItem>& answer) {
  state->Add(lookup, answer);
}

Receipt ReceiptRecorder::Finish() { return Receipt(state->Finish()); }

Receipt Environment::FindWithReceipt(const std::vector<Lookup>& lookups) const {
  ReceiptRecorder recorder(*this);
  for (const Lookup& lookup : lookups) recorder.Add(lookup, Find(lookup));
  return recorder.Finish();
}

}  // namespace Corvane::PathManagement::host
