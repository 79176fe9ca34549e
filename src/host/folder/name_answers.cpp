#include "host/folder/name_answers.h"

#include "host/folder/directory_scan.h"
#include "host/folder/open_path.h"
#include "searchpath/model/byte_text.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

/// Whether a folder could hold something of this name.
bool IsFileName(std::string_view name) {
  return !name.empty() && name.find('/') == name.npos && name.find('\0') == name.npos;
}

std::optional<std::size_t> IndexOf(const NameBlock& names, std::string_view name) {
  for (std::size_t index = 0; index < names.size(); ++index) {
    if (names[index] == name) return index;
  }
  return std::nullopt;
}

NameBlock Without(const NameBlock& names, std::size_t omitted) {
  NameBlock others;
  for (std::size_t index = 0; index < names.size(); ++index) {
    if (index != omitted) others.Add(names[index]);
  }
  others.ShrinkToFit();
  return others;
}

/// What `name` is in the open folder; `nullopt` when only a listing can tell.
std::optional<NameAnswers::Kind> KindIn(int folder, const std::string& name) {
  using enum NameAnswers::Kind;
  struct stat status = {};
  int result = fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW);
  const bool isLink = result == 0 && S_ISLNK(status.st_mode);
  if (isLink) result = fstatat(folder, name.c_str(), &status, 0);
  // A folder that may be read but not searched can still be listed.
  if (result != 0 && !isLink && errno != ENOENT) return std::nullopt;
  if (result == 0 && S_ISREG(status.st_mode)) return File;
  return result == 0 && S_ISDIR(status.st_mode) ? Folder : Nothing;
}

}  // namespace

NameQuestion::NameQuestion(const PathManagement::detail::SearchTarget& target) {
  const auto add = [this](const ustring& text) {
    if (auto name = BytesFromText(text); name && IsFileName(*name)) {
      files.push_back(std::move(*name));
    }
  };
  if (target.GetExtensions().empty()) add(target.GetName());
  for (const ustring& extension : target.GetExtensions()) add(target.GetName() + extension);
}

void NameQuestion::AddFolder(const ustring& name) {
  folder = BytesFromText(name);
  if (folder && !IsFileName(*folder)) folder.reset();
}

NameAnswers::Unanswered NameAnswers::FindUnanswered(const NameQuestion& question) const {
  Unanswered unanswered;
  bool isFound = false;
  for (const std::string& name : question.files) {
    const Answer* const known = Find(name);
    auto& names = unanswered.names;
    // A name that comes twice might get two answers.
    const bool isNew =
        known == nullptr && std::find(names.begin(), names.end(), name) == names.end();
    if (isNew) names.push_back(name);
    isFound = known != nullptr && known->kind == Kind::File && !question.wantsAllFiles;
    if (isFound) break;
  }
  if (!question.wantsAllFiles) unanswered.fileCount = unanswered.names.size();
  const auto& folder = question.folder;
  if (!isFound && folder && Find(*folder) == nullptr) unanswered.names.push_back(*folder);
  return unanswered;
}

NameAnswers::FromDisk NameAnswers::AskDisk(const std::string& path, const Unanswered& unanswered,
                                           bool leavesOpen) {
  FromDisk said;
  OpenedPath folder = OpenFolder(path);
  if (!folder.IsOpen()) {
    said.problem = ReasonFor(folder.GetError(), path);
    return said;
  }
  for (const std::string& name : unanswered.names) {
    const auto kind = KindIn(folder.Get(), name);
    said.isClear = kind.has_value();
    if (!kind) break;
    said.kinds.push_back(*kind);
    if (*kind == Kind::File && said.kinds.size() <= unanswered.fileCount) break;
  }
  if (leavesOpen) said.folder = std::move(folder);
  return said;
}

bool NameAnswers::Add(const Unanswered& unanswered, const FromDisk& fromDisk) {
  if (fromDisk.problem) problem = fromDisk.problem;
  const auto& kinds = fromDisk.kinds;
  const std::size_t count = problem ? unanswered.names.size() : kinds.size();
  for (std::size_t index = 0; index < count; ++index) {
    answers.push_back(
        {.name = unanswered.names[index], .kind = problem ? Kind::Nothing : kinds[index]});
  }
  return fromDisk.isClear;
}

const NameAnswers::Answer* NameAnswers::Find(std::string_view name) const {
  const auto found = std::find_if(answers.begin(), answers.end(),
                                  [name](const Answer& answer) { return answer.name == name; });
  return found == answers.end() ? nullptr : &*found;
}

void NameAnswers::ApplyTo(FolderListing& listing) const {
  for (const Answer& answer : answers) {
    const auto listed = IndexOf(listing.files, answer.name);
    const bool isFile = answer.kind == Kind::File;
    // What is not as on the disk must not be taken for it by whoever compares stamps.
    if (isFile != listed.has_value()) listing.stamp.reset();
    if (isFile && !listed) listing.files.Add(answer.name);
    if (!isFile && listed) listing.files = Without(listing.files, *listed);
    // A folder that is gone by now is not put back: nobody has been given an entry for it.
    if (answer.kind == Kind::Folder) continue;
    for (auto* folders : {&listing.specialFolders, &listing.ordinaryFolders}) {
      const auto isIt = [&](const auto& folder) { return folder.name == answer.name; };
      if (std::erase_if(*folders, isIt) > 0) listing.stamp.reset();
    }
  }
}

void NameAnswers::MoveItemsTo(ItemStore& items, const NameBlock& files) {
  for (Answer& answer : answers) {
    if (answer.item == nullptr) continue;
    items.Put(IndexOf(files, answer.name).value(), answer.item);
  }
}

}  // namespace Corvane::PathManagement::host
