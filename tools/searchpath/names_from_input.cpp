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

constexpr std::size_t kMostAtOnce = std::size_t{1} << 16U;  // bytes: what a pipe holds

/// Whether reading would not block: there are bytes, the end or an error.
bool IsInputReady() {
  pollfd input = {.fd = STDIN_FILENO, .events = POLLIN, .revents = 0};
  return poll(&input, 1, /*timeout=*/0) != 0;
}

/// Appends what can be read to `bytes`, waiting for it if need be. Returns false at the end.
bool ReadInput(std::string& bytes) {
  std::vector<char> buffer(kMostAtOnce);
  ssize_t length = -1;
  while ((length = read(STDIN_FILENO, buffer.data(), buffer.size())) < 0) {
    if (errno != EINTR && errno != EAGAIN) break;
    pollfd input = {.fd = STDIN_FILENO, .events = POLLIN, .revents = 0};
    // After EAGAIN, standard input is non-blocking: `read` has not waited.
    if (errno == EAGAIN) poll(&input, 1, /*timeout=*/-1);
  }
  if (length < 0) {
    throw UsageError("cannot read standard input, the names of --stdin: " +
                     std::generic_category().message(errno));
  }
  bytes.append(buffer.data(), static_cast<std::size_t>(length));
  return length > 0;
}

/// Visits the names that are not empty. Counts all names, for the message about an empty one.
class NameVisits {
 public:
  NameVisits(char nameEnd, const std::function<void(const std::string&)>& nameVisitor)
      : end(nameEnd), visitor(nameVisitor) {}

  [[nodiscard]] bool NoneEmpty() const noexcept { return noneEmpty; }

  /// Visits the names in `bytes` that are complete, and removes them from `bytes`.
  void VisitComplete(std::string& bytes) {
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
    noneEmpty = false;
    Report(std::string(end == '\0' ? "name " : "line ") + std::to_string(number) +
           " of standard input is empty, which means no file");
  }

 private:
  char end;
  const std::function<void(const std::string&)>& visitor;
  std::size_t number = 0;  // of the last name, empty or not; the first is 1
  bool noneEmpty = true;
};

}  // namespace

bool ForEachNameFromInput(char end, const std::function<void(const std::string&)>& visitor,
                          const std::function<void()>& beforeWait) {
  NameVisits visits(end, visitor);
  std::string bytes;
  do {
    visits.VisitComplete(bytes);
    if (!IsInputReady()) beforeWait();
  } while (ReadInput(bytes));
  if (!bytes.empty()) visits.Visit(bytes);  // the last name may lack its end
  return visits.NoneEmpty();
}

}  // namespace Corvane::PathManagement::tool
