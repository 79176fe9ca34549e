#include "sarif_log.h"

#include "phrases.h"
#include "searchpath/host/native_location.h"
#include "searchpath/host/words.h"
#include "standard_streams.h"

#include <string>
#include <string_view>

namespace Corvane::PathManagement::tool {

namespace {

using nlohmann::ordered_json;

/// The "file" URI of the native path of `file`, in ASCII.
std::string GetUri(const FoundItem& file) {
  constexpr std::string_view plain =
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-._~/";
  constexpr std::string_view digits = "0123456789ABCDEF";
  const std::string path = GetBytes(host::GetNativePath(file));
  std::string uri = "file://";
  for (const char byte : path) {
    const auto value = static_cast<unsigned char>(byte);
    if (plain.find(byte) != std::string_view::npos) {
      uri += byte;
    } else {
      uri += {'%', digits[value / 16], digits[value % 16]};
    }
  }
  return uri;
}

ordered_json GetLocation(const FoundItem& file) {
  return {{"physicalLocation", {{"artifactLocation", {{"uri", GetUri(file)}}}}}};
}

/// How serious a hidden file is, in the words of the format.
const char* GetLevel(host::ShadowKind kind) {
  const bool matters = kind == host::ShadowKind::Different || kind == host::ShadowKind::OtherCase;
  return matters ? "warning" : "note";
}

ordered_json GetRules() {
  ordered_json rules = ordered_json::array();
  for (const host::ShadowKind kind : host::kShadowKinds) {
    const std::string text =
        std::string("A file is hidden by another one of its name: ") + host::GetText(kind) + '.';
    rules.push_back({{"id", GetWord(kind)}, {"shortDescription", {{"text", text}}}});
  }
  return rules;
}

}  // namespace

void SarifLog::Add(const std::vector<host::Shadow>& shadows) {
  for (const host::Shadow& shadow : shadows) {
    for (const host::HiddenFile& hidden : shadow.hidden) {
      const std::string message = '"' + GetBytes(shadow.name) + "\" means " +
                                  GetBytes(host::GetNativePath(shadow.winner)) +
                                  ", which hides this file (" + host::GetText(hidden.kind) + ").";
      results.push_back({{"ruleId", GetWord(hidden.kind)},
                         {"level", GetLevel(hidden.kind)},
                         {"message", {{"text", message}}},
                         {"locations", {GetLocation(hidden.file)}},
                         {"relatedLocations", {GetLocation(shadow.winner)}}});
    }
  }
}

void SarifLog::Write() const {
  const ordered_json driver = {
      {"name", "searchpath"}, {"version", SEARCHPATH_VERSION}, {"rules", GetRules()}};
  const ordered_json run = {{"tool", {{"driver", driver}}}, {"results", results}};
  const ordered_json log = {{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
                            {"version", "2.1.0"},
                            {"runs", ordered_json::array({run})}};
  // Names may hold bytes that are not UTF-8; those are replaced.
  WriteData(
      log.dump(/*indent=*/2, ' ', /*ensure_ascii=*/false, ordered_json::error_handler_t::replace) +
      '\n');
}

}  // namespace Corvane::PathManagement::tool
