#ifndef SEARCHPATH_SRC_HOST_FOLDER_FOLDER_CHAIN_H
#define SEARCHPATH_SRC_HOST_FOLDER_FOLDER_CHAIN_H

#include "searchpath/model/absolute_iri.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace Corvane::PathManagement::host {

/// The folders that lead down to an entry, to tell a link that leads back. Between two links a
/// chain runs through all folders from its top to its bottom, so the two ends are all that is kept.
class FolderChain {
 public:
  explicit FolderChain(AbsoluteIRI topFolder) : top(std::move(topFolder)) {}

  /// The chain that goes on at `target` behind a link in the folder `bottom`.
  [[nodiscard]] FolderChain ThroughLink(const AbsoluteIRI& bottom,
                                        const AbsoluteIRI& target) const {
    FolderChain behind(target);
    behind.aboveLinks = aboveLinks;
    behind.aboveLinks.emplace_back(top, bottom);
    return behind;
  }

  /// Whether `folder` is in the chain that has come down to `bottom`.
  [[nodiscard]] bool Contains(const AbsoluteIRI& folder, const AbsoluteIRI& bottom) const {
    return IsBetween(top, folder, bottom) ||
           std::any_of(aboveLinks.begin(), aboveLinks.end(), [&folder](const auto& piece) {
             return IsBetween(piece.first, folder, piece.second);
           });
  }

  /// Whether stop(folder) is true for `bottom`, or for one of the folders whose links have led there.
  template <class Stop>
  [[nodiscard]] bool AnyBottom(const AbsoluteIRI& bottom, const Stop& stop) const {
    return stop(bottom) || std::any_of(aboveLinks.begin(), aboveLinks.end(),
                                       [&stop](const auto& piece) { return stop(piece.second); });
  }

 private:
  [[nodiscard]] static bool IsAtOrBelow(const AbsoluteIRI& folder, const AbsoluteIRI& above) {
    const std::u16string_view text = folder.toStringView();
    const std::u16string_view prefix = above.toStringView();
    return text.starts_with(prefix) &&
           (text.size() == prefix.size() || prefix.ends_with(u'/') || text[prefix.size()] == u'/');
  }

  [[nodiscard]] static bool IsBetween(const AbsoluteIRI& first, const AbsoluteIRI& folder,
                                      const AbsoluteIRI& last) {
    return IsAtOrBelow(folder, first) && IsAtOrBelow(last, folder);
  }

  AbsoluteIRI top;
  std::vector<std::pair<AbsoluteIRI, AbsoluteIRI>> aboveLinks;  // top and bottom of each piece
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_FOLDER_CHAIN_H
