#include "other_names.h"

#include "suggestion.h"

#include <algorithm>
#include <cstddef>

namespace Corvane::PathManagement::tool {

namespace {

struct OtherName {
  std::string_view name;  // in another tool
  std::string_view here;  // in this one; perhaps with more words
};

// What shells, package managers, version control and other tools for paths call the commands.
constexpr OtherName kOtherCommands[] = {{"where", "which --all"},
                                        {"whereis", "which --all"},
                                        {"type", "which"},
                                        {"command", "which"},
                                        {"whence", "which"},
                                        {"hash", "which"},
                                        {"search", "find"},
                                        {"locate", "find"},
                                        {"lookup", "find"},
                                        {"resolve", "find"},
                                        {"get", "find"},
                                        {"query", "find"},
                                        {"why", "find --explain"},
                                        {"explain", "find --explain"},
                                        {"trace", "find --explain"},
                                        {"glob", "find --glob"},
                                        {"match", "find --glob"},
                                        {"grep", "find --glob"},
                                        {"ls", "list"},
                                        {"dir", "list"},
                                        {"show", "list"},
                                        {"print", "list"},
                                        {"path", "list"},
                                        {"paths", "list"},
                                        {"dump", "list"},
                                        {"dirs", "folders"},
                                        {"directories", "folders"},
                                        {"dupes", "shadows"},
                                        {"duplicates", "shadows"},
                                        {"dedup", "shadows"},
                                        {"conflicts", "shadows"},
                                        {"collisions", "shadows"},
                                        {"overrides", "shadows"},
                                        {"hidden", "shadows"},
                                        {"check", "doctor"},
                                        {"lint", "doctor"},
                                        {"validate", "doctor"},
                                        {"diagnose", "doctor"},
                                        {"fsck", "doctor"},
                                        {"audit", "trust"},
                                        {"security", "trust"},
                                        {"permissions", "trust"},
                                        {"compare", "diff"},
                                        {"changes", "diff"},
                                        {"status", "diff"},
                                        {"monitor", "watch"},
                                        {"follow", "watch"},
                                        {"tail", "watch"},
                                        {"prepend", "add"},
                                        {"push", "add"},
                                        {"insert", "add"},
                                        {"append", "add --end"},
                                        {"rm", "remove"},
                                        {"del", "remove"},
                                        {"delete", "remove"},
                                        {"drop", "remove"},
                                        {"pop", "remove"},
                                        {"pkg", "packages"},
                                        {"modules", "packages"},
                                        {"config", "profiles"},
                                        {"index", "cache write"},
                                        {"save", "cache write"},
                                        {"snapshot", "cache write"},
                                        {"rehash", "cache write"},
                                        {"uri", "iri"},
                                        {"url", "iri"},
                                        {"realpath", "iri"},
                                        {"man", "help"},
                                        {"version", "--version"}};

constexpr OtherName kOtherOptions[] = {{"-i", "--policy ignore-case"},
                                       {"--ignore-case", "--policy ignore-case"},
                                       {"-iname", "--policy ignore-case"},
                                       {"-name", "--glob"},
                                       {"--pattern", "--glob"},
                                       {"--regex", "--glob"},
                                       {"-r", "--recursive"},
                                       {"-R", "--recursive"},
                                       {"-z", "--print0"},
                                       {"--null", "--print0"},
                                       {"-print0", "--print0"},
                                       {"-l", "--long"},
                                       {"-s", "--quiet"},
                                       {"--silent", "--quiet"},
                                       {"-v", "--explain"},
                                       {"--verbose", "--explain"},
                                       {"--why", "--explain"},
                                       {"-p", "--path"},
                                       {"-I", "--path"},
                                       {"-L", "--path"},
                                       {"--exclude", "--without"},
                                       {"--skip", "--without"},
                                       {"--format", "--json"},
                                       {"--output", "--json"},
                                       {"--append", "--end"},
                                       {"-n", "--dry-run"}};

// What is called `typed` elsewhere; empty when `names` lacks it.
template <std::size_t Count>
std::string_view FindHere(std::string_view typed, const OtherName (&names)[Count]) {
  const auto found = std::ranges::find(names, typed, &OtherName::name);
  return found == std::end(names) ? std::string_view() : found->here;
}

}  // namespace

std::string FindCommandMeant(std::string_view typed, const std::vector<std::string>& commands) {
  const std::string_view here = FindHere(typed, kOtherCommands);
  return here.empty() ? FindNearest(typed, commands) : std::string(here);
}

std::string FindOptionMeant(std::string_view typed, const std::vector<std::string>& options) {
  const std::string_view here = FindHere(typed, kOtherOptions);
  // `here` may have a value after the option, and the command may lack the option.
  const auto isHere = [&](const std::string& option) {
    return here.substr(0, here.find(' ')) == option;
  };
  if (std::ranges::any_of(options, isHere)) return std::string(here);
  if (!typed.starts_with("--")) return "";
  std::vector<std::string> names;
  for (const std::string& option : options) {
    if (option.starts_with("--")) names.push_back(option.substr(2));
  }
  const std::string nearest = FindNearest(typed.substr(2), names);
  return nearest.empty() ? "" : "--" + nearest;
}

}  // namespace Corvane::PathManagement::tool
