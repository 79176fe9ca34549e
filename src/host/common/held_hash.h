#ifndef SEARCHPATH_SRC_HOST_COMMON_HELD_HASH_H
#define SEARCHPATH_SRC_HOST_COMMON_HELD_HASH_H

#include "searchpath/model/absolute_iri.h"

#include <cstddef>

namespace Corvane::PathManagement::host {

/// For tables of locations: the hash that each holds.
struct HeldHash {
  using is_avalanching = void;
  std::size_t operator()(const AbsoluteIRI& iri) const noexcept { return hash_value(iri); }
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_COMMON_HELD_HASH_H
