#include "host/questions/path_examination.h"

#include "host/common/held_hash.h"
#include "host/common/parallel.h"
#include "host/folder/entry_state.h"
#include "host/names/shared_names.h"
#include "host/path/path_view.h"
#include "host/questions/entry_names.h"
#include "listed/entry_walk.h"
#include "searchpath/host/native_location.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/model/search_scope.h"
#include "searchpath/utilities/iri_conversion.h"

#include <boost/unordered/unordered_flat_map.hpp>
#include <boost/unordered/unordered_flat_set.hpp>
#include <unicode/utf16.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using current_working_folder::AbsolutizeError;
using Entry = std::shared_ptr<const IPathEntry>;
using PathManagement::detail::WalkEntries;

ustring PathOf(const IPathEntry& folder) { return GetStringFromIRI(folder.GetAbsoluteIRI()); }

/// Looks at every folder of a path, except hidden ones: at main folders, which are on the path
/// itself, and at the special ones below them ("+", "@", private, resources).
class Examiner {
 public:
  Examiner(const PathView& pathView, const Examination& examination)
      : view(pathView), slow(examination.slow) {}

  std::vector<PathFinding> Run() {
    for (const FolderProblem& problem : view.GetUnlocated()) {
      AddProblem(problem, problem.folder);
    }
    ListAll();
    FindSpecialFolders();
    for (const auto& given : view.GetGivenFolders()) ExamineGiven(given);
    FindCollisions();
    return std::move(findings);
  }

 private:
  [[nodiscard]] bool IsHidden(const IPathEntry& folder) const {
    return view.FindHider(folder) != nullptr;
  }

  void ListAll() const {
    const auto folders = view.GetWholePath().GetMainEntries();
    ForEachInParallel(folders->size(), [&](std::size_t at) {
      const auto visit = [](const Entry& folder, std::size_t /*depth*/) {
        static_cast<void>(EntryNames(folder));  // lists it
        return false;
      };
      if (!IsHidden(*(*folders)[at])) WalkEntries((*folders)[at], visit);
    });
  }

  void FindSpecialFolders() {
    const auto folders = view.GetWholePath().GetMainEntries();
    for (const auto& top : *folders) {
      if (IsHidden(*top)) continue;
      WalkEntries(top, [&](const auto& folder, std::size_t depth) {
        if (depth > 0) specialFolders.emplace(folder->GetCanonicalAbsoluteIRI(), top);
        return false;
      });
    }
  }

  void ExamineGiven(const GivenFolders::Given& given) {
    const Entry& top = given.entries.front();
    const auto earlier = mainFolders.find(top->GetCanonicalAbsoluteIRI());
    if (!IsHidden(*top) && earlier != mainFolders.end()) {
      Add(FindingKind::Repeat, *top, given.origin.folder).other = PathOf(*earlier->second);
      return;
    }
    const std::size_t before = findings.size();
    bool isShown = false;
    std::size_t files = 0;
    for (const Entry& folder : given.entries) {
      if (IsHidden(*folder)) continue;
      isShown = true;
      files += CountFiles(folder);
      if (!mainFolders.emplace(folder->GetCanonicalAbsoluteIRI(), folder).second) continue;
      ExamineMainFolder(folder, given.origin.folder);
    }
    const bool hasProblem =
        std::any_of(findings.begin() + static_cast<std::ptrdiff_t>(before), findings.end(),
                    [](const PathFinding& finding) { return finding.reason.has_value(); });
    if (isShown && files == 0 && !hasProblem) Add(FindingKind::Empty, *top, given.origin.folder);
  }

  static std::size_t CountFiles(const Entry& top) {
    std::size_t count = 0;
    WalkEntries(top, [&](const auto& folder, std::size_t /*depth*/) {
      count += EntryNames(folder).Get().size();
      return false;
    });
    return count;
  }

  void ExamineMainFolder(const Entry& top, const ustring& origin) {
    const auto special = specialFolders.find(top->GetCanonicalAbsoluteIRI());
    if (special != specialFolders.end()) {
      Add(FindingKind::Special, *top, origin).other = PathOf(*special->second);
    }
    WalkEntries(top, [&](const auto& folder, std::size_t /*depth*/) {
      const bool isFirst = examined.insert(folder->GetCanonicalAbsoluteIRI()).second;
      if (isFirst && !IsHidden(*folder)) ExamineFolder(folder, origin);
      return false;
    });
  }

  /// Adds findings that only a folder on disk can have.
  void ExamineListing(const FolderEntry& folder, const ustring& origin) {
    for (const FolderProblem& problem : folder.GetProblems()) AddProblem(problem, origin);
    const auto time = StateOf(folder).ListingTime();
    if (time < slow) return;
    Add(FindingKind::Slow, folder, origin).listingTime =
        std::chrono::duration_cast<std::chrono::milliseconds>(time);
  }

  void ExamineFolder(const Entry& folder, const ustring& origin) {
    const auto* const onDisk = dynamic_cast<const FolderEntry*>(folder.get());
    if (onDisk != nullptr) ExamineListing(*onDisk, origin);
    const EntryNames files(folder);
    const NameBlock& names = files.Get();
    std::vector<std::string_view> notUtf8;
    for (std::size_t file = 0; file < names.size(); ++file) {
      if (!IsUtf8(names[file])) notUtf8.push_back(names[file]);
    }
    if (notUtf8.empty()) return;
    std::sort(notUtf8.begin(), notUtf8.end());
    PathFinding& finding = Add(FindingKind::NotUtf8, *folder, origin);
    for (const std::string_view name : notUtf8) {
      finding.files.push_back(finding.folder + u'/' + TextFromBytes(name));
    }
  }

  void FindCollisions() {
    SharedNames names(/*extensionList=*/{}, FilenameMatchingPolicy::IgnoreCase);
    const auto files = NamesOf(*view.GetPath()->GetMainEntries());
    for (const EntryNames& here : files) names.AddFolder(here.Get());
    std::vector<std::string> respelled = names.GetRespelled();
    std::sort(respelled.begin(), respelled.end());
    for (const std::string& name : respelled) AddCollision(TextFromBytes(name));
  }

  void AddCollision(const ustring& name) {
    const auto files = view.GetPath()->FindAllInScope(
        kMainScope, PathManagement::detail::SearchTarget(name), FilenameMatchingPolicy::IgnoreCase);
    if (files.empty()) return;  // another program's `IPath` may not find what its entries hold
    const auto first = files.front().GetPathEntry();
    PathFinding& finding = Add(FindingKind::CaseCollision, *first, view.GetOrigin(*first).folder);
    boost::unordered_flat_set<ustring> spellings;
    for (const FoundItem& file : files) {
      const auto item = file.GetPathItem();
      if (spellings.insert(item->GetName() + item->GetExtension()).second) {
        finding.files.push_back(GetLocationText(file));
      }
    }
  }

  PathFinding& Add(FindingKind kind, const IPathEntry& folder, const ustring& origin) {
    return findings.emplace_back(
        PathFinding{.kind = kind, .folder = PathOf(folder), .origin = origin});
  }

  void AddProblem(const FolderProblem& problem, const ustring& origin) {
    findings.push_back({.kind = KindOf(problem.reason),
                        .folder = problem.folder,
                        .origin = origin,
                        .reason = problem.reason});
  }

  const PathView& view;
  std::chrono::nanoseconds slow;  // listings that take this long are reported
  std::vector<PathFinding> findings;
  // By canonical location:
  boost::unordered_flat_map<AbsoluteIRI, Entry, HeldHash> specialFolders;  // their main entries
  boost::unordered_flat_map<AbsoluteIRI, Entry, HeldHash> mainFolders;     // those met so far
  boost::unordered_flat_set<AbsoluteIRI, HeldHash> examined;               // main and special ones
};

}  // namespace

FindingKind KindOf(AbsolutizeError reason) {
  const bool isMissing = reason == AbsolutizeError::Absent ||
                         reason == AbsolutizeError::BrokenLink ||
                         reason == AbsolutizeError::NotAFolder;
  return isMissing ? FindingKind::Missing : FindingKind::Unreadable;
}

bool IsUtf8(std::string_view name) {
  if (std::all_of(name.begin(), name.end(),
                  [](char byte) { return static_cast<unsigned char>(byte) < 0x80; })) {
    return true;
  }
  // In the text, a byte that is not UTF-8 is the second half of a surrogate pair without the first.
  char16_t before = 0;
  for (const char16_t unit : TextFromBytes(name)) {
    if (U16_IS_TRAIL(unit) && !U16_IS_LEAD(before)) return false;
    before = unit;
  }
  return true;
}

std::vector<PathFinding> ExaminePath(const PathView& view, const Examination& examination) {
  return Examiner(view, examination).Run();
}

const char* GetText(FindingKind kind) noexcept {
  // In the order of the enumerators.
  static constexpr std::array kTexts = {"missing",
                                        "cannot be searched",
                                        "contains no file",
                                        "the same folder as an earlier one",
                                        "belongs to another folder of the path",
                                        "takes long to list",
                                        "names that are equal where case is ignored",
                                        "names that are not UTF-8",
                                        "no such folder: nobody expands \"~\" here",
                                        "an empty part: the working folder",
                                        "depends on the working folder",
                                        "look like programs and may not be executed",
                                        "links that lead nowhere"};
  return kTexts[static_cast<std::size_t>(kind)];
}

const char* GetAdvice(FindingKind kind) noexcept {
  // In the order of the enumerators.
  static constexpr std::array kTexts = {
      "create the folder, or take it off the path",
      "correct this, or take the folder off the path",
      "take it off the path, or search the folders below it",
      "take it off the path: it is never searched",
      "take it off the path: it is searched as part of the other folder",
      "put it last on the path, or keep a copy on a faster disk",
      "rename all but one",
      "rename them: many programs accept only UTF-8",
      "write the folder in full",
      "write . if that is meant, or take it out",
      "write the folder in full",
      "make them executable, or move them away",
      "correct or remove them"};
  return kTexts[static_cast<std::size_t>(kind)];
}

}  // namespace Corvane::PathManagement::host
