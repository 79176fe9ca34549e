#include "host/saved/listing_writer.h"

#include "host/common/held_hash.h"
#include "host/folder/entry_state.h"
#include "host/folder/folder_walk.h"
#include "host/saved/listing_envelope.h"
#include "model/path_components.h"
#include "saved_listing_generated.h"
#include "searchpath/model/byte_text.h"

#include <boost/unordered/unordered_flat_map.hpp>
#include <boost/unordered/unordered_flat_set.hpp>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Corvane::PathManagement::host {

namespace {

using flatbuffers::Offset;
using foundation::storage::vfs::detail::HasDoubleDots;

constexpr std::size_t kRoomForTables = 1024;  // in bytes: more than a folder takes without names

/// The location of a folder as it is saved; `bytes` depends on `place` as docs/formats.md says.
struct Location {
  saved::Place place;
  std::string bytes;
};

Location SavedLocationOf(const AbsoluteIRI& folder, const AbsoluteIRI& root) {
  const auto bytes = [](const ustring& text) { return BytesFromText(text).value(); };
  if (folder.getScheme() != u"file") return {saved::Place::Elsewhere, bytes(folder.toString())};
  if (folder == root) return {saved::Place::BelowRoot, ""};
  const std::u16string_view text = folder.toStringView();
  const std::u16string_view above = root.toStringView();
  if (text.starts_with(above) && (above.ends_with(u'/') || text[above.size()] == u'/')) {
    std::string relative = bytes(folder.makePathRelativeTo(root));
    // ".." may lead out of the root.
    if (!HasDoubleDots(std::string_view(relative)))
      return {saved::Place::BelowRoot, std::move(relative)};
  }
  return {saved::Place::Absolute, bytes(folder.getPath())};
}

/// Collects names that are to be written.
class NamesToWrite {
 public:
  void Add(std::string_view name) {
    begins.push_back(static_cast<std::uint32_t>(bytes.size()));
    bytes.append(name).push_back('\0');
  }

  [[nodiscard]] std::size_t Size() const noexcept {
    return bytes.size() + begins.size() * sizeof(std::uint32_t);
  }

  /// Null when there are no names.
  [[nodiscard]] Offset<saved::Names> Write(flatbuffers::FlatBufferBuilder& builder) const {
    if (begins.empty()) return 0;
    const auto block =
        builder.CreateVector(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    return saved::CreateNames(builder, block, builder.CreateVector(begins));
  }

 private:
  std::string bytes;
  std::vector<std::uint32_t> begins;
};

class ListingWriter {
 public:
  explicit ListingWriter(const AbsoluteIRI& rootLocation) : root(rootLocation) {}

  void AddMainFolder(const std::shared_ptr<const FolderEntry>& mainFolder) {
    path.push_back(Add(*mainFolder));
    WalkFolders(mainFolder, [this](const auto& folder, std::size_t /*depth*/) {
      Add(*folder);
      return false;  // goes on
    });
  }

  void AddFurtherFolder(const FolderEntry& folder) { Add(folder); }

  void Write(std::ostream& stream) {
    const auto allFolders = builder.CreateVector(folders);
    builder.Finish(saved::CreateListing(builder, allFolders, builder.CreateVector(path)));
    WriteEnvelope(stream, kListingFormat,
                  {reinterpret_cast<const char*>(builder.GetBufferPointer()), builder.GetSize()});
  }

 private:
  /// Lists and writes the folder unless that has been done; returns its index in `folders`.
  std::uint32_t Add(const FolderEntry& folder) {
    FolderState& state = StateOf(folder);
    const auto [known, isNew] =
        indexes.try_emplace(state.Location(), static_cast<std::uint32_t>(folders.size()));
    const std::uint32_t index = known->second;
    if (isNew) {
      state.List();
      folders.push_back(WriteFolder(state.Location(), state.Listing()));
    }
    return index;
  }

  Offset<saved::Folder> WriteFolder(const AbsoluteIRI& folder, const FolderListing& listing) {
    const Location location = SavedLocationOf(folder, root);
    NamesToWrite files;
    NamesToWrite subfolders;
    NamesToWrite links;
    std::vector<std::uint8_t> targets;
    if (!listing.problem) {
      boost::unordered_flat_set<std::string_view> linked;  // files that are not saved as such
      for (const auto& link : listing.links) {
        links.Add(link.name);
        targets.push_back(static_cast<std::uint8_t>(link.target));
        if (link.target == LinkTarget::File) linked.insert(link.name);
      }
      for (std::size_t at = 0; at < listing.files.size(); ++at) {
        if (!linked.contains(listing.files[at])) files.Add(listing.files[at]);
      }
      for (const auto* group : {&listing.specialFolders, &listing.ordinaryFolders}) {
        for (const auto& subfolder : *group) {
          if (!subfolder.isLink) subfolders.Add(subfolder.name);
        }
      }
    }
    CheckRoomFor(files.Size() + subfolders.Size() + links.Size() + targets.size() +
                 location.bytes.size());
    return WriteTable(location, listing, files.Write(builder), subfolders.Write(builder),
                      links.Write(builder), targets);
  }

  Offset<saved::Folder> WriteTable(const Location& location, const FolderListing& listing,
                                   Offset<saved::Names> files, Offset<saved::Names> subfolders,
                                   Offset<saved::Names> links,
                                   const std::vector<std::uint8_t>& targets) {
    const auto bytes = builder.CreateVector(
        reinterpret_cast<const std::uint8_t*>(location.bytes.data()), location.bytes.size());
    const Offset<flatbuffers::Vector<std::uint8_t>> linkTargets =
        targets.empty() ? 0 : builder.CreateVector(targets);
    saved::FolderBuilder folder(builder);
    folder.add_location(bytes);
    folder.add_place(location.place);
    folder.add_listed(!listing.problem);
    if (listing.problem) folder.add_problem(static_cast<std::uint8_t>(*listing.problem));
    if (listing.stamp && !listing.problem) {
      const saved::Stamp stamp(listing.stamp->modified, listing.stamp->changed,
                               listing.stamp->inode);
      folder.add_stamp(&stamp);
    }
    if (!files.IsNull()) folder.add_files(files);
    if (!subfolders.IsNull()) folder.add_folders(subfolders);
    if (!links.IsNull()) folder.add_links(links);
    if (!targets.empty()) folder.add_targets(linkTargets);
    return folder.Finish();
  }

  /// Refuses a listing that would be too large: the builder checks its size in debug builds only.
  void CheckRoomFor(std::size_t bytes) const {
    // What `Write` adds: the elements of two vectors, and the length of each vector.
    const std::size_t lists = (folders.size() + path.size() + 2) * sizeof(std::uint32_t);
    if (builder.GetSize() + bytes + lists + kRoomForTables > kMostBodyBytes) {
      throw std::length_error("there are more names than a listing can hold");
    }
  }

  const AbsoluteIRI& root;
  flatbuffers::FlatBufferBuilder builder;
  std::vector<Offset<saved::Folder>> folders;
  std::vector<std::uint32_t> path;  // the main folders, as indexes of `folders`
  boost::unordered_flat_map<AbsoluteIRI, std::uint32_t, HeldHash> indexes;  // by location
};

}  // namespace

void WriteListings(std::ostream& stream, const AbsoluteIRI& root, const FolderEntries& mainFolders,
                   const FolderEntries& furtherFolders) {
  ListingWriter writer(root);
  for (const auto& folder : mainFolders) writer.AddMainFolder(folder);
  for (const auto& folder : furtherFolders) writer.AddFurtherFolder(*folder);
  writer.Write(stream);
}

}  // namespace Corvane::PathManagement::host
