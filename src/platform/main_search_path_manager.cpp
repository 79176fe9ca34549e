#include "searchpath/platform/main_search_path_manager.h"

namespace Corvane::PathManagement {

RecursivePathChangeException::~RecursivePathChangeException() = default;

const char* RecursivePathChangeException::what() const noexcept {
  return "the search path is being changed; change it again when that change is done";
}

IMainSearchPathManager::~IMainSearchPathManager() = default;

}  // namespace Corvane::PathManagement
