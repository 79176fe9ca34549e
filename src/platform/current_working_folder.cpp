#include "searchpath/platform/current_working_folder.h"

namespace Corvane::current_working_folder {

FailedToAbsolutizeException::~FailedToAbsolutizeException() = default;

const char* FailedToAbsolutizeException::what() const noexcept {
  switch (error) {
    case AbsolutizeError::InvalidText:
      return "not a pathname or an IRI that names a folder here";
    case AbsolutizeError::NoWorkingFolder:
      return "relative, and there is no working folder";
    case AbsolutizeError::InputOutput:
      return "input/output error";
    case AbsolutizeError::PermissionDenied:
      return "permission denied";
    case AbsolutizeError::Absent:
      return "no such folder";
    case AbsolutizeError::NotAFolder:
      return "not a folder";
    case AbsolutizeError::BrokenLink:
      return "a link to nothing";
    case AbsolutizeError::LinkLoop:
      return "a loop of links";
    case AbsolutizeError::NameTooLong:
      return "name too long";
    case AbsolutizeError::Other:
      break;
  }
  return "cannot be used as a folder";
}

ICurrentWorkingFolder::~ICurrentWorkingFolder() = default;

}  // namespace Corvane::current_working_folder
