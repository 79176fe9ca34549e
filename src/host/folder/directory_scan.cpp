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

const foundation::log::basic_diagnostic_logger kFolderLogger("searchpath::host::folders");

struct CloseDirectory {
  void operator()(DIR* directory) const noexcept { closedir(directory); }
};
using Directory = std::unique_ptr<DIR, CloseDirectory>;

/// What `link`, a name in the open folder, leads to.
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

/// Sorts by kind (private, resources, "+", "@"), and by name within a kind.
void SortFolders(std::vector<FolderListing::Subfolder>& folders) {
  const auto rank = [](PathEntryType kind) {
    switch (kind) {
      case PathEntryType::PrivateFolder:
        return 0;
      case PathEntryType::ResourcesFolder:
        return 1;
      case PathEntryType::PlusFolder:
        return 2;
      default:  // "@", or all are ordinary folders
        return 3;
    }
  };
  std::sort(folders.begin(), folders.end(), [&rank](const auto& left, const auto& right) {
    return std::make_tuple(rank(left.kind), std::string_view(left.name)) <
           std::make_tuple(rank(right.kind), std::string_view(right.name));
  });
}

/// What a thread has read of a folder. Perhaps nobody waits for the thread any more, and it still
/// runs when the process exits. The exit destroys the constants by which the kind of a folder is
/// told, so the thread keeps the bare names of the subfolders.
struct Pass {
  FolderListing listing;             // without its folders
  std::vector<std::string> folders;  // the subfolders, but no links to folders
};

/// What a listing keeps.
enum class Kept : std::uint8_t { All, Subfolders };

/// Returns why the folder could not be read to its end; no error when it could.
std::error_code ReadItems(const Directory& directory, Kept kept, Pass& pass) {
  for (;;) {
    errno = 0;
    // readdir is safe here: the stream is used by this function alone.
    const dirent* const item = readdir(directory.get());
    if (item == nullptr) return {errno, std::generic_category()};
    if (IsDots(item->d_name)) continue;
    if (item->d_type == DT_REG) {
      if (kept == Kept::All) pass.listing.files.Add(item->d_name);
    } else if (item->d_type == DT_DIR) {
      pass.folders.emplace_back(item->d_name);
    } else {
      // `ReadFolder` asks later what it leads to.
      pass.listing.links.push_back({.name = item->d_name, .target = LinkTarget::Neither});
    }
  }
}

/// The stamp of the open folder. Has to be taken before the folder is read: a change during the
/// reading then changes the stamp.
std::optional<FolderStamp> Stamp(int folder) {
  timespec now = {};
  struct stat status = {};
  if (clock_gettime(CLOCK_REALTIME, &now) != 0 || fstat(folder, &status) != 0) return std::nullopt;
  return StampOf(status, now);
}

Pass ReadFolder(const std::string& path, Kept kept) {
  Pass pass;
  FolderListing& listing = pass.listing;
  OpenedPath folder = OpenFolder(path);
  const Directory directory(folder.IsOpen() ? fdopendir(folder.Get()) : nullptr);
  if (directory == nullptr) {
    listing.problem = ReasonFor(folder.GetError(), path);
    return pass;
  }
  static_cast<void>(folder.Release());  // the stream owns it now
  listing.stamp = Stamp(dirfd(directory.get()));
  if (const auto error = ReadItems(directory, kept, pass)) listing.problem = ReasonFor(error, path);
  for (auto& link : listing.links) link.target = TargetOf(dirfd(directory.get()), link.name);
  return pass;
}

FolderListing ListingOf(Pass pass) {
  for (const std::string& folder : pass.folders) AddFolder(pass.listing, folder, /*isLink=*/false);
  AddLinked(pass.listing);
  pass.listing.files.ShrinkToFit();
  return std::move(pass.listing);
}

FolderListing ListFolderAt(std::optional<std::string> path, DiskPatience& patience, Kept kept) {
  FolderListing unread;
  unread.problem = AbsolutizeError::InvalidText;
  if (!path) return unread;
  auto pass = patience.Ask([path = *std::move(path), kept] { return ReadFolder(path, kept); });
  if (pass) return ListingOf(*std::move(pass));
  unread.problem = AbsolutizeError::NoAnswer;
  return unread;
}

}  // namespace

AbsolutizeError ReasonFor(std::error_code error, const std::string& path) {
  switch (error.value()) {
    case ENOENT:
      return OpenPath(path, O_PATH | O_NOFOLLOW).IsOpen() ? AbsolutizeError::BrokenLink
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

FolderListing ListFolder(const AbsoluteIRI& location, DiskPatience& patience) {
  const TimedMessage message(kFolderLogger);
  FolderListing listing = ListFolderAt(NativeBytes(location), patience, Kept::All);
  message.Write(foundation::log::Severity::Debug, [&] {
    return "read " + PathManagement::detail::QuotedText(GetStringFromIRI(location)) + ", " +
           std::to_string(listing.files.size()) + " files,";
  });
  return listing;
}

FolderListing ListSubfolders(const AbsoluteIRI& location, DiskPatience& patience) {
  FolderListing listing = ListFolderAt(NativeBytes(location), patience, Kept::Subfolders);
  listing.files = {};  // links to files
  return listing;
}

bool IsDots(const char* name) noexcept {
  return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

void AddSubfolder(FolderListing& listing, std::string_view name) {
  AddFolder(listing, name, /*isLink=*/false);
}

void AskLinks(const std::string& path, FolderListing& listing, DiskPatience& patience) {
  auto asked = patience.Ask([path, saved = listing.links] {
    auto links = saved;
    const Descriptor folder = OpenFolder(path);
    for (auto& link : links) {
      link.target = folder.IsOpen() ? TargetOf(folder.Get(), link.name) : LinkTarget::Neither;
    }
    return links;
  });
  if (asked) listing.links = *std::move(asked);
}

void AddLinked(FolderListing& listing) {
  for (const auto& link : listing.links) {
    if (link.target == LinkTarget::File) listing.files.Add(link.name);
    // A folder whose type the file system does not report is here taken for a link, too. Its
    // location is then resolved, which takes time but changes nothing.
    if (link.target == LinkTarget::Folder) AddFolder(listing, link.name, /*isLink=*/true);
  }
  SortFolders(listing.specialFolders);
  SortFolders(listing.ordinaryFolders);
}

std::optional<AbsolutizeError> ProbeFolder(const AbsoluteIRI& location, DiskPatience& patience) {
  auto path = NativeBytes(location);
  if (!path) return AbsolutizeError::InvalidText;
  const auto probe = [path = *std::move(path)]() -> std::optional<AbsolutizeError> {
    const OpenedPath folder = OpenFolder(path);
    if (folder.IsOpen()) return std::nullopt;
    return ReasonFor(folder.GetError(), path);
  };
  return patience.Ask(probe).value_or(AbsolutizeError::NoAnswer);
}

}  // namespace Corvane::PathManagement::host
