#ifndef SEARCHPATH_HOST_DIAGNOSTIC_LOG_H
#define SEARCHPATH_HOST_DIAGNOSTIC_LOG_H

#include "searchpath/export.h"
#include "searchpath/platform/diagnostic_logger.h"
#include "searchpath/platform/filesystem.h"

#include <optional>

namespace Corvane::PathManagement::host {

// Writes the diagnostic messages of the process, each as a line with its time, thread, severity and
// logger. The host has a `Debug` message for each folder that it reads from the disk and an
// `Information` message for each cache that it reads and each index that it makes, with the time
// taken.
//
// Threads: all operations, from any thread.

/// From now on appends messages of at least the severity `least` to `file`, or writes them to
/// standard error when `file` is `nullopt`. Each line is written at once. Replaces the sink of
/// `basic_diagnostic_logger`.
///
/// Errors: `std::runtime_error` when the file cannot be opened; the old sink then stays. A message
/// that cannot be written later is lost: logging never makes an operation fail.
SEARCHPATH_EXPORT void StartDiagnosticLog(
    const std::optional<fl::filesystem::path>& file = {},
    foundation::log::Severity least = foundation::log::Severity::Debug);

/// From now on messages go nowhere.
SEARCHPATH_EXPORT void StopDiagnosticLog();

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_DIAGNOSTIC_LOG_H
