#include "names_from_input.h"

#include "command_line.h"
#include "output.h"

#include <cerrno>
#include <cstddef>
#include <iostream>
#include <system_error>

namespace Corvane::PathManagement::tool {

bool ForEachNameFromInput(char end, const std::function<void(const std::string&)>& visitor) {
  bool allNamed = true;
  std::size_t number = 1;
  errno = 0;
  for (std::string name; std::getline(std::cin, name, end); ++number) {
    if (!name.empty()) {
      visitor(name);
      continue;
    }
    allNamed = false;
    Report(std::string(end == '\0' ? "name " : "line ") + std::to_string(number) +
           " of standard input is empty, which means no file");
  }
  if (std::cin.eof() && !std::cin.bad()) return allNamed;
  throw UsageError("cannot read standard input, the names of --stdin: " +
                   std::generic_category().message(errno));
}

}  // namespace Corvane::PathManagement::tool
