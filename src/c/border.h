#ifndef SEARCHPATH_SRC_C_BORDER_H
#define SEARCHPATH_SRC_C_BORDER_H

#include "searchpath/c/searchpath.h"

#include <exception>
#include <memory>

namespace Corvane::PathManagement::c {

/// Writes `message` to `error`, which may be null, and returns `status`.
searchpath_status Fail(searchpath_status status, const char* message, searchpath_error* error);

/// The status for the exception that is being handled. Writes its message to `error`.
searchpath_status FailByException(searchpath_error* error);

/// Calls `action`, and turns an exception into a status. The unwinding of a cancelled thread is no
/// exception, and passes through.
template <class Action>
searchpath_status Do(searchpath_error* error, const Action& action) try {
  action();
  return SEARCHPATH_OK;
} catch (...) {
  if (std::current_exception() == nullptr) throw;
  return FailByException(error);
}

/// Sets `*handle` to the object that make() returns in a unique pointer, or to null on failure.
template <class Handle, class Make>
searchpath_status HandOut(Handle** handle, searchpath_error* error, const Make& make) {
  if (handle == nullptr) return Fail(SEARCHPATH_INVALID, "nowhere to hand the result out", error);
  *handle = nullptr;
  return Do(error, [&] { *handle = make().release(); });
}

}  // namespace Corvane::PathManagement::c

#endif  // SEARCHPATH_SRC_C_BORDER_H
