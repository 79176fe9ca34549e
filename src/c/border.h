#ifndef SEARCHPATH_SRC_C_BORDER_H
#define SEARCHPATH_SRC_C_BORDER_H

#include "searchpath/c/searchpath.h"

#include <exception>
#include <memory>

namespace Corvane::PathManagement::c {

/// Writes `message`, cut to what fits, to `error`, which may be null. Returns `status`.
searchpath_status Fail(searchpath_status status, const char* message, searchpath_error* error);

/// The status for the exception that is being handled. Writes its message as `Fail` does.
searchpath_status FailByException(searchpath_error* error);

/// Calls `action`, and turns an exception into a status. `catch (...)` also catches the unwinding
/// of a cancelled thread, which is no exception: it passes through.
template <class Action>
searchpath_status Do(searchpath_error* error, const Action& action) try {
  action();
  return SEARCHPATH_OK;
} catch (...) {
  if (std::current_exception() == nullptr) throw;
  return FailByException(error);
}

/// Sets `*handle` to the object that make() returns in a unique pointer, or to null on failure. A
/// null `handle` is an invalid argument.
template <class Handle, class Make>
searchpath_status HandOut(Handle** handle, searchpath_error* error, const Make& make) {
  if (handle == nullptr) return Fail(SEARCHPATH_INVALID, "nowhere to hand the result out", error);
  *handle = nullptr;
  return Do(error, [&] { *handle = make().release(); });
}

}  // namespace Corvane::PathManagement::c

#endif  // SEARCHPATH_SRC_C_BORDER_H
