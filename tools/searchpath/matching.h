#ifndef SEARCHPATH_TOOLS_SEARCHPATH_MATCHING_H
#define SEARCHPATH_TOOLS_SEARCHPATH_MATCHING_H

#include "searchpath/model/filename_matching_policy.h"
#include "searchpath/model/ustring.h"

#include <optional>
#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

class CommandLine;

void AddPolicyTo(CommandLine& commandLine, std::optional<std::string>& policy);

/// The policy with this name; file-system when there is none. Errors: `UsageError`.
[[nodiscard]] FilenameMatchingPolicy GetPolicy(const std::optional<std::string>& policy);

/// Which file names match.
struct MatchingOptions {
  std::vector<std::string> extensions;
  std::optional<std::string> policy;

  void AddTo(CommandLine& commandLine, const std::string& helpOnExtensions);

  /// Each with its dot; `otherwise` when none is given. Errors: `UsageError`.
  [[nodiscard]] std::vector<ustring> GetExtensions(const std::vector<ustring>& otherwise) const;

  /// Errors: `UsageError`.
  [[nodiscard]] FilenameMatchingPolicy GetPolicy() const { return tool::GetPolicy(policy); }
};

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_MATCHING_H
