#ifndef SEARCHPATH_SRC_MODEL_HELD_HASH_H
#define SEARCHPATH_SRC_MODEL_HELD_HASH_H

#include "searchpath/model/absolute_iri.h"

#include <cstddef>

namespace Corvane::PathManagement::detail {

/// For hash tables of locations: each location already holds its hash.
struct HeldHash {
  using is_avalanching = void;  // all bits of the hash are good, so tables need not mix them
  std::size_t operator()(const AbsoluteIRI& iri) const noexcept { return hash_value(iri); }
};

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_MODEL_HELD_HASH_H
