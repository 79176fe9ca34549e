#ifndef SEARCHPATH_SRC_HOST_RULES_RULED_PATH_H
#define SEARCHPATH_SRC_HOST_RULES_RULED_PATH_H

#include "host/common/disk_patience.h"
#include "host/common/held_hash.h"
#include "host/path/path_view.h"
#include "host/rules/relative_lookup.h"
#include "host/rules/tree_folder.h"
#include "searchpath/host/lookup_rules.h"
#include "searchpath/host/working_folder.h"
#include "searchpath/model/found_item.h"
#include "searchpath/model/search_target.h"

#include <boost/optional.hpp>
#include <boost/unordered/unordered_flat_map.hpp>

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement::host {

/// The folders of a path, searched by rules under which names of folders have no meaning; see
/// `LookupRules::foldersHaveMeaning`.
///
/// Threads: all operations, from any thread.
/// Cost: at first, `Find` makes one system call for each folder up to the answer; see
/// `RelativeLookup` for what it costs after a few calls.
class RuledPath {
 public:
  using Target = PathManagement::detail::SearchTarget;

  /// The folder that a question comes from, if it says so.
  struct Asker {
    std::optional<AbsoluteIRI> from = {};   // `Lookup::fromFolder`
    std::optional<AbsoluteIRI> after = {};  // `Lookup::afterFolder`
  };

  /// A folder in which the names of a question are looked for.
  struct Place {
    std::shared_ptr<const FolderEntry> folder;
    bool isOnPath;  // or a quote folder; not the asker's, nor where `SaysWhichFile` is true
    RelativeLookup* lookup;
    std::size_t root;    // an index in the roots of `lookup`, at or above `folder`
    std::string before;  // put in front of a name, to make it relative to that root
  };

  /// Quote folders are those that a compiler searches only for headers in quotes: they are asked
  /// before the path when the question has an asker, `from` or `after`. Listings come from
  /// `source`; from the disk when that is null. A relative name for which `SaysWhichFile` is true
  /// is that of a file below `folder`. `timeout` says how long to wait for the disk about folders
  /// that are neither on the path nor quote folders: see `DiskPatience`.
  RuledPath(std::shared_ptr<const PathView> pathView, const LookupRules& lookupRules,
            GivenFolders quoteFolders, const std::shared_ptr<const ListingSource>& source,
            const WorkingFolder& folder, DiskPatience::Limit timeout);

  /// A copy that shares what is remembered of the folders of the path, but remembers nothing of
  /// others: quote folders, the folders of askers and of files given by location.
  [[nodiscard]] std::shared_ptr<const RuledPath> WithOthersAnew() const;

  [[nodiscard]] const LookupRules& GetRules() const noexcept { return rules; }
  [[nodiscard]] const PathView& GetView() const noexcept { return *view; }
  /// Remembers the folders below those of the path.
  [[nodiscard]] RememberedTree& GetTree() const noexcept { return *tree; }
  /// The folders of the path, as they were given.
  [[nodiscard]] const SearchRoots& GetRoots() const noexcept { return onPath->GetRoots(); }
  /// The look-up of files by their names relative to `GetRoots`.
  [[nodiscard]] const RelativeLookup& GetOnPath() const noexcept { return *onPath; }

  /// The quote folders, in their order.
  [[nodiscard]] const FolderEntries& GetQuoteFolders() const noexcept {
    return quoted->GetRoots().GetFolders();
  }

  /// The folders without a location: those given for the path, then quote folders.
  [[nodiscard]] std::vector<FolderProblem> FindUnlocated() const;

  /// The file that the name means; empty when there is none.
  [[nodiscard]] boost::optional<FoundItem> Find(const Target& target, const Asker& asker) const;
  /// That file, and those that it hides.
  [[nodiscard]] std::vector<FoundItem> FindAll(const Target& target, const Asker& asker) const;

  /// Whether the name itself says where its file is, so that the path is not searched.
  [[nodiscard]] bool SaysWhichFile(const ustring& name) const;
  /// The folders that a question asks, in order, and those that it would ask if they were not
  /// hidden or repeats: see `PlaceFilter`.
  [[nodiscard]] std::vector<Place> FindPlaces(const Target& target, const Asker& asker) const;
  /// The folders of the path, as places.
  [[nodiscard]] std::vector<Place> GetPlacesOnPath() const;
  /// The names that are looked for in each place, the preferred one first.
  [[nodiscard]] static std::vector<std::string> NamesOf(const Target& target);
  /// What stands at one of the names of `NamesOf` in a place.
  [[nodiscard]] static RelativeFolder::Sight LookIn(const Place& place, const std::string& name);

  /// The native path of `name` in a place.
  [[nodiscard]] static std::string PathOf(const Place& place, const std::string& name);

  /// The folder that holds the file called `name` in a place: for "a/b.h", the folder "a" below the
  /// place.
  [[nodiscard]] static std::shared_ptr<const FolderEntry> FolderOf(const Place& place,
                                                                   const std::string& name);

  /// As `Environment::FindOrigin`, also for folders below those of the path.
  [[nodiscard]] FolderOrigin FindOrigin(const IPathEntry& entry) const;
  /// Why the folder of a place cannot be searched; empty when it can be.
  [[nodiscard]] static std::optional<current_working_folder::AbsolutizeError> FindProblem(
      const Place& place);

  /// Errors: `FailedToAbsolutizeException` when no folder that can be searched is at `folder`, or
  /// the disk does not answer in time.
  void CheckFolder(const AbsoluteIRI& folder) const;

  /// The folders that a name denotes, in path order. A name that begins with a separator denotes
  /// the folder of the path at that location. Any other denotes the folders of that relative name
  /// below those of the path, if names with a separator are searched there; otherwise none.
  [[nodiscard]] PathEntries FindFolders(const ustring& name) const;

  /// Folders without a location; then quote folders about which the disk has not answered in time;
  /// then, in path order, the folders of the path that cannot be searched. Quote folders that are
  /// missing are no problem, as compilers report none. A folder that may be
  /// searched but not listed is no problem.
  [[nodiscard]] std::vector<FolderProblem> FindProblems() const;
  /// The problems that matter for what was asked so far: all once a name was not found; until then,
  /// folders without a location.
  [[nodiscard]] std::vector<FolderProblem> GetProblemsMet() const {
    return hasMissed->load(std::memory_order_relaxed) ? FindProblems() : FindUnlocated();
  }

 private:
  [[nodiscard]] boost::optional<FoundItem> FindOnPath(const Target& target) const;
  [[nodiscard]] std::vector<FoundItem> FindFiles(const Target& target, const Asker& asker,
                                                 bool firstOnly) const;
  [[nodiscard]] std::optional<Place> PlaceOfFile(const ustring& name) const;
  static void AddPlaces(RelativeLookup& lookup, std::vector<Place>& places);
  void RemoveUpTo(const AbsoluteIRI& folder, std::vector<Place>& places) const;

  const std::shared_ptr<const PathView> view;
  const LookupRules rules;
  const WorkingFolder workingFolder;
  const DiskPatience::Limit limit;
  const std::vector<FolderProblem> unlocatedQuotes;
  // Shared with copies. `WithOthersAnew` gives its copy a `quoted` and an `everywhere` of its own.
  const std::shared_ptr<RelativeLookup> onPath;
  std::shared_ptr<RelativeLookup> quoted;
  std::shared_ptr<RelativeLookup> everywhere;  // its only root is "/": for folders off the path
  const std::shared_ptr<RememberedTree> tree = std::make_shared<RememberedTree>();
  const std::shared_ptr<std::atomic<bool>> hasMissed =
      std::make_shared<std::atomic<bool>>(false);  // whether a name was not found
};

/// Tells which places are left out of a search: hidden ones and, where the path drops repeats,
/// those with the canonical location of a place before them. So it has to be asked about the places
/// in their order.
class PlaceFilter {
 public:
  explicit PlaceFilter(const PathView& pathView) : view(pathView) {}

  /// Remembers `place` for those after it. Returns the folder that it repeats, or its own when it
  /// repeats none.
  [[nodiscard]] std::shared_ptr<const FolderEntry> Remember(const RuledPath::Place& place);
  /// Whether `place` is searched. Remembers it unless it is hidden.
  [[nodiscard]] bool Admits(const RuledPath::Place& place) {
    return (!view.HidesFolders() || view.FindHider(*place.folder) == nullptr) &&
           Remember(place) == place.folder;
  }

 private:
  const PathView& view;
  // By canonical location: the first folder there.
  boost::unordered_flat_map<AbsoluteIRI, std::shared_ptr<const FolderEntry>, HeldHash> seen;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RULES_RULED_PATH_H
