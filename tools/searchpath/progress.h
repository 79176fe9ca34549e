#ifndef SEARCHPATH_TOOLS_SEARCHPATH_PROGRESS_H
#define SEARCHPATH_TOOLS_SEARCHPATH_PROGRESS_H

#include <thread>

namespace Corvane::PathManagement::tool {

/// Shows on the terminal that folders are read, once it has existed for a while. Nothing else may be
/// written during its life; at its end the line is gone. Without a terminal it shows nothing.
class Progress {
 public:
  explicit Progress(bool quiet);

 private:
  std::jthread thread;  // none where there is nobody to read it
};

/// What `read` returns, with progress shown meanwhile.
template <class Read>
[[nodiscard]] auto WithProgress(bool quiet, const Read& read) {
  const Progress progress(quiet);
  return read();
}

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_PROGRESS_H
