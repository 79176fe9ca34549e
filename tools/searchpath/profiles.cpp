#include "profiles.h"

#include "command_line.h"
#include "path_source.h"
#include "profile_file.h"
#include "standard_streams.h"
#include "suggestion.h"

#include <algorithm>
#include <utility>

namespace Corvane::PathManagement::tool {

namespace {

std::vector<Profile> GetBuiltIn() {
  std::vector<Profile> profiles = {
      {.name = "command", .pathOf = "PATH"},
      {.name = "c", .pathOf = "cc"},
      {.name = "c++", .pathOf = "c++"},
      {.name = "perl", .pathOf = "perl", .extensions = {{".pm"}}, .moduleSeparator = "::"},
      {.name = "python", .pathOf = "python", .moduleSeparator = "."}};
  for (Profile& profile : profiles) profile.rules = GetUsualRules(*profile.pathOf);
  return profiles;
}

}  // namespace

std::vector<Profile> GetProfiles() {
  std::vector<Profile> profiles = GetBuiltIn();
  for (Profile& own : ReadProfiles()) {
    const auto place = std::find_if(profiles.begin(), profiles.end(), [&](const Profile& earlier) {
      return earlier.name == own.name;
    });
    if (place == profiles.end()) {
      profiles.push_back(std::move(own));
    } else {
      *place = std::move(own);
    }
  }
  return profiles;
}

Profile GetProfile(const std::string& name) {
  std::vector<std::string> names;
  for (Profile& profile : GetProfiles()) {
    if (profile.name == name) return std::move(profile);
    names.push_back(profile.name);
  }
  const std::string nearest = FindNearest(name, names);
  throw UsageError("there is no profile " + Quoted(name) + "; the profiles are " +
                   Join(names, ", ", " and ") +
                   (nearest.empty() ? "" : "; did you mean " + nearest + '?'));
}

}  // namespace Corvane::PathManagement::tool
