#include "host/saved/saved_listings.h"

#include "host/common/timed_message.h"
#include "host/folder/directory_scan.h"
#include "host/folder/open_path.h"
#include "host/saved/listing_envelope.h"
#include "saved_listing_generated.h"
#include "searchpath/host/invalid_listing_exception.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/platform/iri_text.h"
#include "searchpath/utilities/iri_conversion.h"

#include <algorithm>
#include <string>
#include <vector>

namespace Corvane::PathManagement::host {

namespace {

const foundation::log::basic_diagnostic_logger kCacheLogger("searchpath::host::cache");

using current_working_folder::AbsolutizeError;
using Bytes = flatbuffers::Vector<std::uint8_t>;

constexpr flatbuffers::uoffset_t kDeepest = 8;  // levels of nested tables; the format has three

[[noreturn]] void Refuse(const std::string& why) {
  throw InvalidListingException("it is malformed: " + why);
}

std::string_view View(const Bytes& bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

NameBlock ViewNames(const saved::Names* names) {
  if (names == nullptr) return {};
  return {View(*names->bytes()), names->begins()->data(), names->begins()->size()};
}

/// Checks the meaning of the content; the verifier of the tables checks only their structure.
///
/// Tables may share parts, so a small file could hold so many names that checking them would take
/// for ever. Files that this program writes share nothing. So all parts together may not be larger
/// than the file.
class ContentCheck {
 public:
  explicit ContentCheck(std::size_t bodySize) : bytesLeft(bodySize) {}

  void CheckFolder(const saved::Folder& folder) {
    Spend(folder.location()->size());
    if (folder.place() > saved::Place::MAX) Refuse("the place of a folder is unknown");
    // `NoAnswer` is the last reason and, below, `Folder` the last target.
    if (folder.problem() > static_cast<std::uint8_t>(AbsolutizeError::NoAnswer)) {
      Refuse("a problem is unknown");
    }
    CheckNames(folder.files());
    CheckNames(folder.folders());
    CheckNames(folder.links());
    CheckRepeats(folder);
    const std::size_t linkCount = folder.links() == nullptr ? 0 : folder.links()->begins()->size();
    const auto* targets = folder.targets();
    if ((targets == nullptr ? 0 : targets->size()) != linkCount) Refuse("a link has no target");
    if (targets == nullptr) return;
    Spend(linkCount);
    if (std::any_of(targets->begin(), targets->end(), [](std::uint8_t target) {
          return target > static_cast<std::uint8_t>(LinkTarget::Folder);
        })) {
      Refuse("the target of a link is unknown");
    }
  }

 private:
  void Spend(std::size_t bytes) {
    if (bytes > bytesLeft) Refuse("it refers to the same data several times");
    bytesLeft -= bytes;
  }

  void CheckNames(const saved::Names* names) {
    if (names == nullptr) return;
    const std::string_view block = View(*names->bytes());
    const auto* begins = names->begins()->data();
    const std::size_t count = names->begins()->size();
    Spend(block.size() + count * sizeof(*begins));
    // This and the loop below make sure that one name begins at the start of the block and one
    // after each NUL but the last. So no name is left out, and none holds a NUL.
    if (count == 0 || block.empty() || begins[0] != 0 || block.back() != '\0' ||
        static_cast<std::size_t>(std::count(block.begin(), block.end(), '\0')) != count) {
      Refuse("names do not end where they should");
    }
    for (std::size_t index = 1; index < count; ++index) {
      if (begins[index] >= block.size() || begins[index] <= begins[index - 1] ||
          block[begins[index] - 1] != '\0') {
        Refuse("a name does not begin where another ends");
      }
    }
    if (block.find('/') != block.npos) Refuse("a name has a separator");
    for (std::size_t index = 0; index < count; ++index) {
      const char* name = block.data() + begins[index];
      if (name[0] == '\0') Refuse("a name is empty");
      if (IsDots(name)) Refuse("a name is \".\" or \"..\"");
    }
  }

  /// If each folder held the same subfolder many times, a small file would make a huge tree.
  static void CheckRepeats(const saved::Folder& folder) {
    std::vector<std::string_view> all;
    for (const auto* names : {folder.folders(), folder.links()}) {
      const NameBlock block = ViewNames(names);
      for (std::size_t index = 0; index < block.size(); ++index) all.push_back(block[index]);
    }
    std::sort(all.begin(), all.end());
    if (std::adjacent_find(all.begin(), all.end()) != all.end()) Refuse("a folder occurs twice");
  }

  std::size_t bytesLeft;  // of the file, for the parts that have not been checked
};

/// Makes the locations of folders from what was saved, which may be relative to `root`.
class LocationMaker {
 public:
  explicit LocationMaker(const AbsoluteIRI& rootLocation) : root(rootLocation) {
    if (root.getScheme() == u"file") rootPath = root.getPath();
    if (!rootPath.ends_with(u'/')) rootPath.push_back(u'/');
  }

  [[nodiscard]] AbsoluteIRI Make(const saved::Folder& folder) const try {
    const std::string_view bytes = View(*folder.location());
    switch (folder.place()) {
      case saved::Place::BelowRoot:
        if (root.getScheme() != u"file") Refuse("it belongs below a folder on disk");
        if (bytes.empty()) return root;
        if (bytes.front() == '/') Refuse("a relative location begins with a separator");
        return foundation::storage::vfs::toAbsoluteIRI(u"file", rootPath + TextFromBytes(bytes));
      case saved::Place::Absolute:
        return foundation::storage::vfs::toAbsoluteIRI(u"file", TextFromBytes(bytes));
      default:  // `Elsewhere`
        return AbsoluteIRI(TextFromBytes(bytes));
    }
  } catch (const foundation::storage::vfs::InvalidIRIException& invalid) {
    Refuse(std::string("a location is invalid: ") + invalid.what());
  }

 private:
  const AbsoluteIRI& root;
  ustring rootPath;  // ends with a separator
};

}  // namespace

SavedListings::SavedListings(std::istream& stream, const AbsoluteIRI& root, ListingUse listingUse)
    : use(listingUse) {
  const TimedMessage message(kCacheLogger);
  body = ReadEnvelope(stream, kListingFormat);
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(body.bytes.get());
  // The number of tables needs no limit of its own: each takes some of the bytes.
  flatbuffers::Verifier verifier(bytes, body.size, kDeepest,
                                 static_cast<flatbuffers::uoffset_t>(body.size));
  if (!saved::VerifyListingBuffer(verifier)) Refuse("its tables do not fit together");
  listing = saved::GetListing(bytes);
  CheckFolders(root);
  message.Write(foundation::log::Severity::Information, [this] {
    return "read the listings of " + std::to_string(locations.size()) + " folders, " +
           std::to_string(body.size) + " bytes,";
  });
}

void SavedListings::CheckFolders(const AbsoluteIRI& root) {
  const std::size_t count = listing->folders()->size();
  locations.reserve(count);
  indexes.reserve(count);
  ContentCheck check(body.size);
  const LocationMaker locationMaker(root);
  for (const saved::Folder* folder : *listing->folders()) {
    check.CheckFolder(*folder);
    const auto index = static_cast<std::uint32_t>(locations.size());
    locations.push_back(locationMaker.Make(*folder));
    if (!indexes.emplace(locations.back(), index).second) Refuse("a folder occurs twice");
  }
  if (std::any_of(listing->path()->begin(), listing->path()->end(),
                  [count](std::uint32_t index) { return index >= count; })) {
    Refuse("the path has a folder that is not in the file");
  }
}

std::vector<std::uint32_t> SavedListings::MainFolders() const {
  return {listing->path()->begin(), listing->path()->end()};
}

std::optional<std::uint32_t> SavedListings::Find(const AbsoluteIRI& location) const {
  const auto found = indexes.find(location);
  if (found == indexes.end()) return std::nullopt;
  return found->second;
}

std::optional<FolderStamp> SavedListings::FindStamp(std::uint32_t folder) const {
  const saved::Stamp* stamp = listing->folders()->Get(folder)->stamp();
  if (stamp == nullptr) return std::nullopt;
  return FolderStamp{stamp->modified(), stamp->changed(), stamp->inode()};
}

std::optional<FolderListing> SavedListings::FindListing(std::uint32_t folder,
                                                        DiskPatience& patience) const {
  const saved::Folder& known = *listing->folders()->Get(folder);
  const auto path = NativeBytes(locations[folder]);
  const bool asSaved = use == ListingUse::AsSaved;
  const auto ask = [path, stamp = FindStamp(folder)] { return AskFreshness(*path, stamp); };
  if (!asSaved && (!path || !known.listed() || patience.Ask(ask) != Freshness::Fresh)) {
    return std::nullopt;
  }
  FolderListing made;
  made.stamp = FindStamp(folder);
  if (!known.listed()) {
    made.problem = static_cast<AbsolutizeError>(known.problem());
    return made;
  }
  made.files = ViewNames(known.files());
  const NameBlock folders = ViewNames(known.folders());
  for (std::size_t index = 0; index < folders.size(); ++index) AddSubfolder(made, folders[index]);
  const NameBlock links = ViewNames(known.links());
  for (std::size_t index = 0; index < links.size(); ++index) {
    const auto at = static_cast<flatbuffers::uoffset_t>(index);
    made.links.push_back({.name = std::string(links[index]),
                          .target = static_cast<LinkTarget>(known.targets()->Get(at))});
  }
  // What a link leads to may change without any change of the folder that holds the link.
  if (!asSaved && !made.links.empty()) AskLinks(*path, made, patience);
  AddLinked(made);
  return made;
}

}  // namespace Corvane::PathManagement::host
