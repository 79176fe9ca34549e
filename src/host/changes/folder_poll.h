#ifndef SEARCHPATH_SRC_HOST_CHANGES_FOLDER_POLL_H
#define SEARCHPATH_SRC_HOST_CHANGES_FOLDER_POLL_H

#include "host/common/held_hash.h"
#include "searchpath/model/absolute_iri.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <array>
#include <cstdint>
#include <vector>

namespace Corvane::PathManagement::host {

/// Asks folders and files for their times, to find out which have changed.
///
/// Threads: not synchronised.
class FolderPoll {
 public:
  /// Asks these from now on; those that are asked already keep what they are compared with.
  void Set(const std::vector<AbsoluteIRI>& locations);

  [[nodiscard]] bool IsEmpty() const noexcept { return states.empty(); }

  /// Those that have changed since they were asked before, or may have: a change within two seconds
  /// of another may show no other time.
  [[nodiscard]] std::vector<AbsoluteIRI> Ask();

 private:
  struct State {
    std::array<std::int64_t, 6> facts;  // device, inode, times; or why there are none
    bool isYoung;                       // changed shortly before it was asked

    [[nodiscard]] static State Of(const AbsoluteIRI& location);
  };

  boost::unordered_flat_map<AbsoluteIRI, State, HeldHash> states;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_CHANGES_FOLDER_POLL_H
