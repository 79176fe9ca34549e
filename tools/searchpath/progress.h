#ifndef SEARCHPATH_TOOLS_SEARCHPATH_PROGRESS_H
#define SEARCHPATH_TOOLS_SEARCHPATH_PROGRESS_H

#include <thread>

namespace Corvane::PathManagement::tool {

/// Shows on the terminal for how long folders have been read. It appears only after a moment, and
/// its destructor erases it. Nothing else may be written to the terminal during its life. Shows
/// nothing when `quiet`, or without a terminal.
class Progress {
 public:
  explicit Progress(bool quiet);

 private:
  std::jthread thread;  // not running when nothing is shown
};

/// Returns what `read` returns, and shows progress while it runs.
template <class Read>
[[nodiscard]] auto WithProgress(bool quiet, const Read& read) {
  const Progress progress(quiet);
  return read();
}

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_PROGRESS_H
