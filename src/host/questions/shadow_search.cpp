#include "host/questions/shadow_search.h"

#include "host/common/parallel.h"
#include "host/folder/entry_state.h"
#include "host/names/folded_name.h"
#include "host/names/shared_names.h"
#include "host/path/path_view.h"
#include "host/questions/file_comparison.h"
#include "searchpath/host/filename_comparison.h"
#include "searchpath/host/native_location.h"
#include "searchpath/model/byte_text.h"

#include <boost/unordered/unordered_flat_set.hpp>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using FindAll = std::function<std::vector<FoundItem>(const ustring&)>;

/// A file of an answer, to be compared.
struct Contender {
  explicit Contender(const FoundItem& found)
      : file(found),
        name(found.GetPathItem()->GetName() + found.GetPathItem()->GetExtension()),
        content(BytesFromText(GetNativePath(found)).value()) {}

  const FoundItem& file;
  ustring name;
  ComparedFile content;
};

ShadowKind KindOf(Sameness sameness) {
  switch (sameness) {
    case Sameness::SameFile:
      return ShadowKind::SameFile;
    case Sameness::SameBytes:
      return ShadowKind::Identical;
    case Sameness::OtherBytes:
      return ShadowKind::Different;
    case Sameness::Unknown:
      break;
  }
  return ShadowKind::Unreadable;
}

HiddenFile Judge(Contender& winner, Contender& hidden) {
  const bool isOtherCase =
      winner.name != hidden.name &&
      AreSameFilename(winner.name, hidden.name, FilenameMatchingPolicy::IgnoreCase);
  if (isOtherCase && !AreOneFile(winner.content, hidden.content)) {
    return {hidden.file, ShadowKind::OtherCase};
  }
  const ShadowKind kind = KindOf(CompareFiles(winner.content, hidden.content));
  if (kind != ShadowKind::Unreadable) return {hidden.file, kind};
  const Contender& unread = winner.content.GetError() ? winner : hidden;
  return {hidden.file, kind, FileProblem{unread.file, unread.content.GetError()}};
}

Shadow MakeShadow(const ustring& name, const std::vector<FoundItem>& files) {
  Shadow shadow{name, files.front(), {}};
  Contender winner(files.front());
  for (auto file = files.begin() + 1; file != files.end(); ++file) {
    Contender hidden(*file);
    shadow.hidden.push_back(Judge(winner, hidden));
  }
  return shadow;
}

/// A name that several files may have; the look-up says whether they do.
struct Candidate {
  std::string name;
  bool isOfMethods = false;  // counts only if a method entry is among the folders of its files
};

bool HasMethodEntry(const std::vector<FoundItem>& files) {
  return std::any_of(files.begin(), files.end(), [](const FoundItem& file) {
    return file.GetPathEntry()->GetPathEntryType() == PathEntryType::AtFolder;
  });
}

/// Adds the names of method entries directly below the main folders: files there may share them.
void AddMethodNames(const std::vector<std::shared_ptr<const FolderEntry>>& folders,
                    const SharedNames& names, std::vector<Candidate>& candidates) {
  boost::unordered_flat_set<std::string> known;
  for (const Candidate& candidate : candidates) known.insert(candidate.name);
  for (const auto& folder : folders) {
    for (const auto& below : folder->GetSpecialFolders()) {
      if (below->GetPathEntryType() != PathEntryType::AtFolder) continue;
      std::string name = BytesFromText(below->GetAbsoluteIRI().getName().substr(1)).value();
      if (names.IsName(name) && known.insert(name).second) {
        candidates.push_back({std::move(name), true});
      }
    }
  }
}

/// Every name that may hide files, in the order of the bytes.
std::vector<Candidate> AllCandidates(const PathView& view, const ShadowLookup& lookup) {
  const auto folders = view.GetMainFolders();
  AnyInParallel(folders.size(), [&](std::size_t folder) {
    StateOf(*folders[folder]).List();
    return false;
  });
  SharedNames names(lookup.extensions, lookup.policy);
  for (const auto& folder : folders) names.AddFolder(StateOf(*folder).Files());
  std::vector<Candidate> candidates;
  for (std::string& name : names.GetShared()) candidates.push_back({std::move(name)});
  AddMethodNames(folders, names, candidates);
  std::sort(candidates.begin(), candidates.end(),
            [](const auto& left, const auto& right) { return left.name < right.name; });
  return candidates;
}

std::vector<Candidate> AskedCandidates(const std::vector<ustring>& names) {
  std::vector<Candidate> candidates;
  candidates.reserve(names.size());
  for (const ustring& name : names) {
    // What is no text of bytes is no file's name either.
    candidates.push_back({BytesFromText(name).value_or("")});
  }
  return candidates;
}

/// Names that are compared as the policy says.
class NameSet {
 public:
  NameSet(const std::vector<ustring>& names, FilenameMatchingPolicy matchingPolicy)
      : policy(matchingPolicy) {
    for (const ustring& name : names) keys.insert(KeyOf(BytesFromText(name).value_or("")));
  }

  [[nodiscard]] bool Contains(const std::string& name) const { return keys.contains(KeyOf(name)); }

 private:
  [[nodiscard]] std::string KeyOf(std::string_view name) const {
    std::string buffer;
    return std::string(policy == FilenameMatchingPolicy::IgnoreCase ? FoldName(name, buffer)
                                                                    : name);
  }

  FilenameMatchingPolicy policy;
  boost::unordered_flat_set<std::string> keys;
};

/// What came of one candidate.
struct Answer {
  std::optional<Shadow> shadow = {};
  bool isUnknown = false;
  bool isAllowed = false;  // to hide files, as it does
};

Answer AnswerFor(const Candidate& candidate, const NameSet& allowed, const FindAll& findAll) {
  const ustring name = TextFromBytes(candidate.name);
  const auto files = findAll(name);
  if (files.empty()) return {.isUnknown = true};
  if (files.size() == 1 || (candidate.isOfMethods && !HasMethodEntry(files))) return {};
  if (allowed.Contains(candidate.name)) return {.isAllowed = true};
  return {.shadow = MakeShadow(name, files)};
}

}  // namespace

ShadowReport CollectShadows(const PathView& view, const ShadowLookup& lookup,
                            const FindAll& findAll) {
  const auto candidates =
      lookup.names.empty() ? AllCandidates(view, lookup) : AskedCandidates(lookup.names);
  const NameSet allowed(lookup.allowed, lookup.policy);
  std::vector<Answer> answers(candidates.size());
  AnyInParallel(candidates.size(), [&](std::size_t at) {
    answers[at] = AnswerFor(candidates[at], allowed, findAll);
    return false;
  });
  ShadowReport report;
  std::vector<ustring> hiding;  // of the allowed names, those that hide files
  for (std::size_t at = 0; at < answers.size(); ++at) {
    auto& [shadow, isUnknown, isAllowed] = answers[at];
    if (shadow) report.shadows.push_back(std::move(*shadow));
    if (isUnknown && !lookup.names.empty()) report.unknown.push_back(lookup.names[at]);
    if (isAllowed) hiding.push_back(TextFromBytes(candidates[at].name));
  }
  const NameSet asked(lookup.names, lookup.policy);
  const NameSet used(hiding, lookup.policy);
  for (const ustring& name : lookup.allowed) {
    const std::string bytes = BytesFromText(name).value_or("");
    const bool isAsked = lookup.names.empty() || asked.Contains(bytes);
    if (isAsked && !used.Contains(bytes)) report.idleAllowances.push_back(name);
  }
  return report;
}

ShadowSummary GetSummary(const std::vector<Shadow>& shadows) {
  ShadowSummary summary;
  boost::unordered_flat_map<std::pair<const IPathEntry*, const IPathEntry*>, std::size_t> places;
  for (const Shadow& shadow : shadows) {
    const auto winner = shadow.winner.GetPathEntry();
    for (const HiddenFile& hidden : shadow.hidden) {
      const auto folder = hidden.file.GetPathEntry();
      const auto place =
          places.emplace(std::make_pair(winner.get(), folder.get()), summary.folders.size());
      if (place.second) summary.folders.push_back({winner, folder, {}});
      summary.folders[place.first->second].counts.Count(hidden.kind);
      summary.counts.Count(hidden.kind);
    }
  }
  std::stable_sort(summary.folders.begin(), summary.folders.end(),
                   [](const FolderShadows& left, const FolderShadows& right) {
                     return left.counts.GetTotal() > right.counts.GetTotal();
                   });
  return summary;
}

const char* GetText(ShadowKind kind) noexcept {
  switch (kind) {
    case ShadowKind::Different:
      return "different";
    case ShadowKind::Identical:
      return "identical";
    case ShadowKind::OtherCase:
      return "other case";
    case ShadowKind::SameFile:
      return "same file";
    case ShadowKind::Unreadable:
      break;
  }
  return "unreadable";
}

}  // namespace Corvane::PathManagement::host
