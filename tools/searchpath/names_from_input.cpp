#include "names_from_input.h"

#include "command_line.h"
#include "output.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <string_view>
#include <system_error>
#include <vector>

namespace Corvane::PathManagement::tool {

namespace {

constexpr std::size_t kMostAtOnce = std::size_t{1} << 16U;  // what a pipe holds

/// Whether something can be read, the end included, or never will be.
bool IsInputReady() {
  pollfd input = {.fd = STDIN_FILENO, .events = POLLIN, .revents = 0};
  return poll(&input, 1, 0) != 0;
}

/// Appends what can be read to `bytes`; returns false at the end.
bool ReadInput(std::string& bytes) {
  std::vector<char> read(kMostAtOnce);
  ssize_t length = -1;
  while ((length = ::read(STDIN_FILENO, read.data(), read.size())) < 0) {
    if (errno != EINTR && errno != EAGAIN) break;
    pollfd input = {.fd = STDIN_FILENO, .events = POLLIN, .revents = 0};
    if (errno == EAGAIN) poll(&input, 1, -1);
  }
  if (length < 0) {
    throw UsageError("cannot read standard input, the names of --stdin: " +
                     std::generic_category().message(errno));
  }
  bytes.append(read.data(), static_cast<std::size_t>(length));
  return length > 0;
}

/// Visits the names on standard input that are not empty, and counts all.
class NameVisits {
 public:
  NameVisits(char nameEnd, const std::function<void(const std::string&)>& nameVisitor)
      : end(nameEnd), visitor(nameVisitor) {}

  [[nodiscard]] bool AllNamed() const noexcept { return allNamed; }

  /// Visits the names that have come to their end, and removes them from `bytes`.
  void VisitWhole(std::string& bytes) {
    std::size_t begin = 0;
    for (std::size_t at = 0; (at = bytes.find(end, begin)) != std::string::npos; begin = at + 1) {
      Visit(bytes.substr(begin, at - begin));
    }
    bytes.erase(0, begin);
  }

  void Visit(const std::string& name) {
    ++number;
    if (!name.empty()) {
      visitor(name);
      return;
    }
    allNamed = false;
    Report(std::string(end == '\0' ? "name " : "line ") + std::to_string(number) +
           " of standard input is empty, which means no file");
  }

 private:
  char end;
  const std::function<void(const std::string&)>& visitor;
  std::size_t number = 0;
  bool allNamed = true;
};

}  // namespace

bool ForEachNameFromInput(char end, const std::function<void(const std::string&)>& visitor,
                          const std::function<void()>& wait) {
  NameVisits visits(end, visitor);
  std::string bytes;
  do {
    visits.VisitWhole(bytes);
    if (!IsInputReady()) wait();
  } while (ReadInput(bytes));
  if (!bytes.empty()) visits.Visit(bytes);
  return visits.AllNamed();
}

}  // namespace Corvane::PathManagement::tool
