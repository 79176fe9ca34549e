#include "listed/last_folders.h"

namespace Corvane::PathManagement::detail {

void LastFolders::Add(const ustring& name) {
  candidates[name].push_back({.row = rowCount, .isExact = true});
  if (name.starts_with(u'+') || name.starts_with(u'@')) {
    candidates[name.substr(1)].push_back({.row = rowCount, .isExact = false});
  }
  ++rowCount;
}

/// Files the row that was added last under another name, too.
void LastFolders::AddNameOfLast(const ustring& name) {
  const std::uint32_t last = rowCount - 1;
  std::vector<Candidate>& named = candidates[name];
  if (named.empty() || named.back().row != last) named.push_back({.row = last, .isExact = false});
}

const std::vector<LastFolders::Candidate>& LastFolders::CandidatesFor(const ustring& name) const {
  const auto found = candidates.find(name);
  return found == candidates.end() ? none : found->second;
}

}  // namespace Corvane::PathManagement::detail
