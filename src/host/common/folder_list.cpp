#include "searchpath/host/folder_list.h"

#include "searchpath/model/byte_text.h"

#include <istream>
#include <string>

namespace Corvane::PathManagement::host {

std::vector<ustring> ReadFolderList(std::istream& list) {
  std::vector<ustring> folders;
  for (std::string line; std::getline(list, line);) {
    if (!line.empty()) folders.push_back(TextFromBytes(line));
  }
  return folders;
}

}  // namespace Corvane::PathManagement::host
