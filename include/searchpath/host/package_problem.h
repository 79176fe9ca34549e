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
  Unreadable,       ///< the manifest cannot be read; the detail says why
  NotAFile,         ///< what has the manifest's name is not a regular file
  TooLarge,         ///< the manifest is larger than 1 MiB
  NotUtf8,          ///< the manifest has a byte that is not UTF-8
  Syntax,           ///< the manifest is not JSON
  TooDeep,          ///< the manifest is nested deeper than 32 levels
  TooManyValues,    ///< the manifest has more than 10,000 values
  RepeatedField,    ///< an object has two fields of one name
  MissingField,     ///< a required field is not there
  UnknownField,     ///< a field that manifests do not have
  WrongType,        ///< a value of another type; the detail says what was expected
  OutOfRange,       ///< a number that does not fit
  OutsideOfFolder,  ///< a pathname that leads out of the package's own folder
  InvalidFolder,    ///< neither a pathname nor an IRI; the detail says why
  Repeated,         ///< an earlier package, whose manifest is the detail, has this name and version
  TooMuch,          ///< earlier packages take all the memory that the registry may take
};

/// A package that was left out, and why. The other packages are not affected.
struct PackageProblem {
  ustring file;                     ///< the native path of its manifest
  std::optional<std::size_t> line;  ///< counted from 1; empty if the whole file is at fault
  ustring field;                    ///< such as "folders[1].tags", counted from 0; "" for none
  PackageFault fault;               ///< what is wrong
  /// More about the fault, such as the value at fault; "" when there is no more to say.
  ustring detail = {};

  /// A message: "FILE:LINE: FIELD: what is wrong", without a full stop.
  [[nodiscard]] SEARCHPATH_EXPORT ustring GetText() const;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_PACKAGE_PROBLEM_H
