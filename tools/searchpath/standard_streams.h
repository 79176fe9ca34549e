#ifndef SEARCHPATH_TOOLS_SEARCHPATH_STANDARD_STREAMS_H
#define SEARCHPATH_TOOLS_SEARCHPATH_STANDARD_STREAMS_H

#include "searchpath/model/ustring.h"

#include <string>
#include <string_view>

namespace Corvane::PathManagement::tool {

/// Writes `bytes` to standard output as they are. Errors: `std::system_error` when they cannot be written.
void WriteData(std::string_view bytes);

/// Flushes standard output. Errors: as `WriteData`, also for what was buffered before.
void FinishData();

/// Writes `message` to standard error, made harmless for a terminal, so that it is one line.
void Report(std::string_view message);

/// During its life nothing reaches standard output and standard error.
class SilentStreams {
 public:
  SilentStreams();
  SilentStreams(const SilentStreams&) = delete;
  SilentStreams& operator=(const SilentStreams&) = delete;
  ~SilentStreams();

 private:
  int output;  // what they were before; -1 where it was closed
  int error;
};

/// Whether a terminal would understand control sequences, as for colour.
[[nodiscard]] bool TerminalTakesCommands();

/// The bytes of a text that came from the command line or the disk.
[[nodiscard]] std::string GetBytes(const ustring& text);

/// `text` in double quotes, for a message.
[[nodiscard]] std::string Quoted(std::string_view text);
[[nodiscard]] inline std::string Quoted(const ustring& text) { return Quoted(GetBytes(text)); }

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_STANDARD_STREAMS_H
