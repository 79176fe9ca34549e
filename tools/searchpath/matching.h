#ifndef SEARCHPATH_TOOLS_SEARCHPATH_MATCHING_H
#define SEARCHPATH_TOOLS_SEARCHPATH_MATCHING_H

#include "searchpath/model/filename_matching_policy.h"
#include "searchpath/model/ustring.h"

#include <optional>
#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

class CommandLine;

/// Which file names are the ones that are asked for.
struct MatchingOptions {
  std::vector<std::string> extensions;
  std::optional<std::string> policy;

  void AddTo(CommandLine& commandLine, const std::string& helpOnExtensions);

  /// As they are looked up, each with its dot. Errors: `UsageError`.
  [[nodiscard]] std::vector<ustring> GetExtensions() const;

  /// Errors: `UsageError`.
  [[nodiscard]] FilenameMatchingPolicy GetPolicy() const;
};

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_MATCHING_H
