#ifndef SEARCHPATH_SRC_HOST_CHANGES_FOLDER_POLL_H
#define SEARCHPATH_SRC_HOST_CHANGES_FOLDER_POLL_H

#include "host/common/held_hash.h"
#include "searchpath/model/absolute_iri.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <array>
#include <cstdint>
#include <vector>

namespace Corvane::PathManagement::host {

/// Finds changed folders and files by comparing their times with those of the previous poll.
///
/// Threads: not synchronised.
class FolderPoll {
 public:
  /// Polls `locations` from now on, and no others. One that was polled before is still compared
  /// with its last times; a new one counts as changed at the next poll.
  void Set(const std::vector<AbsoluteIRI>& locations);

  [[nodiscard]] bool IsEmpty() const noexcept { return states.empty(); }

  /// The locations that may have changed since the previous poll. A location that had changed less
  /// than two seconds before that poll is among them: its times may be too coarse to show a further
  /// change.
  [[nodiscard]] std::vector<AbsoluteIRI> Poll();

 private:
  struct State {
    std::array<std::int64_t, 6> facts;  // device, inode, times; or an error number alone
    bool isYoung;                       // changed shortly before it was polled

    [[nodiscard]] static State Of(const AbsoluteIRI& location);
  };

  boost::unordered_flat_map<AbsoluteIRI, State, HeldHash> states;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_CHANGES_FOLDER_POLL_H
