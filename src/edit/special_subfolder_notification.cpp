#include "searchpath/utilities/special_subfolder_notification.h"

#include "searchpath/model/path_entry_type.h"
#include "searchpath/platform/event_manager.h"
#include "searchpath/platform/file_folder_changed_event.h"
#include "searchpath/platform/storage.h"
#include "searchpath/utilities/path_strings.h"

namespace Corvane::PathManagement {

namespace {

/// Publishes for `location` and the folders above it, up to the first ordinary one.
void PublishUpwards(AbsoluteIRI location) {
  using foundation::msg_svc::eventmgr::createLocalEventMgr;
  using foundation::msg_svc::eventmgr::SessionEmId;
  using storage::filefolderobserver::FileFolderChangedEvent;
  using storage::filefolderobserver::FrozenInclusion;

  const auto manager = createLocalEventMgr(SessionEmId);
  const auto publish = [&] {
    const FileFolderChangedEvent event(location.toString(), FrozenInclusion::LocationItself);
    manager->publish(event.clone());
  };
  const auto publishAndAscend = [&] {
    publish();
    location = location.getParent();
  };
  // A name with a dot is taken for that of a file, even if it is that of a folder.
  if (location.getName().find(u'.') != ustring::npos) publishAndAscend();
  while (GetPathEntryTypeFromBaseName(location.getName()) != PathEntryType::Ordinary) {
    publishAndAscend();
  }
  publish();
}

}  // namespace

void NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChanges(const AbsoluteIRI& location) try {
  PublishUpwards(location.getResolvedIRI());
} catch (const foundation::storage::vfs::InvalidIRIException&) {
  // No path can have an entry for a location that is not valid.
}

void NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesAndCanonicalize(
    const AbsoluteIRI& location) {
  const auto storageSystem = storage::microservicestoragesystem::GetStorageSystemReference();
  try {
    const foundation::storage::vfs::File file(location, storageSystem);
    PublishUpwards(file.getCanonicalLocation());
  } catch (const foundation::storage::vfs::Exception&) {
    NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChanges(location);
  }
}

}  // namespace Corvane::PathManagement
