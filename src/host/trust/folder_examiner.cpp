#include "host/trust/folder_examiner.h"

#include "host/common/path_bytes.h"
#include "host/folder/directory_scan.h"
#include "host/rules/asked_file.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/utilities/path_strings.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <string_view>

namespace Corvane::PathManagement::host {

namespace {

/// `SearchedFolder::way` for what `folder` holds. `itself` is that folder as a walk reached it.
std::vector<SearchedFolder::Identity> WayBelow(const SearchedFolder& folder,
                                               const PassedFolder& itself) {
  std::vector<SearchedFolder::Identity> way = folder.way;
  way.emplace_back(itself.facts.device, itself.facts.inode);
  return way;
}

/// The names in a folder, in the order of their bytes. When reading fails, sets `error` and returns
/// those read before.
std::vector<std::string> ReadNames(const Descriptor& folder, std::error_code& error) {
  struct Close {
    void operator()(DIR* stream) const noexcept { closedir(stream); }
  };
  std::vector<std::string> names;
  Descriptor opened(openat(folder.Get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  const std::unique_ptr<DIR, Close> stream(opened.IsOpen() ? fdopendir(opened.Get()) : nullptr);
  if (stream == nullptr) {
    error = {errno, std::generic_category()};
    return names;
  }
  static_cast<void>(opened.Release());
  errno = 0;  // `readdir` sets it when it fails, and leaves it as it is at the end
  while (const dirent* entry = readdir(stream.get())) {
    const std::string_view name = static_cast<const char*>(entry->d_name);
    if (name != "." && name != "..") names.emplace_back(name);
    errno = 0;
  }
  if (errno != 0) error = {errno, std::generic_category()};
  std::sort(names.begin(), names.end());
  return names;
}

/// Whether a folder of this name would be private, resources, "@..." or "+...".
bool IsSpecialName(std::string_view name) {
  return GetPathEntryTypeFromBaseName(TextFromBytes(name)) != PathEntryType::Ordinary;
}

}  // namespace

void FolderExaminer::ReportPart(TrustKind kind, const std::string& folder,
                                const std::string& text) {
  findings.Add(kind, folder, text, {{.kind = Intruder::Kind::WorkingFolder}}, {{folderNumber, ""}});
}

void FolderExaminer::ExamineTree(std::string path) {
  pending = {{std::move(path)}};
  while (!pending.empty()) {
    const SearchedFolder folder = std::move(pending.back());
    pending.pop_back();
    Examine(folder);
  }
  ReportFoundThroughLoops();
}

/// A link that leads back to a folder above it gives the files below that folder further names:
/// "back/area.zt" for "area.zt". An earlier folder of the path that hides the file by its shorter
/// name does not hide it by these.
void FolderExaminer::ReportFoundThroughLoops() {
  for (const HiddenFile& file : std::exchange(hidden, {})) {
    const bool isFound = std::any_of(file.way.begin(), file.way.end(), [&](const Identity& each) {
      return std::find(loops.begin(), loops.end(), each) != loops.end();
    });
    // The names through the loop are not listed: there is no end of them.
    if (isFound) report.ReportFile(file.step, file.folder, file.counts, /*scopes=*/{});
  }
  loops.clear();
}

void FolderExaminer::Examine(const SearchedFolder& folder) {
  const WalkedPath walked = WalkPath(folder.path);
  const std::vector<NameScope> scopes = {{folderNumber, folder.prefix}};
  report.ReportSteps(walked.steps, folder.path, scopes);
  NoteFailure(walked.error, folder.path);
  if (walked.end == nullptr) return;
  // In a sticky folder, files that are there cannot be replaced, so their names are out of reach.
  const std::vector<NameScope> scopesIfSticky = {{folderNumber + 1, folder.prefix}};
  report.ReportFolder(*walked.end, folder.path, scopes, scopesIfSticky);
  const std::size_t before = pending.size();
  std::error_code error;
  for (const std::string& name : ReadNames(walked.object, error)) {
    ExamineName(folder, walked, name);
  }
  NoteFailure(error, folder.path);
  // The next folder is taken from the end: now the first of those just added.
  std::reverse(pending.begin() + static_cast<std::ptrdiff_t>(before), pending.end());
}

/// What leads nowhere is no failure: there is nothing to examine.
void FolderExaminer::NoteFailure(std::error_code error, const std::string& path) {
  if (!error || error == std::errc::no_such_file_or_directory ||
      error == std::errc::not_a_directory || error == std::errc::too_many_symbolic_link_levels) {
    return;
  }
  unexamined.push_back({TextFromBytes(path), ReasonFor(error, path)});
}

/// Examines what stands at `name` in `folder`, which `in` has walked to.
void FolderExaminer::ExamineName(const SearchedFolder& folder, const WalkedPath& in,
                                 const std::string& name) {
  struct stat status = {};
  if (fstatat(in.object.Get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) return;
  const std::string path = PathBelow(folder.path, name);
  const std::string relative = folder.prefix + name;
  const bool isHidden = !rules.foldersHaveMeaning && answered.contains(relative);
  const Standing standing = folder.holdsFiles ? LookAtFile(path, rules.files) : Standing::Absent;
  const bool counts = standing == Standing::Counts;
  NoteAnswer(standing, relative);
  if (S_ISDIR(status.st_mode)) {
    AddBelow(folder, name, *in.end, {status.st_dev, status.st_ino});
    return;  // it can be no answer itself
  }
  if (S_ISLNK(status.st_mode) ? MaySkipLink(folder, name, isHidden) : MaySkip(status)) return;
  const WalkedPath walked = WalkPath(in.end, in.object, name);
  NoteFailure(walked.error, path);
  // The name itself and, in case it is or becomes that of a folder, the names below it.
  const std::vector<NameScope> scopes = {{folderNumber, relative}, {folderNumber, relative + '/'}};
  report.ReportSteps(walked.steps, folder.path, scopes);
  if (walked.end != nullptr) {
    AddBelow(folder, name, *in.end, {walked.end->facts.device, walked.end->facts.inode});
  }
  if (walked.end != nullptr || !walked.object.IsOpen() || !folder.holdsFiles) return;
  if (!MayCount(walked.steps.back().object->mode, rules.files)) return;
  if (isHidden) {
    hidden.push_back({walked.steps.back(), folder.path, counts, WayBelow(folder, *in.end)});
  } else {
    report.ReportFile(walked.steps.back(), folder.path, counts, scopes);
  }
}

/// If the file that stands at the name `relative` counts, or ends the search, notes that this folder
/// answers the name, unless an earlier one does.
void FolderExaminer::NoteAnswer(Standing standing, const std::string& relative) {
  if (standing == Standing::Counts || EndsSearch(standing, rules.files)) {
    answered.emplace(relative, folderNumber);
  }
}

/// Whether the link `name` in `folder` need not be followed: no search would find what it leads to,
/// whatever that is.
bool FolderExaminer::MaySkipLink(const SearchedFolder& folder, const std::string& name,
                                 bool isHidden) const {
  return folder.holdsFiles ? isHidden && !Descends() : !IsSpecialName(name);
}

/// Whether something that is no link need not be looked at further: it can be no answer, or only
/// trusted users can change it.
bool FolderExaminer::MaySkip(const struct stat& status) const {
  const bool isClosed = (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
  return !MayCount(status.st_mode, rules.files) || (isClosed && accounts.IsTrusted(status.st_uid));
}

/// Whether names are searched below the folders of the path.
bool FolderExaminer::Descends() const noexcept {
  return !rules.foldersHaveMeaning && rules.separator == LookupRules::Separator::FileBelow;
}

/// Where names are searched below folders, has the folder `name` in `above` examined later. If it
/// is `above` or one of the folders that led there, notes a loop instead. `in` is `above` as a walk
/// reached it.
void FolderExaminer::AddBelow(const SearchedFolder& above, const std::string& name,
                              const PassedFolder& in, const Identity& identity) {
  if (!Descends()) return;
  std::vector<Identity> way = WayBelow(above, in);
  if (std::find(way.begin(), way.end(), identity) != way.end()) {
    loops.push_back(identity);
  } else {
    pending.push_back(
        {PathBelow(above.path, name), above.prefix + name + '/', true, std::move(way)});
  }
}

}  // namespace Corvane::PathManagement::host
