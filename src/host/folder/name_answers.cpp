#include "host/folder/name_answers.h"

#include "host/folder/directory_scan.h"
#include "searchpath/model/byte_text.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using current_working_folder::AbsolutizeError;

/// Whether some folder could hold the name.
bool IsFileName(std::string_view name) {
  return !name.empty() && name.find('/') == name.npos && name.find('\0') == name.npos;
}

std::optional<std::size_t> IndexOf(const NameBlock& names, std::string_view name) {
  for (std::size_t index = 0; index < names.size(); ++index) {
    if (names[index] == name) return index;
  }
  return std::nullopt;
}

NameBlock Without(const NameBlock& names, std::size_t left) {
  NameBlock others;
  for (std::size_t index = 0; index < names.size(); ++index) {
    if (index != left) others.Add(names[index]);
  }
  others.ShrinkToFit();
  return others;
}

}  // namespace

NameQuestion::NameQuestion(const PathManagement::detail::SearchTarget& target) {
  const auto add = [this](const ustring& text) {
    if (auto name = BytesFromText(text); name && IsFileName(*name)) files.push_back(*name);
  };
  if (target.GetExtensions().empty()) add(target.GetName());
  for (const ustring& extension : target.GetExtensions()) add(target.GetName() + extension);
}

void NameQuestion::AddMethodFolder(const ustring& name) {
  methodFolder = BytesFromText(u'@' + name);
  if (methodFolder && !IsFileName(*methodFolder)) methodFolder.reset();
}

bool NameAnswers::Ask(const AbsoluteIRI& location, const NameQuestion& question) {
  std::optional<OpenedPath> folder;
  const auto isClear = [&](const std::string& name) {
    if (Find(name) != nullptr) return true;
    if (!folder && !problem) folder = Open(location);
    if (folder && folder->IsOpen()) return AskIn(folder->Get(), name);
    answers.push_back({.name = name, .kind = Kind::Nothing});
    return true;
  };
  for (const std::string& name : question.files) {
    if (!isClear(name)) return false;
    if (KindOf(name) == Kind::File) return true;
  }
  return !question.methodFolder || isClear(*question.methodFolder);
}

OpenedPath NameAnswers::Open(const AbsoluteIRI& location) {
  const auto path = NativeBytes(location);
  OpenedPath folder = path ? OpenFolder(*path) : OpenedPath(-1);
  if (!path) problem = AbsolutizeError::InvalidText;
  if (path && !folder.IsOpen()) problem = ReasonFor(folder.GetError(), *path);
  return folder;
}

bool NameAnswers::AskIn(int folder, const std::string& name) {
  struct stat status = {};
  int result = fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW);
  const bool isLink = result == 0 && S_ISLNK(status.st_mode);
  if (isLink) result = fstatat(folder, name.c_str(), &status, 0);
  // A folder that may be read but not searched can still be listed.
  if (result != 0 && !isLink && errno != ENOENT) return false;
  Kind kind = Kind::Nothing;
  if (result == 0 && S_ISREG(status.st_mode)) kind = Kind::File;
  if (result == 0 && S_ISDIR(status.st_mode)) kind = Kind::Folder;
  answers.push_back({.name = name, .kind = kind});
  return true;
}

NameAnswers::Answer* NameAnswers::Find(std::string_view name) {
  const auto found = std::find_if(answers.begin(), answers.end(),
                                  [name](const Answer& answer) { return answer.name == name; });
  return found == answers.end() ? nullptr : &*found;
}

void NameAnswers::ApplyTo(FolderListing& listing) const {
  for (const Answer& answer : answers) {
    const auto listed = IndexOf(listing.files, answer.name);
    if (answer.kind == Kind::File && !listed) listing.files.Add(answer.name);
    if (answer.kind != Kind::File && listed) listing.files = Without(listing.files, *listed);
    if (answer.kind == Kind::Folder) continue;
    for (auto* folders : {&listing.specialFolders, &listing.ordinaryFolders}) {
      std::erase_if(*folders, [&](const auto& folder) { return folder.name == answer.name; });
    }
  }
}

void NameAnswers::MoveItemsTo(ItemStore& items, const NameBlock& files) {
  for (Answer& answer : answers) {
    if (answer.item == nullptr) continue;
    items.Put(IndexOf(files, answer.name).value(), std::move(answer.item));
  }
}

}  // namespace Corvane::PathManagement::host
