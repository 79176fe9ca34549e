// searchpath_pages FOLDER: writes the pages of the manual and the files that shells read for
// completion into FOLDER, in the layout of share/ where the tool is installed. Of the files that
// are there before, only pages of commands are removed.
#include "completions.h"
#include "man_page.h"

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <system_error>

namespace Corvane::PathManagement::tool {

namespace {

void Write(const std::filesystem::path& file, const std::string& text) {
  std::filesystem::create_directories(file.parent_path());
  std::ofstream stream(file);
  stream << text << std::flush;
  if (!stream) throw std::runtime_error("cannot write " + file.string());
}

// Removes the pages of commands, since some may be of commands that no longer exist.
void RemovePages(const std::filesystem::path& folder) {
  std::error_code missing;  // when there is no folder, there are no pages
  for (const auto& file : std::filesystem::directory_iterator(folder, missing)) {
    const std::string name = file.path().filename();
    if (name.starts_with("searchpath-") && name.ends_with(".1")) {
      std::filesystem::remove(file.path());
    }
  }
}

void WriteAll(const std::filesystem::path& folder) {
  const auto commands = DescribeCommands();
  RemovePages(folder / "man/man1");
  Write(folder / "man/man1/searchpath.1", GetMainManPage(commands));
  for (const DescribedCommand& command : commands) {
    Write(folder / "man/man1" / (GetPageName(command) + ".1"), GetManPage(command));
  }
  Write(folder / "bash-completion/completions/searchpath", GetBashCompletion(commands));
  Write(folder / "zsh/site-functions/_searchpath", GetZshCompletion(commands));
  Write(folder / "fish/vendor_completions.d/searchpath.fish", GetFishCompletion(commands));
}

}  // namespace

}  // namespace Corvane::PathManagement::tool

int main(int count, char** words) {
  try {
    if (count != 2) throw std::runtime_error("usage: searchpath_pages FOLDER");
    Corvane::PathManagement::tool::WriteAll(words[1]);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "searchpath_pages: " << error.what() << '\n';
    return 2;
  }
}
