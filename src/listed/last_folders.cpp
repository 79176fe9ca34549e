#include "listed/last_folders.h"

namespace Corvane::PathManagement::detail {

void LastFolders::Add(const ustring& name) {
  rows[name].push_back({.number = count, .isExact = true});
  if (name.starts_with(u'+') || name.starts_with(u'@')) {
    rows[name.substr(1)].push_back({.number = count, .isExact = false});
  }
  ++count;
}

const std::vector<LastFolders::Row>& LastFolders::RowsOf(const ustring& name) const {
  const auto found = rows.find(name);
  return found == rows.end() ? none : found->second;
}

}  // namespace Corvane::PathManagement::detail
