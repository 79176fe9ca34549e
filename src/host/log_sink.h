#ifndef SEARCHPATH_SRC_HOST_LOG_SINK_H
#define SEARCHPATH_SRC_HOST_LOG_SINK_H

#include "searchpath/export.h"
#include "searchpath/platform/diagnostic_logger.h"

#include <optional>
#include <string>

namespace Corvane::PathManagement::host {

/// A function that makes a sink, which appends each diagnostic message as a line to the file with
/// the native path `file`, or writes it to standard error when there is no `file`.
///
/// Errors: `std::runtime_error` when the file cannot be opened.
using LogSinkMaker = foundation::log::DiagnosticSink (*)(const std::optional<std::string>& file);

/// The function that makes sinks; never null. Where it is not part of this library, this call opens
/// the module that has it: see `FindInModule`.
///
/// Errors: `std::runtime_error` when the module cannot be opened.
extern "C" SEARCHPATH_EXPORT LogSinkMaker SearchpathLogSink();

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_LOG_SINK_H
