#include "host/folder/directory_scan.h"

#include "host/common/timed_message.h"
#include "host/folder/open_path.h"
#include "model/quoted_text.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/utilities/iri_conversion.h"
#include "searchpath/utilities/path_strings.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <memory>
#include <string>
#include <system_error>
#include <tuple>

namespace Corvane::PathManagement::host {

namespace {

using current_working_folder::AbsolutizeError;

const foundation::log::basic_diagnostic_logger kLogger("searchpath::host::folders");

struct CloseDirectory {
  void operator()(DIR* directory) const noexcept { closedir(directory); }
};
using Directory = std::unique_ptr<DIR, CloseDirectory>;

LinkTarget TargetOf(int folder, const std::string& link) {
  struct stat status = {};
  if (fstatat(folder, link.c_str(), &status, 0) != 0) return LinkTarget::Neither;
  if (S_ISREG(status.st_mode)) return LinkTarget::File;
  return S_ISDIR(status.st_mode) ? LinkTarget::Folder : LinkTarget::Neither;
}

void AddFolder(FolderListing& listing, std::string_view name, bool isLink) {
  const PathEntryType kind = GetPathEntryTypeFromBaseName(TextFromBytes(name));
  auto& folders =
      kind == PathEntryType::Ordinary ? listing.ordinaryFolders : listing.specialFolders;
  folders.push_back({.name = std::string(name), .kind = kind, .isLink = isLink});
}

/// By kind (private, resources, "+", "@"), and by name within a kind.
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

/// Returns why the folder could not be read to its end.
std::error_code ReadItems(const Directory& directory, FolderListing& listing) {
  for (;;) {
    errno = 0;
    // readdir is safe here: the stream is used by this function alone.
    const dirent* const item = readdir(directory.get());
    if (item == nullptr) return {errno, std::generic_category()};
    if (IsDots(item->d_name)) continue;
    if (item->d_type == DT_REG) {
      listing.files.Add(item->d_name);
    } else if (item->d_type == DT_DIR) {
      AddFolder(listing, item->d_name, false);
    } else if (item->d_type == DT_LNK || item->d_type == DT_UNKNOWN) {
      listing.links.push_back({.name = item->d_name, .target = LinkTarget::Neither});
    }
  }
}

/// The stamp of the open folder. To be taken before the folder is read, so that a change while it
/// is being read shows.
std::optional<FolderStamp> Stamp(int folder) {
  timespec now = {};
  struct stat status = {};
  if (clock_gettime(CLOCK_REALTIME, &now) != 0 || fstat(folder, &status) != 0) return std::nullopt;
  return StampOf(status, now);
}

FolderListing ReadFolder(const AbsoluteIRI& location) {
  FolderListing listing;
  const auto path = NativeBytes(location);
  if (!path) {
    listing.problem = AbsolutizeError::InvalidText;
    return listing;
  }
  OpenedPath folder = OpenFolder(*path);
  const Directory directory(folder.IsOpen() ? fdopendir(folder.Get()) : nullptr);
  if (directory == nullptr) {
    listing.problem = ReasonFor(folder.GetError(), *path);
    return listing;
  }
  static_cast<void>(folder.Release());  // the stream owns it now
  listing.stamp = Stamp(dirfd(directory.get()));
  if (const auto error = ReadItems(directory, listing)) listing.problem = ReasonFor(error, *path);
  for (auto& link : listing.links) link.target = TargetOf(dirfd(directory.get()), link.name);
  AddLinked(listing);
  listing.files.ShrinkToFit();
  return listing;
}

}  // namespace

AbsolutizeError ReasonFor(std::error_code error, const std::string& path) {
  struct stat status = {};
  switch (error.value()) {
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

FolderListing ListFolder(const AbsoluteIRI& location) {
  const TimedMessage message(kLogger);
  FolderListing listing = ReadFolder(location);
  message.Write(foundation::log::Severity::Debug, [&] {
    return "read " + PathManagement::detail::QuotedText(GetStringFromIRI(location)) + ", " +
           std::to_string(listing.files.size()) + " files,";
  });
  return listing;
}

bool IsDots(const char* name) noexcept {
  return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

void AddSubfolder(FolderListing& listing, std::string_view name) {
  AddFolder(listing, name, false);
}

void AskLinks(const std::string& path, FolderListing& listing) {
  const Descriptor folder = OpenFolder(path);
  for (auto& link : listing.links) {
    link.target = folder.IsOpen() ? TargetOf(folder.Get(), link.name) : LinkTarget::Neither;
  }
}

void AddLinked(FolderListing& listing) {
  for (const auto& link : listing.links) {
    if (link.target == LinkTarget::File) listing.files.Add(link.name);
    // A folder whose type the file system does not report counts as one behind a link, too: its
    // location is then resolved, which takes time but finds the same.
    if (link.target == LinkTarget::Folder) AddFolder(listing, link.name, true);
  }
  SortFolders(listing.specialFolders);
  SortFolders(listing.ordinaryFolders);
}

std::optional<AbsolutizeError> ProbeFolder(const AbsoluteIRI& location) {
  const auto path = NativeBytes(location);
  if (!path) return AbsolutizeError::InvalidText;
  const OpenedPath folder = OpenFolder(*path);
  if (folder.IsOpen()) return std::nullopt;
  return ReasonFor(folder.GetError(), *path);
}

}  // namespace Corvane::PathManagement::host
