#ifndef SEARCHPATH_SRC_HOST_COMMON_HELD_HASH_H
#define SEARCHPATH_SRC_HOST_COMMON_HELD_HASH_H

#include "model/held_hash.h"

namespace Corvane::PathManagement::host {

using PathManagement::detail::HeldHash;

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_COMMON_HELD_HASH_H
