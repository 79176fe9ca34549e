#ifndef SEARCHPATH_SRC_HOST_TRUST_PATH_WALK_H
#define SEARCHPATH_SRC_HOST_TRUST_PATH_WALK_H

#include "host/trust/access_facts.h"
#include "platform/descriptor.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace Corvane::PathManagement::host {

using fl::filesystem::detail::Descriptor;

/// A folder that a walk came through.
struct PassedFolder {
  std::shared_ptr<const PassedFolder> above;  // null for the root
  std::string path;                           // without links; "" for the root
  AccessFacts facts;
  std::size_t level = 0;  // how many folders are above

  [[nodiscard]] std::string GetPathOf(std::string_view name) const {
    return path + '/' + std::string(name);
  }
};

/// A name on the way, and what stands at it: a folder, a link, a file.
struct PathStep {
  std::shared_ptr<const PassedFolder> folder;  // in which the name stands
  std::string name;
  std::optional<AccessFacts> object;  // the facts of what has the name; empty when nothing has it

  [[nodiscard]] std::string GetPath() const { return folder->GetPathOf(name); }
};

/// What a walk came to.
struct WalkedPath {
  std::vector<PathStep> steps = {};  // all names on the way, in the order of the walk
  /// The folder that the walk ended at; null when it ended at something else, or failed.
  std::shared_ptr<const PassedFolder> end = nullptr;
  /// What the walk ended at, open with O_PATH; not open when the walk failed.
  Descriptor object = Descriptor(-1);
  /// The folder that holds `object`; not open when `object` is a folder itself.
  Descriptor holder = Descriptor(-1);
  std::error_code error = {};  // why the walk failed
};

/// Walks an absolute path from the root, name by name. Each name is opened in the folder opened
/// before it. The text of a link is read from the link that was opened, and walked before the rest
/// of the path. So `steps` describe the very objects by which the end was reached, whatever is
/// renamed meanwhile.
///
/// Errors: `WalkedPath::error`. A folder with more than 2,048 folders above it is an error: its
/// path is longer than any that the kernel takes at once.
/// Cost: about three system calls for each name. Holds three descriptors at most.
[[nodiscard]] WalkedPath WalkPath(std::string_view path);

/// The same for a path that begins in `folder`, which is not null; `descriptor` has it open.
[[nodiscard]] WalkedPath WalkPath(std::shared_ptr<const PassedFolder> folder,
                                  const Descriptor& descriptor, std::string_view path);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_TRUST_PATH_WALK_H
