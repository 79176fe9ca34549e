#ifndef SEARCHPATH_SRC_HOST_CHANGES_FOLDER_WATCHES_H
#define SEARCHPATH_SRC_HOST_CHANGES_FOLDER_WATCHES_H

#include "host/changes/kernel_watches.h"
#include "host/common/held_hash.h"
#include "searchpath/model/absolute_iri.h"

#include <boost/unordered/unordered_flat_map.hpp>
#include <boost/unordered/unordered_flat_set.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace Corvane::PathManagement::host {

/// Locations that are watched, with every folder and link that leads to them.
///
/// The caller sets the locations in rounds: `Begin`, `Watch` or `WatchFile` for each location,
/// `End`. A round watches each folder before it looks into it, so a change made meanwhile is
/// reported afterwards, and that report asks for another round.
///
/// Threads: not synchronised.
class FolderWatches {
 public:
  /// How a location compares with the previous round.
  enum class Comparison : std::uint8_t {
    Same,   ///< the same folder, watched all the time; or still no folder
    New,    ///< the previous round did not have this location
    Other,  ///< another folder or watch; also a folder that has come or gone
  };

  /// What has changed since the previous report.
  struct Report {
    /// Folders in which something came or went, and files that came, went or were written. A
    /// location may be repeated.
    std::vector<AbsoluteIRI> changed;
    bool mayLeadElsewhere = false;   // locations may lead to other folders: a round is needed
    bool isIncomplete = false;       // the kernel dropped events
    bool hasNewPermissions = false;  // a watched file has, or something in a watched folder
  };

  /// With `watchesNothing` every location has to be polled.
  explicit FolderWatches(bool watchesNothing) : kernel(watchesNothing) {}

  /// As `KernelWatches::GetDescriptor`.
  [[nodiscard]] int GetDescriptor() const noexcept { return kernel.GetDescriptor(); }

  void Begin();
  /// Watches a folder.
  [[nodiscard]] Comparison Watch(const AbsoluteIRI& location);
  /// Watches a file: it has changed when it comes, goes or has been written.
  [[nodiscard]] Comparison WatchFile(const AbsoluteIRI& location);
  /// Ends the watches of locations that this round did not have.
  void End();

  /// What has changed since the last call; does not wait.
  [[nodiscard]] Report Read();

  /// The locations that cannot be watched and have to be polled.
  [[nodiscard]] const std::vector<AbsoluteIRI>& GetPolled() const noexcept { return polled; }

 private:
  /// Why the kernel watches a folder.
  struct Watched {
    boost::unordered_flat_set<std::string> leading;  // names in it on the way to some location
    std::vector<AbsoluteIRI> locations;              // those that lead to this folder itself
    std::unordered_map<std::string, std::vector<AbsoluteIRI>> files;  // watched in it, by name
  };
  /// What stands at a path.
  struct Seen {
    bool exists = false;
    bool isUnknown = false;                      // the disk does not say whether it exists
    std::optional<std::string> linkTarget = {};  // only of a link
  };
  /// The folder or file that a location leads to.
  struct Destination {
    std::optional<std::string> path;  // without links; empty when nothing is there
    std::optional<int> watch;         // of the folder; empty when it has none, and for a file

    [[nodiscard]] friend bool operator==(const Destination& left,
                                         const Destination& right) = default;
  };
  /// The folders and links on the way to a location.
  struct Route {
    std::optional<std::string> destination;  // without links; empty when nothing is there
    std::string folder;                      // in which the last name was looked up
    std::string name;                        // the last name
    bool isWatched = true;                   // whether each folder on the route is watched
  };

  [[nodiscard]] KernelWatches::Added Add(const std::string& folder, std::uint32_t events);
  /// Null when `folder` cannot be watched.
  [[nodiscard]] Watched* WatchOnRoute(const std::string& folder);
  [[nodiscard]] Route Follow(const AbsoluteIRI& location);
  [[nodiscard]] const Seen& LookAt(const std::string& path);
  /// Stores where `location` leads in this round, and compares that with the previous round.
  [[nodiscard]] Comparison Record(const AbsoluteIRI& location, Destination destination);
  void AddTo(Report& report, const inotify_event& event, const char* name) const;

  KernelWatches kernel;
  std::unordered_map<int, Watched> watches;  // by the number of the watch
  boost::unordered_flat_map<AbsoluteIRI, Destination, HeldHash> destinations;
  std::vector<AbsoluteIRI> polled;

  // Of the round under way.
  std::unordered_map<int, Watched> oldWatches;
  boost::unordered_flat_map<AbsoluteIRI, Destination, HeldHash> oldDestinations;
  // By folder; no number where the folder cannot be watched.
  std::unordered_map<std::string, std::optional<int>> watchesOnRoutes;
  std::unordered_map<std::string, Seen> seen;  // by path
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_CHANGES_FOLDER_WATCHES_H
