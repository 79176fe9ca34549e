#ifndef SEARCHPATH_HOST_FOLDER_PROBLEM_H
#define SEARCHPATH_HOST_FOLDER_PROBLEM_H

#include "searchpath/model/ustring.h"
#include "searchpath/platform/current_working_folder.h"

namespace Corvane::PathManagement::host {

/// A folder that could not be searched, and why. It counts as empty; the other folders of the path
/// are searched.
struct FolderProblem {
  /// The folder as users read it: as it was typed, or its native path.
  ustring folder;
  current_working_folder::AbsolutizeError reason;  ///< why it could not be searched

  /// Why, in words, without the folder: "no such folder".
  [[nodiscard]] const char* GetText() const noexcept {
    // `what` returns a string literal, which outlives the exception.
    return current_working_folder::FailedToAbsolutizeException(reason).what();
  }
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_FOLDER_PROBLEM_H
