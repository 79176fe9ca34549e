#ifndef SEARCHPATH_SRC_HOST_CHANGES_FOLDER_WATCHES_H
#define SEARCHPATH_SRC_HOST_CHANGES_FOLDER_WATCHES_H

#include "host/common/held_hash.h"
#include "platform/descriptor.h"
#include "searchpath/model/absolute_iri.h"

#include <boost/unordered/unordered_flat_map.hpp>
#include <boost/unordered/unordered_flat_set.hpp>

#include <sys/inotify.h>

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace Corvane::PathManagement::host {

/// Locations that the kernel watches, with every folder and link that leads to them.
///
/// Which these are is told in rounds: `Begin`, `Watch` for each location, `End`. A round watches
/// each folder before it looks into it, so what changes meanwhile is reported afterwards and leads
/// to the next round.
///
/// Threads: not synchronised.
class FolderWatches {
 public:
  /// What became of a location since the round before.
  enum class Standing : std::uint8_t {
    Same,   ///< the same folder, watched all the time; or still none
    New,    ///< it was not watched
    Other,  ///< another folder, or one where there was none, or none any more
  };

  /// What has changed since the report before.
  struct Report {
    std::vector<AbsoluteIRI> changed;  // locations in which something came or went; some repeated
    bool isWayInDoubt = false;         // locations may stand elsewhere: the next round is due
    bool isAllInDoubt = false;         // reports were lost
  };

  /// With nothing watched, every location is polled.
  explicit FolderWatches(bool watchesNothing);

  /// Readable when there is something to report; negative when nothing can be watched.
  [[nodiscard]] int GetDescriptor() const noexcept { return queue.Get(); }

  void Begin();
  /// A folder.
  [[nodiscard]] Standing Watch(const AbsoluteIRI& location);
  /// A file; it is what has changed when it comes, goes or has been written.
  [[nodiscard]] Standing WatchFile(const AbsoluteIRI& location);
  /// Ends the watches that this round did not ask for.
  void End();

  [[nodiscard]] Report Read();

  /// The locations that cannot be watched.
  [[nodiscard]] const std::vector<AbsoluteIRI>& GetPolled() const noexcept { return polled; }

 private:
  /// One watch of the kernel.
  struct Watched {
    boost::unordered_flat_set<std::string> leading;  // names in it that lead to locations
    std::vector<AbsoluteIRI> locations;              // that are this folder
    std::unordered_map<std::string, std::vector<AbsoluteIRI>> files;  // watched, by name
  };
  /// What a name in a folder was found to be.
  struct Step {
    bool isThere = false;
    bool isHidden = false;                   // nobody may tell whether it is there
    std::optional<std::string> target = {};  // of a link
  };
  /// Where a location leads.
  struct Place {
    std::optional<std::string> real;  // without links; empty when there is nothing
    std::optional<int> watch;

    [[nodiscard]] friend bool operator==(const Place& left, const Place& right) = default;
  };
  /// A way that was followed.
  struct Way {
    std::optional<std::string> real;
    std::string folder = "/";  // in which the last name was looked up
    std::string name;          // that name
    bool isWatched = true;     // the whole of it
  };

  [[nodiscard]] std::optional<int> AddWatch(const std::string& folder, std::uint32_t events);
  [[nodiscard]] Watched* WatchOnWay(const std::string& folder);
  [[nodiscard]] Way Follow(const AbsoluteIRI& location);
  [[nodiscard]] const Step& LookAt(const std::string& path);
  [[nodiscard]] Standing Settle(const AbsoluteIRI& location, Place place);
  void Take(const inotify_event& event, const char* name, Report& report) const;

  fl::filesystem::detail::Descriptor queue;
  std::unordered_map<int, Watched> watches;
  boost::unordered_flat_map<AbsoluteIRI, Place, HeldHash> places;
  std::vector<AbsoluteIRI> polled;

  // Of the round under way.
  std::unordered_map<int, Watched> oldWatches;
  boost::unordered_flat_map<AbsoluteIRI, Place, HeldHash> oldPlaces;
  std::unordered_map<std::string, std::optional<int>> watchesOnWay;  // by folder
  std::unordered_map<std::string, Step> steps;                       // by path
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_CHANGES_FOLDER_WATCHES_H
