#ifndef SEARCHPATH_HOST_DEPFILE_H
#define SEARCHPATH_HOST_DEPFILE_H

#include "searchpath/export.h"
#include "searchpath/host/receipt.h"
#include "searchpath/model/ustring.h"

#include <ostream>
#include <vector>

namespace Corvane::PathManagement::host {

/// Writes a rule, as make and ninja read it, that makes `target` depend on the files that the names
/// of the receipt mean, and on every folder in which another file could come to be meant. For a
/// folder that does not exist, it is the nearest one above that does: a dependency that is not there
/// would lead to a build each time. Each file has an empty rule of its own as well, so that its
/// removal leads to a build and not to an error.
///
/// Returns the paths that cannot be written. Make and ninja have no common spelling for blanks but " "
/// and for most of the characters that mean something to a shell. The folder is written in place of
/// such a file.
///
/// Errors: those of the stream; `std::invalid_argument` when `target` is such a name.
[[nodiscard]] SEARCHPATH_EXPORT std::vector<ustring> WriteDepfile(std::ostream& stream,
                                                                  const ustring& target,
                                                                  const Receipt& receipt);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_DEPFILE_H
