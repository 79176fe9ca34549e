#include "host/rules/search_roots.h"

#include "host/folder/entry_state.h"
#include "platform/native_path.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/platform/iri_text.h"

#include <sys/stat.h>

#include <utility>

namespace Corvane::PathManagement::host {

SearchRoots::SearchRoots(FolderEntries rootFolders,
                         std::shared_ptr<const ListingSource> listingSource)
    : folders(std::move(rootFolders)), source(std::move(listingSource)) {
  paths.reserve(folders.size());
  for (const auto& folder : folders) {
    const auto bytes = fl::filesystem::detail::NativeBytes(StateOf(*folder).Location());
    // A location that is not on disk becomes /dev/null, below which nothing is found.
    std::string& path = paths.emplace_back(bytes.value_or("/dev/null"));
    if (!path.ends_with('/')) path.push_back('/');
  }
}

SearchRoots SearchRoots::OfFileSystem(DiskPatience::Limit limit) {
  const auto root = foundation::storage::vfs::toAbsoluteIRI(u"file", u"/");
  SearchRoots roots({CreateMainFolder(root, /*source=*/nullptr, limit)},
                    /*listingSource=*/nullptr);
  roots.areOnManyDisks = true;
  return roots;
}

std::string SearchRoots::PathOf(std::size_t root, std::string_view relative) const {
  std::string path;
  path.reserve(paths[root].size() + relative.size());
  return path.append(paths[root]).append(relative);
}

SearchRoots SearchRoots::WithEntriesAnew() const {
  FolderEntries anew;
  anew.reserve(folders.size());
  for (const auto& folder : folders) {
    const FolderState& state = StateOf(*folder);
    anew.push_back(
        state.IsGivenUp() ? folder : CreateMainFolder(state.Location(), source, state.GetLimit()));
  }
  SearchRoots roots(std::move(anew), source);
  roots.areOnManyDisks = areOnManyDisks;
  return roots;
}

bool SearchRoots::IsFolder(std::size_t root) const {
  const auto ask = [path = paths[root]] {
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
  };
  return StateOf(*folders[root]).AskDisk(ask).value_or(false);
}

std::shared_ptr<const FolderEntry> SearchRoots::CreateFolder(std::size_t root,
                                                             std::string_view relative) const {
  if (relative.empty()) return folders[root];
  const auto location =
      foundation::storage::vfs::toAbsoluteIRI(u"file", TextFromBytes(PathOf(root, relative)));
  return CreateMainFolder(location, source, StateOf(*folders[root]).GetLimit());
}

}  // namespace Corvane::PathManagement::host
