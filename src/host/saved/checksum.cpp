#include "host/saved/checksum.h"

// The hash is linked, not compiled in here (XXH_INLINE_ALL): the dispatching version in the library
// chooses the widest registers that the processor has.
#include <xxhash.h>
#ifdef SEARCHPATH_XXHASH_CHOOSES
#include <xxh_x86dispatch.h>
#endif

namespace Corvane::PathManagement::host {

std::uint64_t Checksum(std::string_view bytes) noexcept {
  return XXH3_64bits(bytes.data(), bytes.size());
}

}  // namespace Corvane::PathManagement::host
