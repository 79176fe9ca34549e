#ifndef SEARCHPATH_HOST_PACKAGE_PROBLEM_H
#define SEARCHPATH_HOST_PACKAGE_PROBLEM_H

#include "searchpath/export.h"
#include "searchpath/model/ustring.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace Corvane::PathManagement::host {

/// What is wrong with a package.
enum class PackageFault : std::uint8_t {
  Unreadable,       ///< the disk refuses the manifest; the detail says why
  NotAFile,         ///< something else than a regular file has the manifest's name
  TooLarge,         ///< the manifest is larger than 1 MiB
  NotUtf8,          ///< the manifest has a byte that is not UTF-8
  Syntax,           ///< the manifest is not JSON
  TooDeep,          ///< nested deeper than 32 levels
  TooManyValues,    ///< more than 10,000 values
  RepeatedField,    ///< an object has two fields of one name
  MissingField,     ///< a field that every package has is not there
  UnknownField,     ///< a field that no package has
  WrongType,        ///< the detail says what was expected
  OutOfRange,       ///< a number that does not fit
  OutsideOfFolder,  ///< a pathname that is not one below the package's own folder
  InvalidFolder,    ///< neither a pathname nor an IRI; the detail says why
  Repeated,         ///< the detail is the manifest of the package that has this name and version
  TooMuch,          ///< the packages before it fill the registry
};

/// A package that was left out, and why. The others are there.
struct PackageProblem {
  ustring file;                     ///< the native path of its manifest
  std::optional<std::size_t> line;  ///< from 1 on; empty when the file as a whole is meant
  ustring field;                    ///< "folders[1].tags", counted from 0; "" when it is none
  PackageFault fault;
  ustring detail = {};

  /// All of it in words, "FILE:LINE: FIELD: what is wrong", without a full stop.
  [[nodiscard]] SEARCHPATH_EXPORT ustring GetText() const;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_PACKAGE_PROBLEM_H
