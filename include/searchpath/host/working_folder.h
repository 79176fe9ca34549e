#ifndef SEARCHPATH_HOST_WORKING_FOLDER_H
#define SEARCHPATH_HOST_WORKING_FOLDER_H

#include "searchpath/export.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/any_text.h"
#include "searchpath/model/ustring.h"
#include "searchpath/platform/current_working_folder.h"

#include <optional>

namespace Corvane::PathManagement::host {

/// Makes folder strings absolute on this machine's disks: native paths, relative or absolute, "~"
/// and "~user" from the user database, and the texts of "file" IRIs. Nothing else is expanded.
///
/// Threads: all operations, from any thread.
class SEARCHPATH_EXPORT WorkingFolder : public current_working_folder::ICurrentWorkingFolder {
 public:
  /// Relative texts start from the working folder that the process has at each call.
  WorkingFolder() = default;
  /// Relative texts start from `folder`.
  explicit WorkingFolder(const AbsoluteIRI& folder) : base(folder) {}

  /// As in `ICurrentWorkingFolder`. Asks the disk whether the folder exists and can be read.
  [[nodiscard]] AbsoluteIRI absolutize(const ustring& folder) const override;

  /// As `absolutize`, but the folder need not exist.
  ///
  /// Errors: `FailedToAbsolutizeException` with the reason `InvalidText`, `NoWorkingFolder`, or
  /// `Absent` for an unknown user.
  [[nodiscard]] AbsoluteIRI Locate(const AnyText& folder) const;

 private:
  std::optional<AbsoluteIRI> base;  // empty: the working folder of the process
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_WORKING_FOLDER_H
