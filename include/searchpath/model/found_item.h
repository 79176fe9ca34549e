#ifndef SEARCHPATH_MODEL_FOUND_ITEM_H
#define SEARCHPATH_MODEL_FOUND_ITEM_H

#include <memory>
#include <utility>

namespace Corvane::PathManagement {

class IPathEntry;
class PathItem;

/// The answer of a lookup: a file, and the entry of the path that it was found in.
class FoundItem {
 public:
  /// Precondition: neither is null.
  FoundItem(std::shared_ptr<const PathItem> foundFile, std::shared_ptr<const IPathEntry> foundIn)
      : item(std::move(foundFile)), entry(std::move(foundIn)) {}

  /// The file; never null.
  [[nodiscard]] std::shared_ptr<const PathItem> GetPathItem() const noexcept { return item; }
  /// The folder that holds it; never null.
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetPathEntry() const noexcept { return entry; }

  /// Equal when both hold the very same item and the very same entry; contents are not compared.
  [[nodiscard]] friend bool operator==(const FoundItem& left, const FoundItem& right) noexcept {
    return left.item == right.item && left.entry == right.entry;
  }

 private:
  std::shared_ptr<const PathItem> item;
  std::shared_ptr<const IPathEntry> entry;
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_MODEL_FOUND_ITEM_H
