#ifndef SEARCHPATH_TOOLS_PAGES_MAN_PAGE_H
#define SEARCHPATH_TOOLS_PAGES_MAN_PAGE_H

#include "described_command.h"

#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

/// The page of one command, in roff with the macros "man".
[[nodiscard]] std::string GetManPage(const DescribedCommand& command);

/// The page of searchpath itself, which names the pages of the commands.
[[nodiscard]] std::string GetMainManPage(const std::vector<DescribedCommand>& commands);

/// The name of a page: "searchpath-find".
[[nodiscard]] std::string GetPageName(const DescribedCommand& command);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_PAGES_MAN_PAGE_H
