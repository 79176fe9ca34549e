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

/// The path that another program or a variable names.
struct SourcedPath {
  std::vector<ustring> folders = {};
  /// Searched before `folders`, but only for headers in quotes.
  std::vector<ustring> quoteFolders = {};
  /// What the program appends to a name to find its file, in the order of its attempts; empty for a
  /// program that appends nothing.
  std::vector<ustring> suffixes = {};
};

/// Whether `source` is something that --path-of takes.
[[nodiscard]] bool IsPathSource(std::string_view source);

/// Whether `source` is a compiler, which takes flags.
[[nodiscard]] bool IsCompiler(std::string_view source);

/// Whether `ReadPathSource` reads `SourcedPath::suffixes` for `source`.
[[nodiscard]] inline bool HasSuffixes(std::string_view source) { return source == "python"; }

/// The value of --as that names the rules by which programs search the path of `source`; `nullopt`
/// when these rules are not known.
[[nodiscard]] std::optional<std::string> GetUsualRules(std::string_view source);

/// Reads the path of `source`. A compiler is asked, with the `flags`, and so is an interpreter; any
/// other source is an environment variable, whose value `SplitFolders` splits by `rules`.
///
/// Precondition: `IsPathSource(source)`.
/// Errors: `UsageError` when the variable is not set, or the program does not answer.
[[nodiscard]] SourcedPath ReadPathSource(const std::string& source,
                                         const std::vector<std::string>& flags,
                                         const host::LookupRules& rules);

/// The folders in `list`, which is split by `rules`. The rules "environment" split at ":" and ";"
/// and drop empty parts. All other rules split at ":" alone and keep empty parts, which may have a
/// meaning.
[[nodiscard]] std::vector<ustring> SplitFolders(const std::string& list,
                                                const host::LookupRules& rules);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_PATH_SOURCE_H
