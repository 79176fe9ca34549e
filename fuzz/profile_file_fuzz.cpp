#include "command_line.h"
#include "fuzz_input.h"
#include "path_source.h"
#include "profile_file.h"

#include <nlohmann/json.hpp>

#include <algorithm>

using namespace Corvane::PathManagement;
using fuzz::Require;
using nlohmann::ordered_json;

namespace {

void CheckProfile(const tool::Profile& profile) {
  Require(!profile.name.empty(), "a name");
  Require(profile.path.has_value() + !profile.folders.empty() + profile.pathOf.has_value() <= 1,
          "one path at most");
  Require(!profile.pathOf || tool::IsPathSource(*profile.pathOf), "something that names a path");
  Require(profile.flags.empty() || tool::IsCompiler(profile.pathOf.value_or("")),
          "flags for compilers only");
  for (const std::string& extension : profile.extensions.value_or(std::vector<std::string>())) {
    Require(extension.starts_with('.') || extension.starts_with('/'), "an extension with its dot");
  }
}

ordered_json JsonOf(const tool::Profile& profile) {
  ordered_json json = ordered_json::object();
  if (profile.path) json["path"] = *profile.path;
  if (!profile.folders.empty()) json["path"] = profile.folders;
  if (profile.pathOf) json["pathOf"] = *profile.pathOf;
  if (!profile.flags.empty()) json["flags"] = profile.flags;
  if (profile.rules) json["rules"] = *profile.rules;
  if (profile.extensions) json["extensions"] = *profile.extensions;
  if (!profile.moduleSeparator.empty()) json["moduleSeparator"] = profile.moduleSeparator;
  return json;
}

ordered_json JsonOf(const std::vector<tool::Profile>& profiles) {
  ordered_json named = ordered_json::object();
  for (const tool::Profile& profile : profiles) named[profile.name] = JsonOf(profile);
  return {{"profiles", std::move(named)}};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  try {
    const auto profiles = tool::ParseProfiles("own.json", bytes);
    std::for_each(profiles.begin(), profiles.end(), CheckProfile);
    const ordered_json json = JsonOf(profiles);
    const std::string written = json.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
    Require(JsonOf(tool::ParseProfiles("own.json", written)) == ordered_json::parse(written),
            "what was read can be written and read again");
  } catch (const tool::UsageError& error) {
    Require(std::string(error.what()).starts_with("own.json:"), "the message names the file");
  }
  return 0;
}
