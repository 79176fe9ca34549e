#include "searchpath/host/words.h"

#include "host/folder/entry_state.h"

#include <array>
#include <cstddef>
#include <optional>

namespace Corvane::PathManagement::host {

namespace {

// `words` holds one word for each value, in the order of the enumeration.
template <class Enumeration, std::size_t Count>
const char* Choose(Enumeration value, const std::array<const char*, Count>& words) {
  return words.at(static_cast<std::size_t>(value));
}

}  // namespace

const char* GetWord(PathEntryType kind) {
  // No kind has the number 4.
  return Choose(kind, std::array{"ordinary", "+", "@", "private", "unused", "resources"});
}

const char* GetWord(FolderOutcome outcome) {
  return Choose(
      outcome, std::array{"holds-it", "method-entry", "hidden-by-earlier",
                          "loses-to-earlier-folder", "other-case-only", "absent", "unreadable",
                          "dropped-as-repeat", "filtered-out", "below-unsearched", "not-executable",
                          "is-folder", "broken-link", "other-type", "not-readable"});
}

const char* GetWord(DecidingRule rule) {
  return Choose(rule,
                std::array{"nothing-found", "first-folder", "method-entry-first",
                           "folder-before-method", "private-folder", "partial-pathname",
                           "askers-folder", "that-file", "search-ended", "none-may-be-executed"});
}

const char* GetWord(FolderChange change) {
  return Choose(change, std::array{"removed", "added", "moved", "refreshed"});
}

const char* GetWord(FolderSource source) {
  return Choose(source, std::array{"command-line", "stored-path", "cache", "package"});
}

const char* GetWord(ShadowKind kind) {
  return Choose(kind,
                std::array{"different", "identical", "other-case", "same-file", "unreadable"});
}

const char* GetWord(FindingKind kind) {
  return Choose(kind, std::array{"missing", "unreadable", "empty", "repeat", "special", "slow",
                                 "case-collision", "not-utf-8", "unexpanded-home", "empty-part",
                                 "relative-part", "not-executable", "broken-link"});
}

const char* GetWord(TrustKind kind) {
  return Choose(kind, std::array{"writable", "owner", "parent-writable", "file-writable",
                                 "creatable", "relative", "empty-part"});
}

const char* GetWord(Freshness freshness) {
  return Choose(freshness, std::array{"fresh", "stale", "gone", "unsure"});
}

const char* FindProblemText(const IPathEntry& folder) {
  const auto* const onDisk = dynamic_cast<const FolderEntry*>(&folder);
  const auto problem = onDisk == nullptr ? std::nullopt : FindOwnProblem(*onDisk);
  return problem ? problem->GetText() : nullptr;
}

const char* FindProblemText(const AskedFolder& asked) {
  using enum FolderOutcome;
  const bool gaveNoAnswer = asked.outcome == Unreadable || asked.outcome == DroppedAsRepeat ||
                            asked.outcome == FilteredOut;
  return gaveNoAnswer ? FindProblemText(*asked.folder) : nullptr;
}

}  // namespace Corvane::PathManagement::host
