#include "difference_output.h"

#include "output.h"
#include "path_folder.h"
#include "searchpath/host/environment.h"
#include "searchpath/host/words.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <utility>

namespace Corvane::PathManagement::tool {

namespace {

constexpr std::size_t kFolderChangeWidth = 9;  // of "refreshed"
constexpr std::size_t kNameChangeWidth = 7;    // of "changed"
constexpr std::size_t kPositionsWidth = 8;     // of "10 -> 12"

// The first column. It is filled up by the length of `change`, since colour takes no width.
std::string GetChangeColumn(const Output& output, const std::string& change, Paint paint,
                            std::size_t width) {
  return output.GetPainted(change, paint) + std::string(width - change.size(), ' ') + "  ";
}

Paint GetPaint(host::FolderChange change) {
  using host::FolderChange;
  if (change == FolderChange::Added) return Paint::Good;
  return change == FolderChange::Removed ? Paint::Bad : Paint::Notice;
}

// Counted from 1; "" for `nullopt`.
std::string GetPosition(std::optional<std::size_t> index) {
  return index ? std::to_string(*index + 1) : "";
}

// "2 -> 5", or one number for a folder that is on one path only, or at the same position on both.
std::string GetPositions(const host::FolderDifference& difference) {
  const std::string before = GetPosition(difference.placeBefore);
  const std::string after = GetPosition(difference.placeAfter);
  if (before.empty() || after.empty() || before == after) return after.empty() ? before : after;
  return before + " -> " + after;
}

std::pair<std::string, Paint> Describe(const host::NameChange& name) {
  if (!name.before) return {"new", Paint::Good};
  if (!name.after) return {"gone", Paint::Bad};
  return {"changed", Paint::Notice};
}

}  // namespace

void WriteDifference(const Output& output, const host::FolderDifference& difference) {
  const IPathEntry& folder = *(difference.after ? difference.after : difference.before);
  const std::string change = GetWord(difference.change);
  if (!output.IsJson()) {
    output.WriteLine(
        GetChangeColumn(output, change, GetPaint(difference.change), kFolderChangeWidth) +
        GetPadded(GetPositions(difference), kPositionsWidth) + "  " +
        output.GetShown(GetNativePath(folder)));
    return;
  }
  nlohmann::ordered_json object = {{"change", change}};
  AddText(object, "path", GetNativePath(folder));
  object["kind"] = host::GetWord(folder.GetPathEntryType());
  object["old"] = nullptr;
  object["new"] = nullptr;
  if (difference.placeBefore) object["old"] = *difference.placeBefore + 1;
  if (difference.placeAfter) object["new"] = *difference.placeAfter + 1;
  output.WriteObject(object);
}

void WriteDifference(const Output& output, const host::NameChange& name) {
  const auto [change, paint] = Describe(name);
  if (!output.IsJson()) {
    const auto shown = [&](const FoundItem& file) {
      return output.GetShown(host::GetNativePath(file));
    };
    output.WriteLine(GetChangeColumn(output, change, paint, kNameChangeWidth) +
                     (name.before ? shown(*name.before) : "") +
                     (name.before && name.after ? " -> " : "") +
                     (name.after ? shown(*name.after) : ""));
    return;
  }
  nlohmann::ordered_json object = {{"change", change}};
  AddText(object, "name", name.name);
  object["old"] = nullptr;
  if (name.before) AddText(object, "old", host::GetNativePath(*name.before));
  object["new"] = nullptr;
  if (name.after) AddText(object, "new", host::GetNativePath(*name.after));
  output.WriteObject(object);
}

}  // namespace Corvane::PathManagement::tool
