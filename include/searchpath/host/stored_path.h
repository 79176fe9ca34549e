#ifndef SEARCHPATH_HOST_STORED_PATH_H
#define SEARCHPATH_HOST_STORED_PATH_H

#include "searchpath/export.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/platform/filesystem.h"

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace Corvane::PathManagement::host {

/// A line of a stored path is neither an absolute path nor a "file" IRI. The message names it.
class SEARCHPATH_EXPORT InvalidStoredPathException : public std::runtime_error {
 public:
  /// `explanation` is the message.
  explicit InvalidStoredPathException(const std::string& explanation);
  InvalidStoredPathException(const InvalidStoredPathException&) = default;
  InvalidStoredPathException& operator=(const InvalidStoredPathException&) = default;
  ~InvalidStoredPathException() override;
};

/// The folders of a search path in a text file, so that they outlive the program.
///
/// Each line holds a native path, which begins with "/" or "~", or a "file" IRI; empty lines are
/// ignored. A folder whose name has a line break is written as an IRI, which escapes it.
///
/// Threads: all operations, from any thread and any process. A reader gets the whole list, before
/// or after a change. Changes wait for one another, so that none is lost: each locks a second file,
/// named like the list with ".lock" at the end, which is never removed.
/// Errors: `std::system_error` for those of the disk; `InvalidStoredPathException`.
class SEARCHPATH_EXPORT StoredPath {
 public:
  /// Folders in path order.
  using Folders = std::vector<AbsoluteIRI>;

  /// The path that `listFile` holds. Reads nothing yet; the file need not exist.
  explicit StoredPath(const fl::filesystem::path& listFile) : file(listFile) {}

  /// "searchpath/path" in the user's configuration folder: $XDG_CONFIG_HOME if that is an absolute
  /// path, or else ~/.config.
  ///
  /// Errors: `FailedToAbsolutizeException` when "~" is needed and the user has no home.
  [[nodiscard]] static fl::filesystem::path GetDefaultFile();

  /// The file that holds the path.
  [[nodiscard]] const fl::filesystem::path& GetFile() const noexcept { return file; }

  /// The folders in the file, in path order; nullopt when there is no file.
  [[nodiscard]] std::optional<Folders> Read() const;

  /// Replaces the folders by change(folders); without a file `change` gets an empty list. The lines
  /// of folders that stay are kept as they were written. Makes the file, and the folders above it,
  /// when they do not exist. Where the file is a link, the link stays, and the file that it leads
  /// to is replaced.
  ///
  /// Precondition: `change` does not itself call `Change` for this file.
  /// Errors: also what `change` throws, and `std::invalid_argument` when it returns a folder that is
  /// no "file" IRI. The file is then as it was.
  void Change(const std::function<Folders(const Folders&)>& change) const;

 private:
  fl::filesystem::path file;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_STORED_PATH_H
