#ifndef SEARCHPATH_SRC_HOST_NAMES_SHORT_HASH_H
#define SEARCHPATH_SRC_HOST_NAMES_SHORT_HASH_H

#include "model/short_hash.h"

namespace Corvane::PathManagement::host {

using PathManagement::detail::NameBytesHash;
using PathManagement::detail::ShortHash;

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_NAMES_SHORT_HASH_H
