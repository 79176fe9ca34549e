#include "searchpath/host/explanation_json.h"

#include "host/origin_json.h"
#include "searchpath/host/native_location.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/utilities/iri_conversion.h"

namespace Corvane::PathManagement::host {

namespace {

using json::AddText;

void AddFiles(nlohmann::ordered_json& list, const std::vector<FoundItem>& files) {
  for (const FoundItem& file : files) AddText(list.emplace_back(), "path", GetLocationText(file));
}

void AddFolder(nlohmann::ordered_json& object, const std::string& key, const IPathEntry& folder) {
  AddText(object, key, GetStringFromIRI(folder.GetAbsoluteIRI()));
}

nlohmann::ordered_json GetObject(const AskedFolder& asked) {
  nlohmann::ordered_json object;
  AddFolder(object, "folder", *asked.folder);
  object["kind"] = GetWord(asked.folder->GetPathEntryType());
  object["outcome"] = GetWord(asked.outcome);
  AddFiles(object["files"] = nlohmann::ordered_json::array(), asked.files);
  if (!asked.inOtherCase.empty()) AddFiles(object["inOtherCase"], asked.inOtherCase);
  AddOrigin(object, asked.origin);
  if (!asked.instead.empty()) AddText(object, "instead", asked.instead);
  if (asked.unsearchedKind) object["unsearched"] = GetWord(*asked.unsearchedKind);
  if (const char* problem = FindProblemText(asked)) object["problem"] = problem;
  if (asked.repeated != nullptr) AddFolder(object, "repeats", *asked.repeated);
  if (asked.outcome == FolderOutcome::FilteredOut) AddText(object, "hider", asked.hider);
  return object;
}

}  // namespace

std::string GetJson(const std::string& name, const Explanation& explanation) {
  nlohmann::ordered_json object;
  AddText(object, "name", TextFromBytes(name));
  object["path"] = nullptr;
  if (!explanation.files.empty()) {
    AddText(object, "path", GetLocationText(explanation.files.front()));
  }
  object["rule"] = GetWord(explanation.rule);
  object["asked"] = nlohmann::ordered_json::array();
  for (const AskedFolder& asked : explanation.asked) object["asked"].push_back(GetObject(asked));
  return json::GetLine(object);
}

}  // namespace Corvane::PathManagement::host
