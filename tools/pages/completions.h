#ifndef SEARCHPATH_TOOLS_PAGES_COMPLETIONS_H
#define SEARCHPATH_TOOLS_PAGES_COMPLETIONS_H

#include "described_command.h"

#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

// Each function returns the file that its shell reads to complete the words after "searchpath".

[[nodiscard]] std::string GetBashCompletion(const std::vector<DescribedCommand>& commands);
[[nodiscard]] std::string GetZshCompletion(const std::vector<DescribedCommand>& commands);
[[nodiscard]] std::string GetFishCompletion(const std::vector<DescribedCommand>& commands);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_PAGES_COMPLETIONS_H
