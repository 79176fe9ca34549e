#ifndef SEARCHPATH_TOOLS_SEARCHPATH_ANSWER_RECORD_H
#define SEARCHPATH_TOOLS_SEARCHPATH_ANSWER_RECORD_H

#include "searchpath/host/receipt.h"

#include <optional>
#include <string>

namespace Corvane::PathManagement::tool {

class CommandLine;

/// The options with which find writes files about its answers; without them, it writes none.
struct RecordOptions {
  std::optional<std::string> receipt;  // the file for the answers and what they rest on
  std::optional<std::string> depfile;  // the file for a rule for make or ninja
  std::optional<std::string> target;   // what that rule is for

  void AddTo(CommandLine& commandLine);

  /// Errors: `UsageError` when `depfile` or `target` is given without the other.
  void Check() const;

  /// Whether the options name a file to write.
  [[nodiscard]] bool WritesFiles() const { return receipt || depfile; }
};

/// The receipt that is kept in `file`.
///
/// Errors: `UsageError`, which says what is wrong with the file.
[[nodiscard]] host::Receipt ReadReceipt(const std::string& file);

/// Writes the files that the options name. Reports paths that a depfile cannot hold.
///
/// Precondition: `options.Check()` has passed.
/// Errors: `std::system_error`; `UsageError` when a depfile cannot hold the name of the target.
void WriteRecord(const RecordOptions& options, const host::Receipt& receipt);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_ANSWER_RECORD_H
