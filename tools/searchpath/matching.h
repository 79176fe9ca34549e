#ifndef SEARCHPATH_TOOLS_SEARCHPATH_MATCHING_H
#define SEARCHPATH_TOOLS_SEARCHPATH_MATCHING_H

#include "searchpath/model/filename_matching_policy.h"
#include "searchpath/model/ustring.h"

#include <optional>
#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

class CommandLine;

/// Adds --policy, whose value goes into `policy`.
void AddPolicyTo(CommandLine& commandLine, std::optional<std::string>& policy);

/// The policy called `policy`, or that of the file system for `nullopt`. Errors: `UsageError` when
/// no policy has that name.
[[nodiscard]] FilenameMatchingPolicy GetPolicy(const std::optional<std::string>& policy);

/// The options --ext and --policy: which file names match.
struct MatchingOptions {
  std::vector<std::string> extensions;
  std::optional<std::string> policy;

  void AddTo(CommandLine& commandLine, const std::string& helpOnExtensions);

  /// The values of --ext, each with a dot before it; `otherwise` when there are none. Errors:
  /// `UsageError` when a value is empty.
  [[nodiscard]] std::vector<ustring> GetExtensions(const std::vector<ustring>& otherwise) const;

  /// The policy of --policy. Errors: as `tool::GetPolicy`.
  [[nodiscard]] FilenameMatchingPolicy GetPolicy() const { return tool::GetPolicy(policy); }
};

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_MATCHING_H
