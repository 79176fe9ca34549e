#ifndef SEARCHPATH_PLATFORM_CURRENT_WORKING_FOLDER_H
#define SEARCHPATH_PLATFORM_CURRENT_WORKING_FOLDER_H

#include "searchpath/model/absolute_iri.h"

namespace Corvane::current_working_folder {

enum class AbsolutizeError : std::uint32_t {
  InvalidText,
  NoWorkingFolder,
  InputOutput,
  PermissionDenied,
  Absent,
  NotAFolder,
  BrokenLink,
  LinkLoop,
  Other,
  NameTooLong
};

class FailedToAbsolutizeException : public std::exception {
 public:
  explicit FailedToAbsolutizeException(AbsolutizeError reason) : error(reason) {}

  AbsolutizeError GetReason() const { return error; }
  std::uint32_t GetErrorCode() const { return static_cast<std::uint32_t>(error); }

 private:
  AbsolutizeError error;
};

class ICurrentWorkingFolder {
 public:
  virtual ~ICurrentWorkingFolder() = default;
  virtual foundation::storage::vfs::AbsoluteIRI absolutize(const foundation::ustring&) const = 0;
};

}  // namespace Corvane::current_working_folder

#endif  // SEARCHPATH_PLATFORM_CURRENT_WORKING_FOLDER_H
