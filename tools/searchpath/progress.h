#ifndef SEARCHPATH_TOOLS_SEARCHPATH_PROGRESS_H
#define SEARCHPATH_TOOLS_SEARCHPATH_PROGRESS_H

#include <thread>

namespace Corvane::PathManagement::tool {

/// Shows on standard error for how long folders have been read. The line appears only after a
/// moment, and the destructor erases it. Nothing else may be written to the terminal while this
/// object exists. Shows nothing when `quiet`, or when standard error is no terminal.
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
