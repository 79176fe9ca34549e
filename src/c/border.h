#ifndef SEARCHPATH_SRC_C_BORDER_H
#define SEARCHPATH_SRC_C_BORDER_H

#include "searchpath/c/searchpath.h"

#include <exception>
#include <memory>

namespace Corvane::PathManagement::c {

/// Says in `error`, which may be null, what is wrong, and returns what to return.
searchpath_status Fail(searchpath_status status, const char* message, searchpath_error* error);

/// What to return for the exception that is being handled.
searchpath_status FailByException(searchpath_error* error);

/// Does it. No exception gets any further, but the unwinding of a thread that is cancelled does: it is no
/// exception.
template <class Action>
searchpath_status Do(searchpath_error* error, const Action& action) try {
  action();
  return SEARCHPATH_OK;
} catch (...) {
  if (std::current_exception() == nullptr) throw;
  return FailByException(error);
}

/// Hands out what make() returns in a unique pointer.
template <class Handle, class Make>
searchpath_status HandOut(Handle** handle, searchpath_error* error, const Make& make) {
  if (handle == nullptr) return Fail(SEARCHPATH_INVALID, "nowhere to hand the result out", error);
  *handle = nullptr;
  return Do(error, [&] { *handle = make().release(); });
}

}  // namespace Corvane::PathManagement::c

#endif  // SEARCHPATH_SRC_C_BORDER_H
