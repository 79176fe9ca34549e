#include "words.h"

#include <array>
#include <cstddef>

namespace Corvane::PathManagement::tool {

namespace {

// `words` holds one word for each value, in the order of the enumeration.
template <class Enumeration, std::size_t Count>
const char* Choose(Enumeration value, const std::array<const char*, Count>& words) {
  return words.at(static_cast<std::size_t>(value));
}

}  // namespace

const char* GetWord(PathEntryType kind) {
  return Choose(kind, std::array{"ordinary", "+", "@", "private", "unused", "resources"});
}

const char* GetWord(host::FolderOutcome outcome) {
  return Choose(
      outcome, std::array{"holds-it", "method-entry", "hidden-by-earlier",
                          "loses-to-earlier-folder", "other-case-only", "absent", "unreadable",
                          "dropped-as-repeat", "filtered-out", "below-unsearched", "not-executable",
                          "is-folder", "broken-link", "other-type", "not-readable"});
}

const char* GetWord(host::DecidingRule rule) {
  return Choose(rule,
                std::array{"nothing-found", "first-folder", "method-entry-first",
                           "folder-before-method", "private-folder", "partial-pathname",
                           "askers-folder", "that-file", "search-ended", "none-may-be-executed"});
}

const char* GetWord(host::FolderChange change) {
  return Choose(change, std::array{"removed", "added", "moved", "refreshed"});
}

const char* GetWord(host::FolderSource source) {
  return Choose(source, std::array{"command-line", "stored-path", "cache", "package"});
}

const char* GetWord(host::ShadowKind kind) {
  return Choose(kind,
                std::array{"different", "identical", "other-case", "same-file", "unreadable"});
}

const char* GetWord(host::FindingKind kind) {
  return Choose(kind, std::array{"missing", "unreadable", "empty", "repeat", "special", "slow",
                                 "case-collision", "not-utf-8", "unexpanded-home", "empty-part",
                                 "relative-part", "not-executable", "broken-link"});
}

const char* GetWord(host::TrustKind kind) {
  return Choose(kind, std::array{"writable", "owner", "parent-writable", "file-writable",
                                 "creatable", "relative", "empty-part"});
}

const char* GetWord(host::Freshness freshness) {
  return Choose(freshness, std::array{"fresh", "stale", "gone", "unsure"});
}

}  // namespace Corvane::PathManagement::tool
