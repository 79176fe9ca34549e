#ifndef SEARCHPATH_HOST_DIAGNOSTIC_LOG_H
#define SEARCHPATH_HOST_DIAGNOSTIC_LOG_H

#include "searchpath/export.h"
#include "searchpath/platform/diagnostic_logger.h"
#include "searchpath/platform/filesystem.h"

#include <optional>

namespace Corvane::PathManagement::host {

// Makes itself the sink of all diagnostic messages of the process: each becomes a line with its
// time, thread, severity and logger. The host tells as `Debug` which folders it reads from the disk
// and as `Information` which caches and indexes it makes, each with the time that it took.
//
// Threads: all operations, from any thread.

/// Appends messages of at least the severity `least` to `file`, from now on; to standard error when
/// there is none. Each line is written at once.
///
/// Errors: `std::runtime_error` when the file cannot be opened; the sink is then what it was. What
/// cannot be written later is lost: logging never makes an operation fail.
SEARCHPATH_EXPORT void StartDiagnosticLog(
    const std::optional<fl::filesystem::path>& file = {},
    foundation::log::Severity least = foundation::log::Severity::Debug);

/// From now on there is no sink.
SEARCHPATH_EXPORT void StopDiagnosticLog();

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_DIAGNOSTIC_LOG_H
