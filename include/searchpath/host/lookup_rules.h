#ifndef SEARCHPATH_HOST_LOOKUP_RULES_H
#define SEARCHPATH_HOST_LOOKUP_RULES_H

#include "searchpath/export.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace Corvane::PathManagement::host {

/// The rules by which a name is looked up on a path. The defaults are the rules of the environment,
/// `kEnvironmentRules`; other programs search their paths by other rules.
struct LookupRules {
  /// What a name with a separator means. Where folders have no meaning, a name that begins with a
  /// separator, such as /bin/ls, is always the location of its file; the path is not searched.
  enum class Separator : std::uint8_t {
    TrailingFolders,  ///< geometry/area.zt: a file in a folder whose location ends in "geometry"
    FileBelow,        ///< a/b.h: this file below the first folder of the path that has it
    ThatFile,         ///< a/b: this file below the working folder; the path is not searched
  };
  /// Which files a name can mean. A link is taken for what it leads to.
  enum class Files : std::uint8_t {
    Regular,     ///< regular files, also files that may not be read
    Executable,  ///< regular files that this process may execute, with its effective rights
    /// Regular files and character devices, such as /dev/null, that may be read. Folders that may
    /// be read are passed over. Anything else of that name ends the search, with no answer.
    Readable,
  };
  /// What an empty part of the path is.
  enum class EmptyPart : std::uint8_t {
    LeftOut,        ///< no folder
    WorkingFolder,  ///< the working folder, see `EnvironmentOptions`
  };

  /// Whether the names of folders have a meaning: private, resources, "+" and "@" folders are
  /// special, and partial pathnames match the ends of locations. `separator` and `files` must then
  /// have their defaults.
  ///
  /// If not, `separator` should be set, too: where folders have no meaning, `TrailingFolders` finds
  /// the same file as `FileBelow`, but questions that go through all files leave out those below
  /// the folders of the path, and `Lookup::fromFolder` is not searched.
  bool foldersHaveMeaning = true;
  Separator separator = Separator::TrailingFolders;  ///< what a name with a separator means
  Files files = Files::Regular;                      ///< which files a name can mean
  EmptyPart emptyPart = EmptyPart::LeftOut;          ///< what the empty part of "a::b" is
  /// Whether a part of the path may be an IRI, or begin with "~" or "~user".
  bool expandsParts = true;
  /// Whether a folder that is given twice is searched once.
  bool dropsRepeats = true;

  friend bool operator==(const LookupRules&, const LookupRules&) = default;
};

/// The environment's own rules.
inline constexpr LookupRules kEnvironmentRules;
/// A name is that of a file in or below a folder of the path. Folders have no meaning.
inline constexpr LookupRules kPlainRules = {.foldersHaveMeaning = false,
                                            .separator = LookupRules::Separator::FileBelow,
                                            .expandsParts = false};
/// A POSIX shell and `execvp` look up commands by these.
inline constexpr LookupRules kProgramRules = {.foldersHaveMeaning = false,
                                              .separator = LookupRules::Separator::ThatFile,
                                              .files = LookupRules::Files::Executable,
                                              .emptyPart = LookupRules::EmptyPart::WorkingFolder,
                                              .expandsParts = false,
                                              .dropsRepeats = false};
/// C compilers look up headers by these. For a header in quotes, the folder of the file that
/// includes it goes into `Lookup::fromFolder`. For `#include_next`, the folder of the path in which
/// the including header was found goes into `Lookup::afterFolder`.
inline constexpr LookupRules kIncludeRules = {.foldersHaveMeaning = false,
                                              .separator = LookupRules::Separator::FileBelow,
                                              .files = LookupRules::Files::Readable,
                                              .emptyPart = LookupRules::EmptyPart::WorkingFolder,
                                              .expandsParts = false};

/// Rules and what they are called.
struct NamedRules {
  const char* name = nullptr;  ///< as the option `--as` takes it; set in `kNamedRules`
  LookupRules rules = {};      ///< what the name stands for
};

/// "environment", "plain", "program" and "include".
inline constexpr std::array<NamedRules, 4> kNamedRules = {{{"environment", kEnvironmentRules},
                                                           {"plain", kPlainRules},
                                                           {"program", kProgramRules},
                                                           {"include", kIncludeRules}}};

/// The rules called `name` in `kNamedRules`; empty when none are called so.
[[nodiscard]] SEARCHPATH_EXPORT std::optional<LookupRules> FindRules(
    std::string_view name) noexcept;

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_LOOKUP_RULES_H
