#include "explanation_output.h"

#include "origin_output.h"
#include "output.h"
#include "path_folder.h"
#include "phrases.h"
#include "searchpath/host/explanation_json.h"
#include "searchpath/host/words.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace Corvane::PathManagement::tool {

namespace {

// A line about a folder in which the name was looked for. Its parts are harmless for a terminal.
struct AskedLine {
  std::string outcome;
  std::string folder;
  std::string remark;  // may be empty
};

// Why a folder of this kind, resources or private, is not searched, in parentheses; "" for no kind.
const char* GetRule(std::optional<PathEntryType> kind) {
  if (!kind) return "";
  return *kind == PathEntryType::ResourcesFolder
             ? " (a resources folder is not searched)"
             : " (folders below a private folder are not searched)";
}

// What is to say about the folder besides the outcome; may be empty.
std::string GetRemark(const Output& output, const PathOptions& options,
                      const host::Environment& environment, const host::Explanation& explanation,
                      const host::AskedFolder& asked) {
  std::vector<std::string> remarks;
  for (const FoundItem& file : asked.files) {
    // The first line of the output has this file. There is one if any folder has a match.
    if (file == explanation.files.front()) continue;
    const bool isBest = file == asked.files.front();
    remarks.push_back((isBest ? "holds " : "also holds ") +
                      output.GetShown(host::GetNativePath(file)));
  }
  for (const FoundItem& file : asked.inOtherCase) {
    remarks.push_back("holds " + output.GetShown(host::GetNativePath(file)));
  }
  if (!asked.instead.empty()) {  // something else has this name, but does not count
    remarks.push_back(output.GetShown(asked.instead) + GetRule(asked.unsearchedKind));
  }
  if (const char* problem = host::FindProblemText(asked)) remarks.emplace_back(problem);
  if (asked.repeated != nullptr) {
    remarks.push_back("the same as " + output.GetShown(GetNativePath(*asked.repeated)));
  }
  if (asked.outcome == host::FolderOutcome::FilteredOut) {
    remarks.push_back("by --without " + output.GetShown(asked.hider));
  }
  std::string origin = GetOriginText(output, options, environment, asked.origin, *asked.folder);
  if (!origin.empty()) remarks.push_back(std::move(origin));
  return Join(remarks, "; ");
}

std::vector<AskedLine> GetLines(const Output& output, const PathOptions& options,
                                const host::Environment& environment,
                                const host::Explanation& explanation) {
  std::vector<AskedLine> lines;
  for (const host::AskedFolder& asked : explanation.asked) {
    const std::string folder = GetBytes(GetNativePath(*asked.folder));
    lines.push_back({host::GetText(asked.outcome), output.GetShown(folder),
                     GetRemark(output, options, environment, explanation, asked)});
  }
  return lines;
}

void WriteWords(const Output& output, const PathOptions& options,
                const host::Environment& environment, const std::string& name,
                const host::Explanation& explanation) {
  const std::vector<FoundItem>& files = explanation.files;
  const std::string meaning =
      files.empty() ? "no file" : output.GetShown(host::GetNativePath(files.front()));
  output.WriteLine(output.GetShown(Quoted(name)) + " means " + meaning);
  const auto lines = GetLines(output, options, environment, explanation);
  std::size_t outcomeWidth = 0;
  std::size_t folderWidth = 0;  // of the lines with a remark
  for (const AskedLine& line : lines) {
    outcomeWidth = std::max(outcomeWidth, GetWidth(line.outcome));
    if (!line.remark.empty()) folderWidth = std::max(folderWidth, GetWidth(line.folder));
  }
  output.WriteLine(lines.empty()
                       ? "folders asked: none, because no folder of the path matches the name"
                       : "folders asked, in order:");
  for (const AskedLine& line : lines) {
    output.WriteLine("  " + GetPadded(line.outcome, outcomeWidth) + "  " +
                     (line.remark.empty()
                          ? line.folder
                          : GetPadded(line.folder, folderWidth) + "  " + line.remark));
  }
  output.WriteLine(std::string("why: ") + host::GetText(explanation.rule));
}

}  // namespace

void WriteExplanation(const Output& output, const PathOptions& options,
                      const host::Environment& environment, const std::string& name,
                      const host::Explanation& explanation) {
  if (output.IsJson()) {
    output.WriteObject(nlohmann::ordered_json::parse(host::GetJson(name, explanation)));
  } else {
    WriteWords(output, options, environment, name, explanation);
  }
}

}  // namespace Corvane::PathManagement::tool
