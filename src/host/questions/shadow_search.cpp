#include "host/questions/shadow_search.h"

#include "host/common/parallel.h"
#include "host/folder/entry_state.h"
#include "host/names/folded_name.h"
#include "host/names/shared_names.h"
#include "host/path/path_view.h"
#include "host/questions/entry_names.h"
#include "host/questions/file_comparison.h"
#include "host/questions/file_search.h"
#include "host/rules/tree_walk.h"
#include "searchpath/host/filename_comparison.h"
#include "searchpath/host/native_location.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/utilities/file_lookup.h"

#include <boost/unordered/unordered_flat_map.hpp>
#include <boost/unordered/unordered_flat_set.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <future>
#include <mutex>
#include <numeric>
#include <string>
#include <string_view>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

/// One of the files that a name could mean, to be compared with another one.
struct Contender {
  Contender(const FoundItem& found, ComparedFolders& folders)  // `found` must outlive this object
      : file(found),
        folder(folders.Get(found.GetPathEntry())),
        content(folder, BytesFromText(GetName()).value_or("")) {}

  [[nodiscard]] bool IsOnDisk() const noexcept { return folder->IsOnDisk(); }
  [[nodiscard]] ustring GetName() const {
    return file.GetPathItem()->GetName() + file.GetPathItem()->GetExtension();
  }
  [[nodiscard]] bool HasNameOf(const Contender& other) const {
    const PathItem& item = *file.GetPathItem();
    const PathItem& otherItem = *other.file.GetPathItem();
    const bool hasSameParts =
        item.GetName() == otherItem.GetName() && item.GetExtension() == otherItem.GetExtension();
    return hasSameParts ||
           GetName() == other.GetName();  // an entry may divide names in its own way
  }

  const FoundItem& file;
  std::shared_ptr<const ComparedFolder> folder;
  ComparedFile content;
};

ShadowKind KindOf(FileRelation relation) {
  // In the order of `FileRelation`.
  static constexpr std::array kKinds = {ShadowKind::SameFile, ShadowKind::Identical,
                                        ShadowKind::Different, ShadowKind::Unreadable};
  return kKinds[static_cast<std::size_t>(relation)];
}

/// What a hidden file is to the file meant, and what could not be read to judge that.
struct Judgement {
  ShadowKind kind = ShadowKind::Unreadable;
  std::optional<FileProblem> problem = {};
};

/// Judges two files that are not both on disk: a file elsewhere cannot be read here.
Judgement JudgeUnread(const Contender& winner, const Contender& hidden) {
  if (GetLocationText(winner.file) == GetLocationText(hidden.file)) return {ShadowKind::SameFile};
  const Contender& unread = winner.IsOnDisk() ? hidden : winner;
  return {ShadowKind::Unreadable,
          FileProblem{unread.file, std::make_error_code(std::errc::not_supported)}};
}

Judgement Judge(Contender& winner, Contender& hidden) {
  const bool isOtherCase =
      !winner.HasNameOf(hidden) &&
      AreSameFilename(winner.GetName(), hidden.GetName(), FilenameMatchingPolicy::IgnoreCase);
  // On a disk that ignores case, one file may be found under both spellings.
  if (isOtherCase && !AreOneFile(winner.content, hidden.content)) return {ShadowKind::OtherCase};
  if (!winner.IsOnDisk() || !hidden.IsOnDisk()) return JudgeUnread(winner, hidden);
  const ShadowKind kind = KindOf(CompareFiles(winner.content, hidden.content));
  if (kind != ShadowKind::Unreadable) return {kind};
  const Contender& unread = winner.content.GetError() ? winner : hidden;
  return {kind, FileProblem{unread.file, unread.content.GetError()}};
}

Shadow MakeShadow(ustring name, std::vector<FoundItem> files, ComparedFolders& folders) {
  Shadow shadow{std::move(name), files.front(), {}};
  shadow.hidden.reserve(files.size() - 1);
  Contender winner(files.front(), folders);
  for (auto file = files.begin() + 1; file != files.end(); ++file) {
    // In a function, since `hidden` refers to the file and has to go before the file is moved.
    Judgement judgement = [&] {
      Contender hidden(*file, folders);
      return Judge(winner, hidden);
    }();
    shadow.hidden.push_back({std::move(*file), judgement.kind, std::move(judgement.problem)});
  }
  return shadow;
}

// A method entry is a folder called "@name": a look-up of `name` searches it beside the main
// entries, which are the folders on the path itself.

/// A name that several files may share; the look-up says whether they do.
struct Candidate {
  explicit Candidate(std::string candidateName, bool onlyIfInMethodEntry = false)
      : name(std::move(candidateName)), needsMethodEntry(onlyIfInMethodEntry) {}

  std::string name;
  bool needsMethodEntry;  // counts only if a method entry holds one of its files
};

bool IsAnyInMethodEntry(const std::vector<FoundItem>& files) {
  return std::any_of(files.begin(), files.end(), [](const FoundItem& file) {
    return file.GetPathEntry()->GetPathEntryType() == PathEntryType::AtFolder;
  });
}

/// Adds the `name` of each method entry directly below the main entries: a file in the method entry
/// may share it with others.
void AddMethodNames(const PathEntries& mainEntries, const SharedNames& names,
                    std::vector<Candidate>& candidates) {
  boost::unordered_flat_set<std::string> known;  // filled once there is a method entry
  for (const auto& entry : mainEntries) {
    const auto methods = entry->GetSubfolderEntriesB();  // the "@" folders
    for (const auto& method : *methods) {
      if (known.empty()) {
        for (const Candidate& candidate : candidates) known.insert(candidate.name);
      }
      std::string name = BytesFromText(method->GetAbsoluteIRI().getName().substr(1)).value_or("");
      // By any other name, no look-up finds a file: see `ShadowLookup::extensions`.
      if (names.IsName(name) && known.insert(name).second) {
        candidates.emplace_back(std::move(name), /*onlyIfInMethodEntry=*/true);
      }
    }
  }
}

/// Every name that may hide files, in the order of the path. So files that stand side by side on
/// the disk are found and compared one after the other, which halves the kernel's work.
std::vector<Candidate> AllCandidates(const PathView& view, const ShadowLookup& lookup) {
  const auto mainEntries = view.GetPath()->GetMainEntries();
  const auto files = NamesOf(*mainEntries);
  SharedNames names(lookup.extensions, lookup.policy);
  std::future<void> index;  // for looking up the candidates, as soon as there is one
  for (const EntryNames& here : files) {
    names.AddFolder(here.Get());
    if (names.HasShared() && !index.valid()) {
      index = std::async([&] { view.GetFolderPath().MakeIndex(lookup.policy); });
    }
  }
  std::vector<Candidate> candidates;
  for (std::string& name : names.GetShared()) candidates.emplace_back(std::move(name));
  AddMethodNames(*mainEntries, names, candidates);
  if (index.valid()) index.get();
  return candidates;
}

/// The bytes of names. A text that stands for no bytes becomes the empty name, which no file has.
std::vector<std::string> BytesOf(const std::vector<ustring>& names) {
  std::vector<std::string> all;
  all.reserve(names.size());
  for (const ustring& name : names) all.push_back(BytesFromText(name).value_or(""));
  return all;
}

std::vector<Candidate> CandidatesFor(const std::vector<ustring>& names) {
  const auto asked = BytesOf(names);
  return {asked.begin(), asked.end()};
}

/// Whether `name` ends with one of the extensions, which begin with their dots. When there are
/// none, any name will do.
bool HasExtension(const std::string& name, const std::vector<ustring>& extensions) {
  return extensions.empty() ||
         std::any_of(extensions.begin(), extensions.end(), [&](const ustring& extension) {
           return name.ends_with(BytesFromText(extension).value_or("/"));  // which ends no name
         });
}

/// Names that are compared as the policy says.
class NameSet {
 public:
  NameSet(const std::vector<std::string>& names, FilenameMatchingPolicy matchingPolicy)
      : policy(matchingPolicy) {
    for (const std::string& name : names) keys.insert(KeyOf(name));
  }

  [[nodiscard]] bool Contains(std::string_view name) const { return keys.contains(KeyOf(name)); }

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
  bool isUnknown = false;  // no file has the name
  bool isAllowed = false;  // the name hides files, but is one of `ShadowLookup::allowed`
};

/// The files that a name could mean; see `Environment::FindAll`.
using FindFiles = std::function<std::vector<FoundItem>(const ustring& name)>;

Answer AnswerFor(const FindFiles& find, const NameSet& allowed, const Candidate& candidate,
                 ComparedFolders& folders) {
  ustring name = TextFromBytes(candidate.name);
  auto files = find(name);
  if (files.empty()) return {.isUnknown = true};
  if (files.size() == 1 || (candidate.needsMethodEntry && !IsAnyInMethodEntry(files))) return {};
  if (allowed.Contains(candidate.name)) return {.isAllowed = true};
  return {.shadow = MakeShadow(std::move(name), std::move(files), folders)};
}

/// The indices of the candidates, in the order of the bytes of their names.
std::vector<std::size_t> SortedByName(const std::vector<Candidate>& candidates) {
  std::vector<std::size_t> order(candidates.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
    return candidates[left].name < candidates[right].name;
  });
  return order;
}

/// Looks up all candidates. Meanwhile, sets `order` to the indices of the candidates as
/// `SortedByName` returns them.
std::vector<Answer> AnswersFor(const std::vector<Candidate>& candidates, const FindFiles& find,
                               const NameSet& allowed, std::vector<std::size_t>& order) {
  std::vector<Answer> answers(candidates.size());
  ComparedFolders folders;
  const auto answer = [&](std::size_t at) {
    answers[at] = AnswerFor(find, allowed, candidates[at], folders);
  };
  if (candidates.empty()) return answers;
  // The first look-up makes the index. Other threads would wait for it, as if the disk were slow.
  answer(0);
  // Neighbours share folders, which is why a thread takes several: threads that use the same
  // folders get in each other's way. Few candidates are taken singly: a slow disk answers many
  // threads at once.
  const std::size_t inATurn = std::clamp<std::size_t>(candidates.size() / 1000, 1, 250);
  ForEachInParallel((candidates.size() + inATurn - 1) / inATurn + 1, [&](std::size_t turn) {
    if (turn == 0) {
      order = SortedByName(candidates);
      return;
    }
    const std::size_t end = std::min(turn * inATurn, candidates.size());
    for (std::size_t at = (turn - 1) * inATurn; at < end; ++at) {
      if (at > 0) answer(at);
    }
  });
  return answers;
}

ShadowReport Collect(const std::vector<Candidate>& candidates, const FindFiles& find,
                     const ShadowLookup& lookup) {
  const auto asked = BytesOf(lookup.names);  // none: about every name on the path
  const auto allowed = BytesOf(lookup.allowed);
  std::vector<std::size_t> order;
  auto answers = AnswersFor(candidates, find, NameSet(allowed, lookup.policy), order);
  // Names that were given are reported in their own order.
  if (!asked.empty()) std::iota(order.begin(), order.end(), std::size_t{0});
  ShadowReport report;
  report.shadows.reserve(static_cast<std::size_t>(std::ranges::count_if(
      answers, [](const Answer& answer) { return answer.shadow.has_value(); })));
  std::vector<std::string> hiding;  // of the allowed names, those that hide files
  for (const std::size_t at : order) {
    auto& [shadow, isUnknown, isAllowed] = answers[at];
    if (shadow) report.shadows.push_back(std::move(*shadow));
    // When names were given, they are the candidates.
    if (isUnknown && !asked.empty()) report.unknown.push_back(lookup.names[at]);
    if (isAllowed) hiding.push_back(candidates[at].name);
  }
  const NameSet askedNames(asked, lookup.policy);
  const NameSet hidingNames(hiding, lookup.policy);
  for (std::size_t at = 0; at < allowed.size(); ++at) {
    const bool isAsked = asked.empty() || askedNames.Contains(allowed[at]);
    if (isAsked && !hidingNames.Contains(allowed[at])) {
      report.idleAllowances.push_back(lookup.allowed[at]);
    }
  }
  return report;
}

/// The relative names that files below several roots share, in no order.
std::vector<Candidate> SharedRelativeNames(const RuledPath& path, const ShadowLookup& lookup) {
  std::vector<Candidate> candidates;
  std::mutex mutex;  // guards candidates: the walk visits from several threads
  WalkMerged(path, /*sharedOnly=*/true, [&](const MergedFolder& folder) {
    SharedNames names(/*extensionList=*/{}, FilenameMatchingPolicy::CaseSensitive);
    for (const TreeFolder& part : folder.folders) names.AddFolder(StateOf(*part.entry).Files());
    const auto shared = names.GetShared();
    const std::lock_guard lock(mutex);
    for (const std::string& name : shared) {
      // folder.name is "" or ends with "/".
      if (HasExtension(name, lookup.extensions)) candidates.emplace_back(folder.name + name);
    }
  });
  return candidates;
}

}  // namespace

ShadowReport CollectShadows(const PathView& view, const ShadowLookup& lookup) {
  const auto find = [&](const ustring& name) {
    const auto target = CreateSearchTargetWithExtensionInFilenamePreferred(name, lookup.extensions);
    return FindAllFiles(view, /*asker=*/std::nullopt, target, lookup.policy, /*observer=*/nullptr);
  };
  return Collect(lookup.names.empty() ? AllCandidates(view, lookup) : CandidatesFor(lookup.names),
                 find, lookup);
}

ShadowReport CollectShadowsByRules(const RuledPath& path, const ShadowLookup& lookup) {
  const auto find = [&](const ustring& name) { return path.FindAll(RuledPath::Target(name), {}); };
  ShadowLookup asked = lookup;
  asked.policy = FilenameMatchingPolicy::CaseSensitive;  // names are looked up as they are
  if (!lookup.names.empty()) return Collect(CandidatesFor(lookup.names), find, asked);
  // What is not looked up is no idle allowance.
  std::erase_if(asked.allowed, [&](const ustring& name) {
    return !HasExtension(BytesFromText(name).value_or(""), lookup.extensions);
  });
  return Collect(SharedRelativeNames(path, lookup), find, asked);
}

ShadowSummary GetSummary(const std::vector<Shadow>& shadows) {
  ShadowSummary summary;
  // By the folders of the winner and of the hidden file: their index in summary.folders.
  boost::unordered_flat_map<std::pair<const IPathEntry*, const IPathEntry*>, std::size_t> indices;
  for (const Shadow& shadow : shadows) {
    const auto winner = shadow.winner.GetPathEntry();
    for (const HiddenFile& hidden : shadow.hidden) {
      const auto folder = hidden.file.GetPathEntry();
      const auto [index, isNew] =
          indices.emplace(std::make_pair(winner.get(), folder.get()), summary.folders.size());
      if (isNew) summary.folders.push_back({winner, folder, {}});
      summary.folders[index->second].counts.Count(hidden.kind);
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
  // In the order of the enumerators.
  static constexpr std::array kTexts = {"different", "identical", "other case", "same file",
                                        "unreadable"};
  return kTexts[static_cast<std::size_t>(kind)];
}

}  // namespace Corvane::PathManagement::host
