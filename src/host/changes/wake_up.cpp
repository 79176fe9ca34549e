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
  // Fails only when the counter is full, and then the descriptor is readable already.
  static_cast<void>(eventfd_write(descriptor, 1));
}

void WakeUp::Clear() const noexcept {
  eventfd_t count = 0;  // of no interest
  static_cast<void>(eventfd_read(descriptor, &count));
}

}  // namespace Corvane::PathManagement::host
