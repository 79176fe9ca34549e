#include "shadow_output.h"

#include "host/common/parallel.h"
#include "output.h"
#include "path_folder.h"
#include "phrases.h"
#include "sarif_log.h"
#include "searchpath/host/native_location.h"
#include "searchpath/host/words.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <utility>

namespace Corvane::PathManagement::tool {

namespace {

std::string GetCounts(const host::ShadowCounts& counts) {
  std::vector<std::string> list;
  for (const host::ShadowKind kind : host::kShadowKinds) {
    const std::size_t count = counts.Of(kind);
    if (count > 0) list.push_back(std::to_string(count) + ' ' + host::GetText(kind));
  }
  return Join(list, ", ");
}

void AddCounts(nlohmann::ordered_json& object, const host::ShadowCounts& counts) {
  object["files"] = counts.GetTotal();
  for (const host::ShadowKind kind : host::kShadowKinds) {
    object[GetWord(kind)] = counts.Of(kind);
  }
}

// An object whose first field is the number of the list, if there is one.
nlohmann::ordered_json MakeObject(std::optional<std::size_t> list) {
  nlohmann::ordered_json object;
  if (list) object["list"] = *list;
  return object;
}

void WriteSummaryObjects(const Output& output, std::size_t names,
                         const host::ShadowSummary& summary, std::optional<std::size_t> list) {
  nlohmann::ordered_json total = MakeObject(list);
  total["names"] = names;
  AddCounts(total, summary.counts);
  output.WriteObject(total);
  for (const host::FolderShadows& folders : summary.folders) {
    nlohmann::ordered_json object = MakeObject(list);
    AddText(object, "winner", GetNativePath(*folders.winner));
    AddText(object, "hidden", GetNativePath(*folders.hidden));
    AddCounts(object, folders.counts);
    output.WriteObject(object);
  }
}

void WriteSummaryWords(const Output& output, std::size_t names,
                       const host::ShadowSummary& summary) {
  const std::size_t files = summary.counts.GetTotal();
  output.WriteLine(GetCounted(names, "name") + (names == 1 ? " hides " : " hide ") +
                   GetCounted(files, "file") +
                   (files == 0 ? "" : ": " + GetCounts(summary.counts)));
  for (const host::FolderShadows& folders : summary.folders) {
    output.WriteLine("  " + output.GetShown(GetNativePath(*folders.winner)) + " hides " +
                     GetCounted(folders.counts.GetTotal(), "file") + " of " +
                     output.GetShown(GetNativePath(*folders.hidden)) + ": " +
                     GetCounts(folders.counts));
  }
}

void WriteSummary(const Output& output, const std::vector<host::Shadow>& shadows,
                  std::optional<std::size_t> list) {
  const host::ShadowSummary summary = host::GetSummary(shadows);
  if (output.IsJson()) {
    WriteSummaryObjects(output, shadows.size(), summary, list);
  } else {
    WriteSummaryWords(output, shadows.size(), summary);
  }
}

std::string GetObjectLine(const Output& output, const host::Shadow& shadow,
                          std::optional<std::size_t> list) {
  nlohmann::ordered_json object = MakeObject(list);
  AddText(object, "name", shadow.name);
  AddText(object, "path", host::GetNativePath(shadow.winner));
  object["hidden"] = nlohmann::ordered_json::array();
  for (const host::HiddenFile& hidden : shadow.hidden) {
    nlohmann::ordered_json& file = object["hidden"].emplace_back();
    AddText(file, "path", host::GetNativePath(hidden.file));
    file["kind"] = GetWord(hidden.kind);
  }
  return output.GetObjectLine(object);
}

// The native paths of files, as bytes. Neighbours mostly stand in the same folders, so the paths of
// the last folders are kept.
class NativePaths {
 public:
  std::string GetPath(const FoundItem& found) {
    const PathItem& item = *found.GetPathItem();
    return GetFolder(*found.GetPathEntry()) + GetBytes(item.GetName() + item.GetExtension());
  }

 private:
  // With a separator at the end.
  const std::string& GetFolder(const IPathEntry& folder) {
    for (const auto& [known, path] : last) {
      if (known == &folder) return path;
    }
    oldest = (oldest + 1) % last.size();
    std::string path = GetBytes(GetNativePath(folder));
    if (!path.ends_with('/')) path.push_back('/');
    last[oldest] = {&folder, std::move(path)};
    return last[oldest].second;
  }

  std::array<std::pair<const IPathEntry*, std::string>, 4> last;
  std::size_t oldest = 0;
};

// The shadow in one line as JSON, or in words, a line for each file.
std::string GetLines(const Output& output, const host::Shadow& shadow,
                     std::optional<std::size_t> list, NativePaths& paths) {
  if (output.IsJson()) return GetObjectLine(output, shadow, list);
  constexpr std::size_t kHiddenKindWidth = 10;  // of "unreadable"
  std::string lines = output.GetLine(output.GetShown(Quoted(shadow.name)) + " means " +
                                     output.GetShown(paths.GetPath(shadow.winner)) + " and hides");
  for (const host::HiddenFile& hidden : shadow.hidden) {
    lines += output.GetLine("  " + GetPadded(host::GetText(hidden.kind), kHiddenKindWidth) + "  " +
                            output.GetShown(paths.GetPath(hidden.file)));
  }
  return lines;
}

// Makes the lines on all processors. On one of two, those of 250,000 shadows took an eighth of the
// whole time of the command.
void WriteEach(const Output& output, const std::vector<host::Shadow>& shadows,
               std::optional<std::size_t> list) {
  constexpr std::size_t kAtOnce = 1 << 16;  // shadows whose lines are kept until they are written
  constexpr std::size_t kInAPiece = 1 << 10;
  for (std::size_t begin = 0; begin < shadows.size(); begin += kAtOnce) {
    const std::size_t end = std::min(begin + kAtOnce, shadows.size());
    std::vector<std::string> pieces((end - begin + kInAPiece - 1) / kInAPiece);
    host::ForEachInParallel(pieces.size(), [&](std::size_t piece) {
      NativePaths paths;
      const std::size_t first = begin + piece * kInAPiece;
      for (std::size_t at = first; at < std::min(first + kInAPiece, end); ++at) {
        pieces[piece] += GetLines(output, shadows[at], list, paths);
      }
    });
    for (const std::string& piece : pieces) WriteData(piece);
  }
}

}  // namespace

void KeepOnly(const std::set<host::ShadowKind>& kinds, std::vector<host::Shadow>& shadows) {
  if (kinds.empty()) return;
  for (host::Shadow& shadow : shadows) {
    std::erase_if(shadow.hidden,
                  [&](const host::HiddenFile& file) { return !kinds.contains(file.kind); });
  }
  std::erase_if(shadows, [](const host::Shadow& shadow) { return shadow.hidden.empty(); });
}

void WriteShadows(const Output& output, const std::vector<host::Shadow>& shadows,
                  const ShadowFormat& format, std::optional<std::size_t> list) {
  if (format.sarif != nullptr) {
    format.sarif->Add(shadows);
  } else if (format.isSummary) {
    WriteSummary(output, shadows, list);
  } else {
    WriteEach(output, shadows, list);
  }
}

void ReportUnread(const std::vector<host::Shadow>& shadows) {
  std::set<std::string> reported;
  for (const host::Shadow& shadow : shadows) {
    for (const host::HiddenFile& hidden : shadow.hidden) {
      if (!hidden.problem) continue;
      const std::string file = GetBytes(host::GetNativePath(hidden.problem->file));
      if (!reported.insert(file).second) continue;  // a file may hide many
      Report("cannot read " + Quoted(file) + ": " + hidden.problem->reason.message());
    }
  }
}

void ReportUnknown(const ustring& name, const std::string& hint) {
  Report("no file called " + Quoted(name) + " on the path" + hint);
}

void ReportIdleAllowances(const std::vector<ustring>& names) {
  for (const ustring& name : names) {
    Report("--allow " + Quoted(name) + ": no file of that name is hidden");
  }
}

}  // namespace Corvane::PathManagement::tool
