#ifndef SEARCHPATH_PLATFORM_CURRENT_WORKING_FOLDER_H
#define SEARCHPATH_PLATFORM_CURRENT_WORKING_FOLDER_H

#include "searchpath/export.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/ustring.h"

#include <cstdint>
#include <exception>

namespace Corvane::current_working_folder {

/// Why a folder string has no absolute location. The numbers never change.
enum class AbsolutizeError : std::uint32_t {
  InvalidText = 0,       ///< neither a pathname nor an IRI of a supported scheme
  NoWorkingFolder = 1,   ///< a relative pathname, and the working folder is gone
  InputOutput = 2,       ///< the disk reported an error
  PermissionDenied = 3,  ///< the folder, or one above it, may not be read
  Absent = 4,            ///< there is nothing of that name
  NotAFolder = 5,        ///< a file, or a pathname that leads through a file
  BrokenLink = 6,        ///< a link whose target is absent
  LinkLoop = 7,          ///< links that lead to each other
  Other = 8,             ///< the system reported any other error
  NameTooLong = 9,       ///< the pathname or a part of it is too long for the file system
  NoAnswer = 10,         ///< the disk did not answer in time
};

/// Raised when a folder string has no absolute location.
class SEARCHPATH_EXPORT FailedToAbsolutizeException : public std::exception {
 public:
  /// For those who implement `absolutize`.
  explicit FailedToAbsolutizeException(AbsolutizeError reason) noexcept : error(reason) {}
  FailedToAbsolutizeException(const FailedToAbsolutizeException&) = default;
  FailedToAbsolutizeException& operator=(const FailedToAbsolutizeException&) = default;
  ~FailedToAbsolutizeException() override;

  /// Why there is no absolute location.
  [[nodiscard]] AbsolutizeError GetReason() const noexcept { return error; }

  /// The number of the reason.
  [[nodiscard]] std::uint32_t GetErrorCode() const noexcept {
    return static_cast<std::uint32_t>(error);
  }

  /// Says what is wrong, without the folder: "no such folder".
  [[nodiscard]] const char* what() const noexcept override;

 private:
  AbsolutizeError error;
};

/// Turns the folder strings that users type into locations.
///
/// Threads: `absolutize` may be called from several threads at once.
class SEARCHPATH_EXPORT ICurrentWorkingFolder {
 public:
  virtual ~ICurrentWorkingFolder();

  /// The location of `folder`, which is an absolute pathname, a pathname relative to the working
  /// folder, a pathname that begins with "~", or the text of an IRI.
  ///
  /// Errors: `FailedToAbsolutizeException` unless the folder exists and can be read.
  [[nodiscard]] virtual foundation::storage::vfs::AbsoluteIRI absolutize(
      const foundation::ustring& folder) const = 0;

 protected:
  ICurrentWorkingFolder() = default;
  ICurrentWorkingFolder(const ICurrentWorkingFolder&) = default;
  ICurrentWorkingFolder& operator=(const ICurrentWorkingFolder&) = default;
};

}  // namespace Corvane::current_working_folder

#endif  // SEARCHPATH_PLATFORM_CURRENT_WORKING_FOLDER_H
