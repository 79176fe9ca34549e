#include "host/path/last_folders.h"

namespace Corvane::PathManagement::host {

LastFolders::LastFolders(const PathTable& table) {
  std::uint32_t row = 0;
  for (const auto& [entry, parent, main] : table.Rows()) {
    const ustring name = entry->GetCanonicalAbsoluteIRI().getName();
    rows[name].push_back(row);
    if (name.starts_with(u'+') || name.starts_with(u'@')) rows[name.substr(1)].push_back(row);
    ++row;
  }
}

const std::vector<std::uint32_t>& LastFolders::RowsOf(const ustring& name) const {
  const auto found = rows.find(name);
  return found == rows.end() ? none : found->second;
}

}  // namespace Corvane::PathManagement::host
