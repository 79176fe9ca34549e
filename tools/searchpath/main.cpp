#include "command_line.h"
#include "command_table.h"
#include "general_help.h"
#include "output.h"
#include "searchpath/host/diagnostic_log.h"
#include "searchpath/model/byte_text.h"

#include <csignal>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <optional>
#include <string_view>

namespace Corvane::PathManagement::tool {

namespace {

Outcome Run(const std::vector<std::string>& arguments) {
  if (arguments.empty()) {
    throw UsageError("no command; type: searchpath find NAME --path \"$PATH\", or searchpath -h");
  }
  const std::string& word = arguments.front();
  if (AnswerHelp(word, GetGeneralHelp(), kGeneralExamples)) return Outcome::Done;
  if (word.starts_with('-')) {
    throw UsageError("the command comes first; type: searchpath find NAME --path \"$PATH\"");
  }
  return GetCommand(word).run({.words = {arguments.begin() + 1, arguments.end()}});
}

// A variable turns the log on, since an option would be needed in every command.
void StartLogIfAsked() {
  const char* const log = std::getenv("SEARCHPATH_LOG");
  if (log == nullptr || *log == '\0') return;
  const bool isFile = std::string_view(log) != "-";  // "-" is standard error
  host::StartDiagnosticLog(isFile ? std::optional<fl::filesystem::path>(TextFromBytes(log))
                                  : std::nullopt);  // standard error
}

}  // namespace

}  // namespace Corvane::PathManagement::tool

int main(int count, char** words) {
  using namespace Corvane::PathManagement::tool;
  // The program ends when nobody reads its output any more, even if it was started with this signal
  // ignored.
  std::signal(SIGPIPE, SIG_DFL);
  // If SIGCHLD stayed ignored, nobody could wait for the programs that are asked for their folders.
  std::signal(SIGCHLD, SIG_DFL);
  std::ios::sync_with_stdio(false);  // otherwise std::cin hides errors of reading
  try {
    StartLogIfAsked();
    // `count` is 0 when the caller has left out even the name of the program.
    const Outcome outcome = Run({words + (count > 0 ? 1 : 0), words + count});
    FinishData();
    return static_cast<int>(outcome);
  } catch (const std::exception& error) {
    Report(error.what());
    return static_cast<int>(Outcome::Failed);
  }
}
