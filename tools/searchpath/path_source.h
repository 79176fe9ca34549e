#ifndef SEARCHPATH_TOOLS_SEARCHPATH_PATH_SOURCE_H
#define SEARCHPATH_TOOLS_SEARCHPATH_PATH_SOURCE_H

#include "searchpath/host/lookup_rules.h"
#include "searchpath/model/ustring.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement::tool {

/// What --path-of takes, for messages and help.
inline constexpr const char* kPathSources = "PATH, another variable, cc, c++, perl or python";

/// The path of another program.
struct SourcedPath {
  std::vector<ustring> folders;
  std::vector<ustring> quoteFolders;  // only for headers in quotes, before the others
  /// What the program appends to a name, in its order; empty where it has no such rule.
  std::vector<ustring> suffixes;
};

/// Whether `source` is something that --path-of takes.
[[nodiscard]] bool IsPathSource(std::string_view source);

/// Whether `source` is a compiler, which takes flags.
[[nodiscard]] bool IsCompiler(std::string_view source);

/// Whether the suffixes of the path of `source` are known.
[[nodiscard]] inline bool HasSuffixes(std::string_view source) { return source == "python"; }

/// The rules, by name, by which programs search that path; empty where that is not known.
[[nodiscard]] std::optional<std::string> GetUsualRules(std::string_view source);

/// Reads an environment variable, to be cut as `rules` have it, or asks a program.
///
/// Precondition: `IsPathSource(source)`.
/// Errors: `UsageError` when the variable is not set, or the program does not answer.
[[nodiscard]] SourcedPath ReadPathSource(const std::string& source,
                                         const std::vector<std::string>& flags,
                                         const host::LookupRules& rules);

/// A list of folders as the rules have it. Programs other than the environment cut it at ":" alone,
/// and an empty part may mean something to them.
[[nodiscard]] std::vector<ustring> SplitFolders(const std::string& list,
                                                const host::LookupRules& rules);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_PATH_SOURCE_H
