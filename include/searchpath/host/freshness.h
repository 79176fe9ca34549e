#ifndef SEARCHPATH_HOST_FRESHNESS_H
#define SEARCHPATH_HOST_FRESHNESS_H

#include <cstdint>

namespace Corvane::PathManagement::host {

/// Whether a folder on disk is still as its listing says.
enum class Freshness : std::uint8_t {
  Fresh,    ///< nothing was added, removed or renamed since the listing
  Stale,    ///< something was, or another folder has taken its place
  Gone,     ///< there is no folder any more, or it may not be read
  Unknown,  ///< there is no listing, or it was made within two seconds after a change: a further
            ///< change might have got the same time stamp
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_FRESHNESS_H
