#include "searchpath/host/explanation.h"

#include "host/file_search.h"
#include "text/separators.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using PathManagement::detail::SearchTarget;

/// Writes down which folders are asked.
class AskedFolders : public ILookupObserver {
 public:
  void FolderAsked(const std::shared_ptr<const IPathEntry>& folder,
                   const std::vector<FoundItem>& files) override {
    asked.push_back({folder, FolderOutcome::Absent, files, ustring()});
  }

  std::vector<AskedFolder> asked;
};

bool IsMethodEntry(const AskedFolder& asked) {
  return asked.folder->GetPathEntryType() == PathEntryType::AtFolder;
}

bool HoldsInOtherCase(const IPathEntry& folder, const SearchTarget& target) {
  const ustring& name = target.GetName();
  const std::size_t lastSeparator = name.find_last_of(Constants::PathnameSeparatorStr);
  const SearchTarget file(lastSeparator == ustring::npos ? name : name.substr(lastSeparator + 1),
                          target.GetExtensions());
  return folder.FindItem(file, FilenameMatchingPolicy::IgnoreCase) != nullptr;
}

bool IsUnreadable(const IPathEntry& folder) {
  const auto* onDisk = dynamic_cast<const FolderEntry*>(&folder);
  return onDisk != nullptr && !onDisk->GetProblems().empty() && onDisk->GetItems()->empty();
}

FolderOutcome OutcomeOf(const AskedFolder& asked, const std::vector<FoundItem>& all,
                        const SearchTarget& target, bool isPlain) {
  if (asked.files.empty()) {
    if (IsUnreadable(*asked.folder)) return FolderOutcome::Unreadable;
    return HoldsInOtherCase(*asked.folder, target) ? FolderOutcome::OtherCaseOnly
                                                   : FolderOutcome::Absent;
  }
  const bool isMethod = isPlain && IsMethodEntry(asked);
  if (asked.files.front() == all.front()) {
    return isMethod ? FolderOutcome::MethodEntry : FolderOutcome::HoldsIt;
  }
  return isMethod ? FolderOutcome::LosesToEarlierFolder : FolderOutcome::HiddenByEarlier;
}

DecidingRule RuleFor(const std::vector<FoundItem>& all, const std::vector<AskedFolder>& asked,
                     bool isPlain) {
  if (all.empty()) return DecidingRule::NothingFound;
  if (!isPlain) return DecidingRule::PartialPathname;
  switch (all.front().GetPathEntry()->GetPathEntryType()) {
    case PathEntryType::PrivateFolder:
      return DecidingRule::PrivateFolder;
    case PathEntryType::AtFolder:
      return DecidingRule::MethodEntryFirst;
    default:
      break;
  }
  const bool beatsMethod = std::any_of(asked.begin(), asked.end(), [](const AskedFolder& folder) {
    return !folder.files.empty() && IsMethodEntry(folder);
  });
  return beatsMethod ? DecidingRule::FolderBeforeMethod : DecidingRule::FirstFolder;
}

/// Sets where each folder came from: what brought its main entry onto the path.
void SetOrigins(std::vector<AskedFolder>& asked, const FolderPath& path,
                const std::vector<ustring>& origins) {
  const auto mainEntries = path.GetMainEntries();
  boost::unordered_flat_map<const IPathEntry*, std::size_t> places;
  for (std::size_t place = 0; place < mainEntries->size(); ++place) {
    places.emplace((*mainEntries)[place].get(), place);
  }
  for (AskedFolder& folder : asked) {
    const bool isMain = places.contains(folder.folder.get());
    const auto main = isMain ? folder.folder : path.GetMainEntryForEntry(*folder.folder);
    folder.origin = origins[places.at(main.get())];
  }
}

}  // namespace

const char* GetText(FolderOutcome outcome) noexcept {
  switch (outcome) {
    case FolderOutcome::HoldsIt:
      return "holds it";
    case FolderOutcome::MethodEntry:
      return "method entry that holds it";
    case FolderOutcome::HiddenByEarlier:
      return "hidden by an earlier folder";
    case FolderOutcome::LosesToEarlierFolder:
      return "method entry that loses to an earlier folder";
    case FolderOutcome::OtherCaseOnly:
      return "other case only";
    case FolderOutcome::Unreadable:
      return "unreadable";
    case FolderOutcome::Absent:
      break;
  }
  return "absent";
}

const char* GetText(DecidingRule rule) noexcept {
  switch (rule) {
    case DecidingRule::FirstFolder:
      return "the first folder on the path that holds it";
    case DecidingRule::MethodEntryFirst:
      return "a method entry of that name comes before every folder that holds it";
    case DecidingRule::FolderBeforeMethod:
      return "the first folder that holds it comes before the method entry";
    case DecidingRule::PrivateFolder:
      return "the private folder of the folder that asks comes first";
    case DecidingRule::PartialPathname:
      return "the first folder on the path that the name's folders match";
    case DecidingRule::NothingFound:
      break;
  }
  return "no folder holds it";
}

Explanation ExplainLookup(const FolderPath& path, const std::optional<AbsoluteIRI>& asker,
                          const SearchTarget& target, FilenameMatchingPolicy policy,
                          const std::vector<ustring>& origins) {
  const bool isPlain = !PathManagement::detail::HasSeparator(target.GetName());
  AskedFolders record;
  auto files = FindAllFiles(path, asker, target, policy, &record);
  for (AskedFolder& folder : record.asked) {
    folder.outcome = OutcomeOf(folder, files, target, isPlain);
  }
  SetOrigins(record.asked, path, origins);
  const DecidingRule rule = RuleFor(files, record.asked, isPlain);
  return {std::move(files), rule, std::move(record.asked)};
}

}  // namespace Corvane::PathManagement::host
