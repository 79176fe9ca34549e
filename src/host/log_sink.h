#ifndef SEARCHPATH_SRC_HOST_LOG_SINK_H
#define SEARCHPATH_SRC_HOST_LOG_SINK_H

#include "searchpath/export.h"
#include "searchpath/platform/diagnostic_logger.h"

#include <optional>
#include <string>

namespace Corvane::PathManagement::host {

/// Makes a sink for diagnostic messages that writes a line for each to the file `name`, or to
/// standard error when that is empty.
///
/// Errors: `std::runtime_error` when the file cannot be opened.
using MakeLogSink = foundation::log::DiagnosticSink (*)(const std::optional<std::string>& name);

/// The code may be in a module that is opened by this call, see `FindInModule`.
///
/// Errors: `std::runtime_error` when that module cannot be opened.
extern "C" SEARCHPATH_EXPORT MakeLogSink SearchpathLogSink();

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_LOG_SINK_H
