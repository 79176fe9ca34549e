#ifndef SEARCHPATH_SRC_HOST_CHANGES_FOLDER_POLL_H
#define SEARCHPATH_SRC_HOST_CHANGES_FOLDER_POLL_H

#include "host/common/held_hash.h"
#include "searchpath/model/absolute_iri.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <array>
#include <cstdint>
#include <vector>

namespace Corvane::PathManagement::host {

/// Finds changed folders and files by comparing their times with those of the poll before.
///
/// Threads: not synchronised.
class FolderPoll {
 public:
  /// Polls these from now on. Those that were polled before are still compared with their last
  /// times.
  void Set(const std::vector<AbsoluteIRI>& locations);

  [[nodiscard]] bool IsEmpty() const noexcept { return states.empty(); }

  /// Those that may have changed since they were polled before. One that had changed less than two
  /// seconds before that poll is among them: its times may be too coarse to show a further change.
  [[nodiscard]] std::vector<AbsoluteIRI> Poll();

 private:
  struct State {
    std::array<std::int64_t, 6> facts;  // device, inode, times; if it cannot be asked, the error
    bool isYoung;                       // changed shortly before it was polled

    [[nodiscard]] static State Of(const AbsoluteIRI& location);
  };

  boost::unordered_flat_map<AbsoluteIRI, State, HeldHash> states;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_CHANGES_FOLDER_POLL_H
