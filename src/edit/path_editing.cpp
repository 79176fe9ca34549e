#include "searchpath/utilities/path_editing.h"

#include "model/held_hash.h"
#include "searchpath/utilities/iri_conversion.h"
#include "searchpath/utilities/path_messages.h"

#include <boost/unordered/unordered_flat_map.hpp>
#include <boost/unordered/unordered_flat_set.hpp>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <optional>
#include <utility>

namespace Corvane::PathManagement {

using current_working_folder::AbsolutizeError;
using current_working_folder::FailedToAbsolutizeException;
using current_working_folder::ICurrentWorkingFolder;
using foundation::core::except::MessageRecord;

namespace {

// The keys are of type `AbsoluteIRI`, so a canonical IRI is looked up without its further text.
using IRISet = boost::unordered_flat_set<AbsoluteIRI, detail::HeldHash, std::equal_to<>>;
using IRIFlags = boost::unordered_flat_map<AbsoluteIRI, bool, detail::HeldHash, std::equal_to<>>;

/// The message about a folder that cannot be used; nullopt for an error that is not the folder's
/// own, such as an I/O error.
std::optional<MessageRecord> MessageAbout(const ustring& folder, std::uint32_t errorCode) {
  const auto message = [&folder](const char16_t* key) {
    return MessageRecord{
        .catalogue = PathMessages::FolderCatalogue, .key = key, .arguments = {folder}};
  };
  switch (static_cast<AbsolutizeError>(errorCode)) {
    case AbsolutizeError::InvalidText:
      return message(PathMessages::InvalidLocation);
    case AbsolutizeError::PermissionDenied:
      return message(PathMessages::PermissionDenied);
    case AbsolutizeError::Absent:
    case AbsolutizeError::NotAFolder:
    case AbsolutizeError::BrokenLink:
    case AbsolutizeError::LinkLoop:
      return message(PathMessages::NoSuchFolder);
    case AbsolutizeError::NameTooLong:
      return message(PathMessages::NameTooLong);
    default:
      return std::nullopt;
  }
}

void SetFolders(IMainSearchPathManager& manager, const std::vector<AbsoluteIRI>& folders,
                Notification& notification) {
  try {
    manager.SetFolderIRIs(folders, notification);
  } catch (const RecursivePathChangeException&) {
    // The change that is under way has precedence; this one is dropped.
  }
}

}  // namespace

std::vector<AbsoluteIRI> ConvertUstringRangeToAbsoluteIRIs(
    const UstringRange& folders, const ICurrentWorkingFolder& workingFolder,
    Notification& notification) {
  // Counted and converted in one walk: a second walk over a range that consumes its input would
  // miss elements, and a reference may be valid only until its iterator moves on.
  std::vector<AbsoluteIRI> converted;
  std::size_t count = 0;
  for (const ustring& folder : folders) {
    ++count;
    try {
      converted.push_back(workingFolder.absolutize(folder));
    } catch (const FailedToAbsolutizeException& error) {
      auto message = MessageAbout(folder, error.GetErrorCode());
      if (!message) throw;
      notification.Append(*std::move(message));
    }
  }
  std::vector<AbsoluteIRI> iris;  // with the promised capacity, that of all `folders`
  iris.reserve(count);
  std::move(converted.begin(), converted.end(), std::back_inserter(iris));
  return iris;
}

Notification AddFoldersToZentraPath(const UstringRange& folders,
                                    const ICurrentWorkingFolder& workingFolder,
                                    IMainSearchPathManager& manager, Position position) {
  Notification notification;
  const auto iris = ConvertUstringRangeToAbsoluteIRIs(folders, workingFolder, notification);
  if (!notification.empty()) return notification;
  return AddIRIsToZentraPath(iris, manager, position);
}

Notification AddIRIsToZentraPath(const AbsoluteIRIRange& iris, IMainSearchPathManager& manager,
                                 Position position) {
  Notification notification;
  const auto current = manager.GetFolderIRIs();
  std::vector<AbsoluteIRI> folders;
  IRISet added;
  for (const AbsoluteIRI& iri : iris) {
    if (added.insert(iri).second) folders.push_back(iri);
  }
  folders.reserve(folders.size() + current->size());
  std::ranges::copy_if(*current, std::back_inserter(folders),
                       [&](const AbsoluteIRI& folder) { return !added.contains(folder); });
  if (position != Position::Begin) {  // any other value means `End`
    const auto addedCount = static_cast<std::ptrdiff_t>(added.size());
    std::rotate(folders.begin(), folders.begin() + addedCount, folders.end());
  }
  SetFolders(manager, folders, notification);
  return notification;
}

Notification RemoveFoldersFromZentraPath(const UstringRange& folders,
                                         const ICurrentWorkingFolder& workingFolder,
                                         IMainSearchPathManager& manager) {
  Notification notification;
  const auto iris = ConvertUstringRangeToAbsoluteIRIs(folders, workingFolder, notification);
  if (!notification.empty()) return notification;
  return RemoveIRIsFromZentraPath(iris, manager);
}

Notification RemoveIRIsFromZentraPath(const AbsoluteIRIRange& iris,
                                      IMainSearchPathManager& manager) {
  Notification notification;
  const auto current = manager.GetFolderIRIs();
  IRIFlags isRemoved;  // for each folder of the path
  isRemoved.reserve(current->size());
  for (const AbsoluteIRI& folder : *current) isRemoved.try_emplace(folder, false);
  for (const AbsoluteIRI& iri : iris) {
    auto found = isRemoved.find(iri);
    // The canonical location comes second, since it takes access to the disk.
    if (found == isRemoved.end()) found = isRemoved.find(GetCanonicalIRI(iri));
    if (found == isRemoved.end()) {
      notification.Append({.catalogue = PathMessages::RemovalCatalogue,
                           .key = PathMessages::NotOnPath,
                           .arguments = {GetStringFromIRI(iri)}});
    } else {
      found->second = true;
    }
  }
  std::vector<AbsoluteIRI> folders;
  folders.reserve(current->size());
  std::ranges::copy_if(*current, std::back_inserter(folders),
                       [&](const AbsoluteIRI& folder) { return !isRemoved.find(folder)->second; });
  SetFolders(manager, folders, notification);
  return notification;
}

}  // namespace Corvane::PathManagement
