#include "searchpath/host/wake_up.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace Corvane::PathManagement::host {

WakeUp::WakeUp() : descriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (descriptor < 0) throw std::system_error(errno, std::generic_category(), "cannot watch");
}

WakeUp::~WakeUp() { close(descriptor); }

void WakeUp::Set() const noexcept {
  static_cast<void>(eventfd_write(descriptor, 1));  // fails only where it is set already
}

void WakeUp::Clear() const noexcept {
  eventfd_t count = 0;
  static_cast<void>(eventfd_read(descriptor, &count));
}

}  // namespace Corvane::PathManagement::host
