#include "command_line.h"
#include "commands.h"
#include "path_source.h"
#include "phrases.h"
#include "profiles.h"
#include "searchpath/model/byte_text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>

namespace Corvane::PathManagement::tool {

namespace {

constexpr CommandText kProfilesText = {
    "profiles", "", "Prints the profiles: a name for a path, its rules and its extensions.",
    "  searchpath profiles\n"
    "  searchpath find sys/types.h --profile c    the header that cc would read\n"
    "  searchpath find List::Util --profile perl  the module that perl would load\n"
    "  searchpath find json.decoder --profile python\n"
    "  searchpath find --explain ls --profile command\n",
    "What is printed:\n"
    "  The name, the rules, the path or who names it, and the extensions.\n"
    "\n"
    "Your own profiles:\n"
    "  They stand in profiles.json, in $XDG_CONFIG_HOME/searchpath or else in\n"
    "  ~/.config/searchpath:\n"
    "    {\"profiles\": {\n"
    "      \"mine\": {\"path\": \"/home/me/lib:/opt/lib\", \"rules\": \"plain\",\n"
    "               \"extensions\": [\"zt\"], \"moduleSeparator\": \".\"},\n"
    "      \"c32\": {\"pathOf\": \"cc\", \"flags\": [\"-m32\"]}}}\n"
    "  All fields may be left out. \"path\" is a text as for --path A:B, or a list of\n"
    "  folders; \"pathOf\" is what --path-of takes, and \"flags\" go to the compiler. A\n"
    "  profile without either is for the path of --path, or the stored path. Where\n"
    "  names have a \"moduleSeparator\", it stands for \"/\"; a NAME with \"/\" is taken as\n"
    "  it is. A profile with the name of a built-in one takes its place.\n"
    "\n"
    "Exit: 0, or 2 wrong usage or failure.\n"};

std::string GetPathText(const Profile& profile) {
  if (profile.path) return *profile.path;
  if (!profile.folders.empty()) return Join(profile.folders, ", ");
  if (!profile.pathOf) return "(no path)";
  std::string text = "of " + *profile.pathOf;
  for (const std::string& flag : profile.flags) text += ' ' + flag;
  return text;
}

// True for a profile that takes the extensions of its interpreter, which is not asked here.
bool OnlyInterpreterKnowsExtensions(const Profile& profile) {
  return !profile.extensions && HasSuffixes(profile.pathOf.value_or(""));
}

std::string GetExtensionText(const Profile& profile) {
  if (OnlyInterpreterKnowsExtensions(profile)) return "as the interpreter has them";
  return Join(profile.extensions.value_or(std::vector<std::string>()), " ");
}

std::string GetRulesName(const Profile& profile) { return profile.rules.value_or("environment"); }

// A column of the table: how to get its text for a profile, and the width of its widest text.
struct Column {
  std::string (*getText)(const Profile& profile) = nullptr;
  std::size_t width = 0;
};

void WriteWords(const Output& output, const std::vector<Profile>& profiles) {
  std::array<Column, 4> columns = {{{[](const Profile& profile) { return profile.name; }},
                                    {GetRulesName},
                                    {GetPathText},
                                    {GetExtensionText}}};
  for (Column& column : columns) {
    for (const Profile& profile : profiles) {
      column.width = std::max(column.width, GetWidth(output.GetShown(column.getText(profile))));
    }
  }
  for (const Profile& profile : profiles) {
    std::string line;
    for (const Column& column : columns) {
      line += GetPadded(output.GetShown(column.getText(profile)), column.width + 2);
    }
    output.WriteLine(line.substr(0, line.find_last_not_of(' ') + 1));  // without blanks at the end
  }
}

nlohmann::ordered_json GetObject(const Profile& profile) {
  const auto orNull = [](const auto& value) {
    return value ? nlohmann::ordered_json(*value) : nlohmann::ordered_json();
  };
  nlohmann::ordered_json object = {{"name", profile.name}, {"rules", GetRulesName(profile)}};
  object["path"] = orNull(profile.path);
  if (!profile.folders.empty()) object["path"] = profile.folders;
  object["pathOf"] = orNull(profile.pathOf);
  object["flags"] = profile.flags;
  object["extensions"] = profile.extensions.value_or(std::vector<std::string>());
  if (OnlyInterpreterKnowsExtensions(profile)) object["extensions"] = nullptr;
  object["moduleSeparator"] = profile.moduleSeparator.empty() ? "/" : profile.moduleSeparator;
  object["file"] = nullptr;
  if (!profile.file.empty()) object["file"] = profile.file;
  return object;
}

}  // namespace

Outcome RunProfiles(const Arguments& arguments) {
  CommandLine commandLine(kProfilesText);
  OutputOptions outputOptions;
  outputOptions.AddTo(commandLine);
  if (!commandLine.Parse(arguments)) return Outcome::Done;
  const Output output(outputOptions);
  const std::vector<Profile> profiles = GetProfiles();
  if (!output.IsJson()) WriteWords(output, profiles);
  for (const Profile& profile : profiles) {
    if (output.IsJson()) output.WriteObject(GetObject(profile));
  }
  return Outcome::Done;
}

}  // namespace Corvane::PathManagement::tool
