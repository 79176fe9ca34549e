#include "profile_file.h"

#include "json_file.h"
#include "path_source.h"
#include "searchpath/host/lookup_rules.h"
#include "searchpath/host/stored_path.h"
#include "searchpath/model/byte_text.h"
#include "standard_streams.h"

#include <utility>
#include <variant>

namespace Corvane::PathManagement::tool {

namespace {

using json::Field;
using json::JsonFault;

constexpr std::size_t kMostValues = 10'000;  // far more than anybody writes by hand

std::string GetProfilesFile() {
  const std::string storedPath = GetBytes(host::StoredPath::GetDefaultFile().native());
  return storedPath.substr(0, storedPath.rfind('/') + 1) + "profiles.json";
}

std::string ReadText(const Field& field) { return GetBytes(field.AsText()); }

std::vector<std::string> ReadTexts(const Field& field) {
  std::vector<std::string> texts;
  for (const Field& element : field.GetElements()) texts.push_back(ReadText(element));
  return texts;
}

[[noreturn]] void RefuseExpecting(const Field& field, const std::string& expected) {
  field.Refuse(JsonFault::WrongType, TextFromBytes(expected));
}

// The name of rules that --as takes.
std::string ReadRules(const Field& field) {
  std::string name = ReadText(field);
  std::string known;
  for (const host::NamedRules& rules : host::kNamedRules) {
    if (rules.name == name) return name;
    known += (known.empty() ? "" : ", ") + std::string(rules.name);
  }
  RefuseExpecting(field, "one of " + known);
}

// Sets the members of `profile` that say what the path is.
void ReadPath(const Field& object, Profile& profile) {
  if (const auto path = object.Find(u"path")) {
    if (std::holds_alternative<ustring>(path->value.content)) {
      profile.path = ReadText(*path);
    } else {
      // Refuses a value that is neither a text nor a list.
      static_cast<void>(path->As<json::LocatedJson::Array>(u"a text or a list of texts"));
      profile.folders = ReadTexts(*path);
      if (profile.folders.empty()) RefuseExpecting(*path, "at least one folder");
    }
  }
  if (const auto source = object.Find(u"pathOf")) {
    profile.pathOf = ReadText(*source);
    if (object.Find(u"path")) RefuseExpecting(*source, "either \"path\" or \"pathOf\"");
    if (!IsPathSource(*profile.pathOf)) RefuseExpecting(*source, kPathSources);
  }
  if (const auto flags = object.Find(u"flags")) {
    profile.flags = ReadTexts(*flags);
    if (!IsCompiler(profile.pathOf.value_or(""))) {
      RefuseExpecting(*flags, "\"pathOf\" to be cc or c++");
    }
  }
}

Profile ReadProfile(const std::string& name, const Field& object) {
  object.CheckMembers({u"path", u"pathOf", u"flags", u"rules", u"extensions", u"moduleSeparator"});
  Profile profile;
  profile.name = name;
  ReadPath(object, profile);
  if (profile.pathOf) profile.rules = GetUsualRules(*profile.pathOf);
  if (const auto rules = object.Find(u"rules")) profile.rules = ReadRules(*rules);
  if (const auto extensions = object.Find(u"extensions")) {
    profile.extensions = ReadTexts(*extensions);
    for (std::string& extension : *profile.extensions) {
      if (!extension.starts_with('.') && !extension.starts_with('/')) extension.insert(0, 1, '.');
    }
  }
  if (const auto separator = object.Find(u"moduleSeparator")) {
    profile.moduleSeparator = ReadText(*separator);
  }
  return profile;
}

}  // namespace

std::vector<Profile> ReadProfiles() {
  const std::string file = GetProfilesFile();
  const auto bytes = ReadBytes(file);
  return bytes ? ParseProfiles(file, *bytes) : std::vector<Profile>();
}

std::vector<Profile> ParseProfiles(const std::string& file, const std::string& bytes) {
  std::vector<Profile> profiles;
  ReadJson(file, bytes, kMostValues, [&](const Field& root) {
    root.CheckMembers({u"profiles"});
    const Field named = root.Get(u"profiles");
    for (const json::JsonMember& member : named.As<json::LocatedJson::Object>(u"an object")) {
      const Field field{member.value, json::FieldBelow(named.name, member.name)};
      if (member.name.empty()) RefuseExpecting(field, "a name that is not empty");
      profiles.push_back(ReadProfile(GetBytes(member.name), field));
      profiles.back().file = file;
    }
  });
  return profiles;
}

}  // namespace Corvane::PathManagement::tool
