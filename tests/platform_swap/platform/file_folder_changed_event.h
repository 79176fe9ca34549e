#ifndef SEARCHPATH_PLATFORM_FILE_FOLDER_CHANGED_EVENT_H
#define SEARCHPATH_PLATFORM_FILE_FOLDER_CHANGED_EVENT_H

#include "searchpath/model/ustring.h"
#include "searchpath/platform/event_manager.h"

namespace storage::filefolderobserver {

enum class FrozenInclusion { LocationItself };

struct FileFolderChangedEvent : foundation::msg_svc::eventmgr::Event {
  FileFolderChangedEvent(const foundation::ustring& text, FrozenInclusion) : location(text) {}
  std::unique_ptr<Event> clone() const override {
    return std::make_unique<FileFolderChangedEvent>(*this);
  }

  foundation::ustring location;
};

}  // namespace storage::filefolderobserver

#endif  // SEARCHPATH_PLATFORM_FILE_FOLDER_CHANGED_EVENT_H
