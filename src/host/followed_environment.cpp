#include "searchpath/host/followed_environment.h"

#include "host/changes/folder_watches.h"
#include "host/folder/folder_walk.h"
#include "host/folder/open_path.h"
#include "host/rules/ruled_path.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/platform/iri_text.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using Comparison = FolderWatches::Comparison;

/// Adds the links in a folder to the files to watch: whether a link counts as a file depends on
/// what it leads to.
void AddLinks(const AbsoluteIRI& folder, std::vector<AbsoluteIRI>& files) {
  const auto path = NativeBytes(folder);
  std::error_code error;
  if (!path) return;
  for (std::filesystem::directory_iterator item(*path, error), end; !error && item != end;
       item.increment(error)) {
    std::error_code unknown;
    if (!item->is_symlink(unknown)) continue;
    const ustring location = TextFromBytes(item->path().native());
    files.push_back(foundation::storage::vfs::toAbsoluteIRI(u"file", location));
  }
}

}  // namespace

class FollowedEnvironment::State {
 public:
  explicit State(Open howToOpen) : open(std::move(howToOpen)), opened(open()) {
    if (Watch()) Renew();
  }

  bool Update() {
    const bool mayHaveChanged = MayHaveChanged();
    if (mayHaveChanged) {
      Renew();
    } else {
      ForgetOtherFolders();
    }
    return mayHaveChanged;
  }

  [[nodiscard]] const Environment& Get() const noexcept { return opened.environment; }

  [[nodiscard]] int GetDescriptor() const noexcept { return watches.GetDescriptor(); }

  [[nodiscard]] bool WatchesAll() const noexcept { return watches.GetPolled().empty(); }

 private:
  /// Opens the environment, and opens it again as long as it has folders that were not watched
  /// before: such a folder may have changed between its reading and its watch. Gives up after some
  /// rounds, in a tree that never comes to rest; the next `Update` then goes on.
  void Renew() {
    constexpr int kMostRounds = 4;
    isOutdated = true;
    for (int round = 0; isOutdated && round < kMostRounds; ++round) {
      opened = open();
      isOutdated = Watch();
    }
  }

  /// Makes the next look-ups read again what is not on the path, such as the folder of the code
  /// that asks. Code in any folder may ask, so not all such folders are watched.
  void ForgetOtherFolders() {
    auto& ruled = opened.environment.ruled;
    if (ruled != nullptr) ruled = ruled->WithOthersAnew();
  }

  [[nodiscard]] bool MayHaveChanged() {
    const auto report = watches.Read();
    const bool filesCountByPermission =
        opened.environment.GetRules().files != LookupRules::Files::Regular;
    // What is not watched may have changed at any time.
    isOutdated |= !report.changed.empty() || report.mayLeadElsewhere || report.isIncomplete ||
                  (filesCountByPermission && report.hasNewPermissions) || !WatchesAll();
    return isOutdated;
  }

  /// Watches all that the answers depend on. Returns whether anything was not watched before, or is
  /// now another folder or file.
  [[nodiscard]] bool Watch() {
    bool isNew = false;
    std::vector<AbsoluteIRI> files = opened.files;
    const auto watch = [&](const AbsoluteIRI& folder) {
      isNew |= watches.Watch(folder) != Comparison::Same;
      AddLinks(folder, files);
    };
    const auto watchTree = [&](const std::shared_ptr<const FolderEntry>& top) {
      WalkFolders(top, [&](const auto& folder, std::size_t /*depth*/) {
        watch(folder->GetAbsoluteIRI());
        return false;
      });
    };
    watches.Begin();
    const bool foldersHaveMeaning = opened.environment.GetRules().foldersHaveMeaning;
    for (const auto& folder : opened.environment.FindSearchedFolders()) {
      if (foldersHaveMeaning) {
        watchTree(folder);
      } else {
        watch(folder->GetAbsoluteIRI());
      }
    }
    for (const AbsoluteIRI& folder : opened.folders) watchTree(FolderEntry::Create(folder));
    // After all folders: a link that is watched as a folder needs no watch as a file.
    for (const AbsoluteIRI& file : files) {
      isNew |= watches.WatchFile(file) != Comparison::Same;
    }
    watches.End();
    return isNew;
  }

  Open open;
  OpenedEnvironment opened;
  FolderWatches watches{false};  // false: the kernel watches what it can
  bool isOutdated = false;       // something may have changed since the environment was opened
};

FollowedEnvironment::FollowedEnvironment(Open open)
    : state(std::make_unique<State>(std::move(open))) {}

FollowedEnvironment::~FollowedEnvironment() = default;

bool FollowedEnvironment::Update() { return state->Update(); }

const Environment& FollowedEnvironment::Get() const noexcept { return state->Get(); }

int FollowedEnvironment::GetDescriptor() const noexcept { return state->GetDescriptor(); }

bool FollowedEnvironment::WatchesAll() const noexcept { return state->WatchesAll(); }

}  // namespace Corvane::PathManagement::host
