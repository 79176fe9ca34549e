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

/// Opens the path of `options` as it is now. The result names what the answers depend on besides
/// the path: the files that the path was read from, and other folders that are searched, such as
/// `from`, the folder of --from, if given.
///
/// Errors: as `OpenPath`.
[[nodiscard]] host::OpenedEnvironment OpenFollowed(const PathOptions& options,
                                                   const CommandLine& commandLine,
                                                   const std::optional<std::string>& from);

/// Answers one name after the other on a path that is kept as the disk is. In JSON it also writes,
/// without being asked, which of these names have come to mean another file.
class FollowedAnswers {
 public:
  /// Precondition: `finder` searches `path.Get()`. `path`, `finder` and `whereTo` outlive this
  /// object.
  FollowedAnswers(host::FollowedEnvironment& path, Finder& finder, const Output& whereTo);

  /// Answers as `Finder::Answer`, after changes on the disk have been taken in.
  void Answer(const std::string& name);

  /// Waits until standard input can be read; in JSON, writes changes meanwhile. Ends the program,
  /// by SIGPIPE, when nobody reads its output any more.
  void Wait();

 private:
  void Update();
  void WriteChanges();

  host::FollowedEnvironment& followed;
  Finder& answers;
  const Output& output;
  // The names that were answered, each once, in order; and what each name meant last. Both are only
  // filled for JSON.
  std::vector<std::string> asked;
  std::unordered_map<std::string, std::optional<FoundItem>> files;
};

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_FOLLOWED_ANSWERS_H
