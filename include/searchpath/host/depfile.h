#ifndef SEARCHPATH_HOST_DEPFILE_H
#define SEARCHPATH_HOST_DEPFILE_H

#include "searchpath/export.h"
#include "searchpath/host/receipt.h"
#include "searchpath/model/ustring.h"

#include <ostream>
#include <vector>

namespace Corvane::PathManagement::host {

/// Writes a rule, as make and ninja read it, that makes `target` depend on the files that the names
/// of the receipt mean, and on every folder where a new file could take their place. A folder that
/// does not exist would lead to a build each time, so the nearest existing folder above it is
/// written instead. Each file and each folder has an empty rule of its own as well, so that its
/// removal leads to a build and not to an error.
///
/// Returns the paths that cannot be written: make and ninja have no common spelling for blanks
/// other than " ", nor for most of the characters that mean something to a shell. In place of a
/// file with such a path, its folder is written.
///
/// Errors: those of the stream; `std::invalid_argument` when `target` is empty or cannot be
/// written.
[[nodiscard]] SEARCHPATH_EXPORT std::vector<ustring> WriteDepfile(std::ostream& stream,
                                                                  const ustring& target,
                                                                  const Receipt& receipt);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_DEPFILE_H
