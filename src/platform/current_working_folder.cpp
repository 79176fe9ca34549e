#include "searchpath/platform/current_working_folder.h"

#include <array>

namespace Corvane::current_working_folder {

FailedToAbsolutizeException::~FailedToAbsolutizeException() = default;

const char* FailedToAbsolutizeException::what() const noexcept {
  // Indexed by `AbsolutizeError`.
  static constexpr std::array kTexts = {"neither a pathname nor the IRI of a folder on disk",
                                        "relative, and there is no working folder",
                                        "input/output error",
                                        "permission denied",
                                        "no such folder",
                                        "not a folder",
                                        "a link to nothing",
                                        "a loop of links",
                                        "cannot be used as a folder",
                                        "name too long",
                                        "no answer in time"};
  const auto other = static_cast<std::uint32_t>(AbsolutizeError::Other);
  return kTexts[GetErrorCode() < kTexts.size() ? GetErrorCode() : other];
}

ICurrentWorkingFolder::~ICurrentWorkingFolder() = default;

}  // namespace Corvane::current_working_folder
