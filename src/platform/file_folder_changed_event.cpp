#include "searchpath/platform/file_folder_changed_event.h"

namespace storage::filefolderobserver {

FileFolderChangedEvent::FileFolderChangedEvent(const foundation::ustring& changedLocation,
                                               FrozenInclusion whichLocations)
    : location(changedLocation), inclusion(whichLocations) {}

FileFolderChangedEvent::~FileFolderChangedEvent() = default;

std::unique_ptr<foundation::msg_svc::eventmgr::Event> FileFolderChangedEvent::clone() const {
  return std::make_unique<FileFolderChangedEvent>(*this);
}

}  // namespace storage::filefolderobserver
