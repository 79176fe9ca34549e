#include "host/directory_scan.h"

#include "host/open_path.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/utilities/path_strings.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <tuple>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using current_working_folder::AbsolutizeError;

/// Not open on failure; errno then says why.
Descriptor OpenFolder(const std::string& path) { return OpenPath(path, O_RDONLY | O_DIRECTORY); }

AbsolutizeError ReasonFor(int error, const std::string& path) {
  struct stat status = {};
  switch (error) {
    case ENOENT:
      return lstat(path.c_str(), &status) == 0 ? AbsolutizeError::BrokenLink
                                               : AbsolutizeError::Absent;
    case ENOTDIR:
      return AbsolutizeError::NotAFolder;
    case EACCES:
    case EPERM:
      return AbsolutizeError::PermissionDenied;
    case ELOOP:
      return AbsolutizeError::LinkLoop;
    case ENAMETOOLONG:
      return AbsolutizeError::NameTooLong;
    case EIO:
      return AbsolutizeError::InputOutput;
    default:
      return AbsolutizeError::Other;
  }
}

struct CloseDirectory {
  void operator()(DIR* directory) const noexcept { closedir(directory); }
};
using Directory = std::unique_ptr<DIR, CloseDirectory>;

enum class ItemType : std::uint8_t { File, Folder, LinkedFolder, Neither };

ItemType TypeOf(int folder, const dirent& item) {
  if (item.d_type == DT_REG) return ItemType::File;
  if (item.d_type == DT_DIR) return ItemType::Folder;
  if (item.d_type != DT_LNK && item.d_type != DT_UNKNOWN) return ItemType::Neither;
  struct stat status = {};
  if (fstatat(folder, item.d_name, &status, 0) != 0) return ItemType::Neither;
  if (S_ISREG(status.st_mode)) return ItemType::File;
  if (!S_ISDIR(status.st_mode)) return ItemType::Neither;
  // A folder of unknown type may stand behind a link; then it counts as one, which costs a question
  // more and loses nothing.
  return ItemType::LinkedFolder;
}

void AddFolder(FolderListing& listing, std::string_view name, bool isLink) {
  if (name == "." || name == "..") return;
  const PathEntryType kind = GetPathEntryTypeFromBaseName(TextFromBytes(name));
  auto& folders =
      kind == PathEntryType::Ordinary ? listing.ordinaryFolders : listing.specialFolders;
  folders.push_back({.name = std::string(name), .kind = kind, .isLink = isLink});
}

/// Private, resources, "+", "@", each by name.
void SortFolders(std::vector<FolderListing::Subfolder>& folders) {
  const auto rank = [](PathEntryType kind) {
    switch (kind) {
      case PathEntryType::PrivateFolder:
        return 0;
      case PathEntryType::ResourcesFolder:
        return 1;
      case PathEntryType::PlusFolder:
        return 2;
      default:
        return 3;
    }
  };
  std::sort(folders.begin(), folders.end(), [&rank](const auto& left, const auto& right) {
    return std::make_tuple(rank(left.kind), std::string_view(left.name)) <
           std::make_tuple(rank(right.kind), std::string_view(right.name));
  });
}

void ReadItems(const Directory& directory, FolderListing& listing) {
  const int folder = dirfd(directory.get());
  errno = 0;
  // readdir is safe here: the stream is this function's own.
  while (const dirent* item = readdir(directory.get())) {
    const ItemType type = TypeOf(folder, *item);
    if (type == ItemType::File) {
      listing.files.Add(item->d_name);
    } else if (type != ItemType::Neither) {
      AddFolder(listing, item->d_name, type == ItemType::LinkedFolder);
    }
    errno = 0;
  }
}

/// The native path of a "file" IRI; empty for any other.
std::optional<std::string> NativeBytes(const AbsoluteIRI& location) {
  if (location.getScheme() != u"file") return std::nullopt;
  return BytesFromText(location.getPath());
}

}  // namespace

FolderListing ListFolder(const AbsoluteIRI& location) {
  FolderListing listing;
  const auto path = NativeBytes(location);
  if (!path) {
    listing.problem = AbsolutizeError::InvalidText;
    return listing;
  }
  Descriptor folder = OpenFolder(*path);
  const Directory directory(folder.IsOpen() ? fdopendir(folder.Get()) : nullptr);
  if (directory == nullptr) {
    listing.problem = ReasonFor(errno, *path);
    return listing;
  }
  static_cast<void>(folder.Release());  // the stream owns it now
  ReadItems(directory, listing);
  if (errno != 0) listing.problem = ReasonFor(errno, *path);
  listing.files.ShrinkToFit();
  SortFolders(listing.specialFolders);
  SortFolders(listing.ordinaryFolders);
  return listing;
}

std::optional<AbsolutizeError> ProbeFolder(const AbsoluteIRI& location) {
  const auto path = NativeBytes(location);
  if (!path) return AbsolutizeError::InvalidText;
  if (OpenFolder(*path).IsOpen()) return std::nullopt;
  return ReasonFor(errno, *path);
}

}  // namespace Corvane::PathManagement::host
