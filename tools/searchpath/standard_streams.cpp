#include "standard_streams.h"

#include "searchpath/model/byte_text.h"
#include "text_for_terminal.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <system_error>

namespace Corvane::PathManagement::tool {

namespace {

void Check(bool written) {
  if (!written) {
    throw std::system_error(errno, std::generic_category(), "cannot write standard output");
  }
}

[[noreturn]] void RefuseToSilence() {
  throw std::system_error(errno, std::generic_category(), "--exit-code: cannot open /dev/null");
}

// Makes `descriptor` lead to /dev/null. Returns a copy that leads where it led before; -1 when
// `descriptor` was closed, which the error EBADF says.
int Silence(int descriptor) {
  // The copy must not take the number of a standard stream that is closed.
  const int before = fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  if (before < 0 && errno != EBADF) RefuseToSilence();
  const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
  if (nowhere < 0) RefuseToSilence();
  if (nowhere != descriptor) {  // if it was closed, `open` may have given out its number
    dup2(nowhere, descriptor);
    close(nowhere);
  }
  return before;
}

// Undoes `Silence(descriptor)`, which returned `before`.
void Restore(int descriptor, int before) {
  if (before < 0) {
    close(descriptor);
    return;
  }
  dup2(before, descriptor);
  close(before);
}

}  // namespace

void WriteData(std::string_view bytes) {
  Check(std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size());
}

void FinishData() { Check(std::fflush(stdout) == 0); }

void Report(std::string_view message) {
  const std::string line = "searchpath: " + GetTextForTerminal(message) + '\n';
  std::fwrite(line.data(), 1, line.size(), stderr);  // an error here could not be reported
}

SilentStreams::SilentStreams() : output(Silence(STDOUT_FILENO)), error(Silence(STDERR_FILENO)) {}

SilentStreams::~SilentStreams() {
  // Drops what is buffered, while the stream still leads to /dev/null; `stderr` has no buffer.
  std::fflush(stdout);
  Restore(STDOUT_FILENO, output);
  Restore(STDERR_FILENO, error);
}

bool TerminalTakesEscapeSequences() {
  const char* const terminal = std::getenv("TERM");
  return terminal != nullptr && *terminal != '\0' && std::string_view(terminal) != "dumb";
}

std::string GetBytes(const ustring& text) { return BytesFromText(text).value(); }

std::string Quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

}  // namespace Corvane::PathManagement::tool
