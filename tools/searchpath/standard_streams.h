#ifndef SEARCHPATH_TOOLS_SEARCHPATH_STANDARD_STREAMS_H
#define SEARCHPATH_TOOLS_SEARCHPATH_STANDARD_STREAMS_H

#include "searchpath/model/ustring.h"

#include <string>
#include <string_view>

namespace Corvane::PathManagement::tool {

/// Writes `bytes` to standard output as they are. The last ones may stay in its buffer.
///
/// Errors: `std::system_error` when they cannot be written.
void WriteData(std::string_view bytes);

/// Writes what is left in the buffer of standard output. Errors: as `WriteData`.
void FinishData();

/// Writes "searchpath: " and `message` to standard error, as one line that is harmless on a
/// terminal.
void Report(std::string_view message);

/// While it exists, all that is written to standard output and standard error is dropped.
///
/// Errors: `std::system_error` when /dev/null cannot be opened.
class SilentStreams {
 public:
  SilentStreams();
  SilentStreams(const SilentStreams&) = delete;
  SilentStreams& operator=(const SilentStreams&) = delete;
  ~SilentStreams();

 private:
  // Copies of the two descriptors as they were before; -1 for one that was closed.
  int output;
  int error;
};

/// Whether, by $TERM, the terminal understands escape sequences, such as those for colour.
[[nodiscard]] bool TerminalTakesEscapeSequences();

/// The bytes of `text`, which came from bytes, such as those of the command line or a file name.
[[nodiscard]] std::string GetBytes(const ustring& text);

/// `text` in double quotes, for a message.
[[nodiscard]] std::string Quoted(std::string_view text);
[[nodiscard]] inline std::string Quoted(const ustring& text) { return Quoted(GetBytes(text)); }

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_STANDARD_STREAMS_H
