#ifndef SEARCHPATH_TOOLS_SEARCHPATH_FOLLOWED_ANSWERS_H
#define SEARCHPATH_TOOLS_SEARCHPATH_FOLLOWED_ANSWERS_H

#include "searchpath/host/followed_environment.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace Corvane::PathManagement::tool {

class CommandLine;
class Finder;
class Output;
struct PathOptions;

/// The path of `options` as it is now, with what it was read from, for questions from the folder `from`.
[[nodiscard]] host::OpenedEnvironment OpenFollowed(const PathOptions& options,
                                                   const CommandLine& commandLine,
                                                   const std::optional<std::string>& from);

/// Answers one name after the other from a path that is kept as the disk is. In JSON it also writes,
/// without being asked, which of these names mean another file now.
class FollowedAnswers {
 public:
  /// `finder` asks the environment of `path`.
  FollowedAnswers(host::FollowedEnvironment& path, Finder& finder, const Output& whereTo);

  void Answer(const std::string& name);

  /// Waits until standard input can be read, and writes changes meanwhile. Ends the program when nobody
  /// reads its output any more.
  void Wait();

 private:
  void Update();
  void WriteChanges();

  host::FollowedEnvironment& followed;
  Finder& answers;
  const Output& output;
  std::vector<std::string> asked;  // each name once
  std::unordered_map<std::string, std::optional<FoundItem>> files;
};

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_FOLLOWED_ANSWERS_H
