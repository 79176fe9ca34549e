#ifndef SEARCHPATH_SRC_HOST_FOLDER_FOLDER_IDENTITY_H
#define SEARCHPATH_SRC_HOST_FOLDER_FOLDER_IDENTITY_H

#include "searchpath/model/absolute_iri.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace Corvane::PathManagement::host {

/// Which folder an entry stands for, and the way to it from a main folder, one that is on the path
/// itself. The way shows whether a link leads back up. Links divide the way into pieces. Within a
/// piece each folder is directly below the one before, so only the top and the bottom of a piece
/// are kept. All locations in it are canonical: without links.
class FolderIdentity {
 public:
  /// A main folder.
  explicit FolderIdentity(AbsoluteIRI canonicalLocation)
      : canonical(std::move(canonicalLocation)), top(canonical) {}

  [[nodiscard]] const AbsoluteIRI& Canonical() const noexcept { return canonical; }

  /// A folder directly below this one; `subfolder` is its canonical location.
  [[nodiscard]] FolderIdentity Below(AbsoluteIRI subfolder) const {
    FolderIdentity below = *this;
    below.canonical = std::move(subfolder);
    return below;
  }

  /// The folder `target`, reached through a link in this one.
  [[nodiscard]] FolderIdentity BehindLink(AbsoluteIRI target) const {
    FolderIdentity behind(std::move(target));
    behind.aboveLinks = aboveLinks;
    behind.aboveLinks.emplace_back(top, canonical);
    return behind;
  }

  /// Whether this folder is `folder`, or the way to this folder leads through `folder`.
  [[nodiscard]] bool HasComeThrough(const AbsoluteIRI& folder) const {
    return IsBetween(top, folder, canonical) ||
           std::any_of(aboveLinks.begin(), aboveLinks.end(), [&folder](const auto& piece) {
             return IsBetween(piece.first, folder, piece.second);
           });
  }

  /// Calls stop(folder) for the bottom of each piece: for this folder, then for each folder on the
  /// way that holds a link of the way; until a call returns true. Returns whether one did.
  template <class Stop>
  [[nodiscard]] bool AnyBottom(const Stop& stop) const {
    return stop(canonical) ||
           std::any_of(aboveLinks.begin(), aboveLinks.end(),
                       [&stop](const auto& piece) { return stop(piece.second); });
  }

 private:
  [[nodiscard]] static bool IsAtOrBelow(const AbsoluteIRI& folder, const AbsoluteIRI& above) {
    const std::u16string_view text = folder.toStringView();
    const std::u16string_view prefix = above.toStringView();
    return text.starts_with(prefix) &&
           (text.size() == prefix.size() || prefix.ends_with(u'/') || text[prefix.size()] == u'/');
  }

  /// Whether `folder` is on the way from `first` straight down to `last`, both included.
  [[nodiscard]] static bool IsBetween(const AbsoluteIRI& first, const AbsoluteIRI& folder,
                                      const AbsoluteIRI& last) {
    return IsAtOrBelow(folder, first) && IsAtOrBelow(last, folder);
  }

  AbsoluteIRI canonical;
  AbsoluteIRI top;  // of the last piece, which ends at this folder
  /// The top and the bottom of each earlier piece.
  std::vector<std::pair<AbsoluteIRI, AbsoluteIRI>> aboveLinks;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_FOLDER_IDENTITY_H
