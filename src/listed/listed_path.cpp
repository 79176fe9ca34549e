#include "searchpath/utilities/listed_path.h"

#include "listed/entry_walk.h"
#include "model/short_hash.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/model/search_scope.h"
#include "searchpath/utilities/filename_comparison.h"
#include "searchpath/utilities/once_flag.h"
#include "searchpath/utilities/path_base.h"
#include "searchpath/utilities/path_entry_base.h"
#include "searchpath/utilities/path_strings.h"
#include "text/item_of_file.h"
#include "text/separators.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <tuple>
#include <utility>

namespace Corvane::PathManagement {

namespace {

using detail::ItemOfFile;
using detail::SearchTarget;

/// `items` in the order of the bytes of their names, as folders on disk are listed.
template <class Item, class NameOf>
std::vector<Item> SortedByBytes(std::vector<Item> items, NameOf nameOf) {
  using Bytes = decltype(BytesFromText(ustring()));
  std::vector<std::tuple<Bytes, ustring, std::size_t>> order;
  order.reserve(items.size());
  for (std::size_t at = 0; at < items.size(); ++at) {
    ustring name = nameOf(items[at]);
    Bytes bytes = BytesFromText(name);
    if (bytes) name.clear();  // only texts that have no bytes are sorted as they are
    order.emplace_back(std::move(bytes), std::move(name), at);
  }
  std::ranges::sort(order);
  std::vector<Item> sorted;
  sorted.reserve(items.size());
  for (const auto& [bytes, name, at] : order) sorted.push_back(std::move(items[at]));
  return sorted;
}

class ListedEntry : public PathEntryBase {
 public:
  ListedEntry(ListedFolder folder, PathEntryType folderKind)
      : location(std::move(folder.location)), kind(folderKind) {
    auto files = SortedByBytes(std::move(folder.files), [](const ustring& file) { return file; });
    files.erase(std::unique(files.begin(), files.end()), files.end());
    PathItems made;
    made.reserve(files.size());
    for (ustring& file : files) {
      made.push_back(std::make_shared<const PathItem>(ItemOfFile(location, std::move(file))));
    }
    items = std::make_shared<const PathItems>(std::move(made));
    auto folders = SortedByBytes(std::move(folder.folders), [](const ListedFolder& subfolder) {
      return subfolder.location.getName();
    });
    for (ListedFolder& subfolder : folders) {
      const PathEntryType kindBelow = GetPathEntryTypeFromBaseName(subfolder.location.getName());
      // An ordinary folder below another is not searched, as on disk.
      if (kindBelow == PathEntryType::Ordinary) continue;
      below.push_back(std::make_shared<const ListedEntry>(std::move(subfolder), kindBelow));
    }
  }

  [[nodiscard]] PathEntryType GetPathEntryType() const override { return kind; }
  [[nodiscard]] AbsoluteIRI GetAbsoluteIRI() const override { return location; }
  [[nodiscard]] std::shared_ptr<const PathItems> GetItems() const override { return items; }

 protected:
  [[nodiscard]] PathEntries GetFoldersBelow() const override { return below; }

 private:
  AbsoluteIRI location;
  PathEntryType kind;
  std::shared_ptr<const PathItems> items;  // in the order of the bytes of their names
  PathEntries below;
};

/// Where a file is in a `FileIndex`.
struct Place {
  std::uint32_t folder;  // index of the main entry
  std::uint32_t file;    // index among the items of that entry

  friend bool operator==(const Place&, const Place&) = default;
};

/// The files of main entries by name, in path order.
class FileIndex {
 public:
  FileIndex(const PathEntries& entries, FilenameMatchingPolicy policy)
      : foldsCase(policy == FilenameMatchingPolicy::IgnoreCase) {
    for (const auto& entry : entries) {
      const auto items = entry->GetItems();
      for (const auto& item : *items) {
        places[KeyOf(NameOf(*item))].push_back({static_cast<std::uint32_t>(folders.size()),
                                                static_cast<std::uint32_t>(&item - items->data())});
      }
      folders.push_back({entry, items});
    }
  }

  /// The files called `name` in path order; within one folder, the exact name before names that
  /// differ in case.
  [[nodiscard]] std::vector<Place> Find(const ustring& name) const {
    const auto found = places.find(KeyOf(name));
    if (found == places.end()) return {};
    std::vector<Place> all = found->second;
    const auto key = [&](const Place& place) {
      return std::make_tuple(place.folder, NameOf(ItemAt(place)) != name, place.file);
    };
    if (foldsCase) std::ranges::sort(all, {}, key);
    return all;
  }

  [[nodiscard]] FoundItem At(const Place& place) const {
    const Folder& folder = folders[place.folder];
    return {(*folder.items)[place.file], folder.entry};
  }

 private:
  struct Folder {
    std::shared_ptr<const IPathEntry> entry;
    std::shared_ptr<const PathItems> items;
  };

  static ustring NameOf(const PathItem& item) { return item.GetName() + item.GetExtension(); }
  [[nodiscard]] const PathItem& ItemAt(const Place& place) const {
    return *(*folders[place.folder].items)[place.file];
  }
  [[nodiscard]] ustring KeyOf(const ustring& name) const {
    return foldsCase ? FoldFilename(name) : name;
  }

  bool foldsCase;
  std::vector<Folder> folders;  // in path order
  // By `KeyOf` a file name: where the files of that name are, in path order.
  boost::unordered_flat_map<ustring, std::vector<Place>, detail::TextHash> places;
};

/// The files that `target` means, in path order; within one folder in the order of the extensions.
std::vector<Place> FindIn(const FileIndex& index, const SearchTarget& target) {
  if (target.GetExtensions().empty()) return index.Find(target.GetName());
  std::vector<Place> all;
  for (const ustring& extension : target.GetExtensions()) {
    for (const Place& place : index.Find(target.GetName() + extension)) {
      // Extensions that differ only in case may find the same file.
      if (std::ranges::find(all, place) == all.end()) all.push_back(place);
    }
  }
  std::ranges::stable_sort(all, {}, &Place::folder);
  return all;
}

class ListedPath : public PathBase {
 public:
  explicit ListedPath(std::vector<ListedFolder> folders) {
    PathEntries entries;
    entries.reserve(folders.size());
    for (ListedFolder& folder : folders) {
      entries.push_back(
          std::make_shared<const ListedEntry>(std::move(folder), PathEntryType::Ordinary));
    }
    mainEntries = std::make_shared<const PathEntries>(std::move(entries));
  }

  [[nodiscard]] std::shared_ptr<const PathEntries> GetMainEntries() const override {
    return mainEntries;
  }

  [[nodiscard]] boost::optional<FoundItem> FindFirstInScope(
      SearchScope scope, const SearchTarget& target, FilenameMatchingPolicy policy) const override {
    if (!IsIndexed(scope, target)) return PathBase::FindFirstInScope(scope, target, policy);
    const FileIndex& index = IndexFor(policy);
    const auto places = FindIn(index, target);
    if (places.empty()) return boost::none;
    return index.At(places.front());
  }

  [[nodiscard]] std::vector<FoundItem> FindAllInScope(
      SearchScope scope, const SearchTarget& target, FilenameMatchingPolicy policy) const override {
    if (!IsIndexed(scope, target)) return PathBase::FindAllInScope(scope, target, policy);
    const FileIndex& index = IndexFor(policy);
    std::vector<FoundItem> found;
    for (const Place& place : FindIn(index, target)) found.push_back(index.At(place));
    return found;
  }

 private:
  struct LazyIndex {
    detail::OnceFlag once;
    std::unique_ptr<const FileIndex> index;  // guarded by once
  };

  /// Whether an index can answer: it holds only the files of main entries, which are all ordinary,
  /// and knows no names with separators.
  static bool IsIndexed(SearchScope scope, const SearchTarget& target) {
    return scope.size() == 1 && detail::IsInScope(scope, PathEntryType::Ordinary) &&
           !detail::HasSeparator(target.GetName());
  }

  [[nodiscard]] const FileIndex& IndexFor(FilenameMatchingPolicy policy) const {
    LazyIndex& lazy = policy == FilenameMatchingPolicy::IgnoreCase ? folded : exact;
    lazy.once.Call([&] { lazy.index = std::make_unique<const FileIndex>(*mainEntries, policy); });
    return *lazy.index;
  }

  std::shared_ptr<const PathEntries> mainEntries;
  mutable LazyIndex exact;
  mutable LazyIndex folded;  // for look-ups that ignore case
};

}  // namespace

std::shared_ptr<const IPath> CreateListedPath(std::vector<ListedFolder> folders) {
  return std::make_shared<const ListedPath>(std::move(folders));
}

}  // namespace Corvane::PathManagement
