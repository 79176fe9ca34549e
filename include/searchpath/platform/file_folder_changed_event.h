#ifndef SEARCHPATH_PLATFORM_FILE_FOLDER_CHANGED_EVENT_H
#define SEARCHPATH_PLATFORM_FILE_FOLDER_CHANGED_EVENT_H

#include "searchpath/export.h"
#include "searchpath/model/ustring.h"
#include "searchpath/platform/event_manager.h"

#include <cstdint>
#include <memory>

namespace storage::filefolderobserver {

/// Which locations an event covers.
enum class FrozenInclusion : std::uint32_t {
  LocationItself = 0,  ///< the file or folder alone, nothing below it
};

/// A file or folder may have changed.
class SEARCHPATH_EXPORT FileFolderChangedEvent : public foundation::msg_svc::eventmgr::Event {
 public:
  /// `changedLocation` is the text of an IRI.
  FileFolderChangedEvent(const foundation::ustring& changedLocation,
                         FrozenInclusion whichLocations);
  FileFolderChangedEvent(const FileFolderChangedEvent&) = default;
  FileFolderChangedEvent& operator=(const FileFolderChangedEvent&) = default;
  ~FileFolderChangedEvent() override;

  /// As of any `Event`.
  [[nodiscard]] std::unique_ptr<Event> clone() const override;

  /// The location, as it was given.
  [[nodiscard]] const foundation::ustring& GetLocation() const noexcept { return location; }
  /// Which locations the event covers.
  [[nodiscard]] FrozenInclusion GetInclusion() const noexcept { return inclusion; }

 private:
  foundation::ustring location;  // the text of an IRI
  FrozenInclusion inclusion;
};

}  // namespace storage::filefolderobserver

#endif  // SEARCHPATH_PLATFORM_FILE_FOLDER_CHANGED_EVENT_H
