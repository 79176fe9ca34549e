#ifndef SEARCHPATH_SRC_HOST_LOG_SINK_H
#define SEARCHPATH_SRC_HOST_LOG_SINK_H

#include "searchpath/export.h"
#include "searchpath/platform/diagnostic_logger.h"

#include <optional>
#include <string>

namespace Corvane::PathManagement::host {

/// Makes a sink that writes each diagnostic message as a line to the file `name`, or to standard
/// error when `name` is empty.
///
/// Errors: `std::runtime_error` when the file cannot be opened.
using MakeLogSink = foundation::log::DiagnosticSink (*)(const std::optional<std::string>& name);

/// The function that makes sinks. Its code may be in a module, which this call opens: see
/// `FindInModule`.
///
/// Errors: `std::runtime_error` when the module cannot be opened.
extern "C" SEARCHPATH_EXPORT MakeLogSink SearchpathLogSink();

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_LOG_SINK_H
