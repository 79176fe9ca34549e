#include "host/receipts/surroundings.h"

#include "host/names/short_hash.h"
#include "searchpath/model/storage_exceptions.h"

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace Corvane::PathManagement::host {

std::uint64_t RightsOfProcess() {
  std::vector<gid_t> groups(static_cast<std::size_t>(std::max(getgroups(0, nullptr), 0)));
  const int count = getgroups(static_cast<int>(groups.size()), groups.data());
  groups.resize(static_cast<std::size_t>(std::max(count, 0)));
  std::sort(groups.begin(), groups.end());
  groups.push_back(getegid());
  groups.push_back(geteuid());
  return ShortHash(groups.data(), groups.size() * sizeof(gid_t));
}

std::string WithoutLinks(LinkResolver& links, const std::string& path) {
  try {
    return links.Resolve(path).bytes;
  } catch (const foundation::storage::vfs::Exception&) {
    return path;  // a loop of links: whatever the path is called, nothing is found there
  }
}

}  // namespace Corvane::PathManagement::host
