#ifndef SEARCHPATH_TOOLS_SEARCHPATH_STANDARD_STREAMS_H
#define SEARCHPATH_TOOLS_SEARCHPATH_STANDARD_STREAMS_H

#include "searchpath/model/ustring.h"

#include <string>
#include <string_view>

namespace Corvane::PathManagement::tool {

/// Writes `bytes` to standard output as they are.
///
/// Errors: `std::system_error` when they cannot be written.
void WriteData(std::string_view bytes);

/// Flushes standard output. Errors: as `WriteData`, also for bytes that were only buffered before.
void FinishData();

/// Writes "searchpath: " and `message` to standard error, as one line that is harmless on a
/// terminal.
void Report(std::string_view message);

/// During its life, what is written to standard output and standard error is dropped.
///
/// Errors: `std::system_error` when /dev/null cannot be opened.
class SilentStreams {
 public:
  SilentStreams();
  SilentStreams(const SilentStreams&) = delete;
  SilentStreams& operator=(const SilentStreams&) = delete;
  ~SilentStreams();

 private:
  // Copies of the former descriptors; -1 where one was closed.
  int output;
  int error;
};

/// Whether, by $TERM, the terminal understands control sequences, such as those for colour.
[[nodiscard]] bool TerminalTakesCommands();

/// The bytes of a text that came from the command line or the disk.
[[nodiscard]] std::string GetBytes(const ustring& text);

/// `text` in double quotes, for a message.
[[nodiscard]] std::string Quoted(std::string_view text);
[[nodiscard]] inline std::string Quoted(const ustring& text) { return Quoted(GetBytes(text)); }

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_STANDARD_STREAMS_H
