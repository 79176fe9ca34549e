#ifndef SEARCHPATH_TOOLS_SEARCHPATH_ANSWER_RECORD_H
#define SEARCHPATH_TOOLS_SEARCHPATH_ANSWER_RECORD_H

#include "searchpath/host/receipt.h"

#include <optional>
#include <string>

namespace Corvane::PathManagement::tool {

class CommandLine;

/// Which files about the answers find writes.
struct RecordOptions {
  std::optional<std::string> receipt;
  std::optional<std::string> depfile;
  std::optional<std::string> target;  // of the rule in the depfile

  void AddTo(CommandLine& commandLine);

  /// Errors: `UsageError` when options that belong together are not given together.
  void Check() const;

  [[nodiscard]] bool WriteAnything() const { return receipt || depfile; }
};

/// The receipt that is kept in `file`.
///
/// Errors: `UsageError`, which says what is wrong with the file.
[[nodiscard]] host::Receipt ReadReceipt(const std::string& file);

/// Writes what the options ask for.
///
/// Errors: `std::system_error`; `UsageError` when the target cannot be written.
void WriteRecord(const RecordOptions& options, const host::Receipt& receipt);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_ANSWER_RECORD_H
