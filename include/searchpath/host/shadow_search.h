#ifndef SEARCHPATH_HOST_SHADOW_SEARCH_H
#define SEARCHPATH_HOST_SHADOW_SEARCH_H

#include "searchpath/export.h"
#include "searchpath/model/any_text.h"
#include "searchpath/model/filename_matching_policy.h"
#include "searchpath/model/found_item.h"
#include "searchpath/model/path_entry.h"
#include "searchpath/model/ustring.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <system_error>
#include <vector>

namespace Corvane::PathManagement::host {

/// How a hidden file compares with the one that hides it.
enum class ShadowKind : std::uint8_t {
  Different,   ///< other bytes
  Identical,   ///< the same bytes
  OtherCase,   ///< another file, whose name differs in case
  SameFile,    ///< the very same file, through a link
  Unreadable,  ///< unknown, since one of the two cannot be read
};

/// All kinds, in the order in which they are counted and printed.
inline constexpr std::array<ShadowKind, 5> kShadowKinds = {
    ShadowKind::Different, ShadowKind::Identical, ShadowKind::OtherCase, ShadowKind::SameFile,
    ShadowKind::Unreadable};

/// The kind in words.
[[nodiscard]] SEARCHPATH_EXPORT const char* GetText(ShadowKind kind) noexcept;

/// A file that could not be read, and why.
struct FileProblem {
  FoundItem file;          ///< which file it is
  std::error_code reason;  ///< why reading it failed
};

/// A file that is hidden by another one of its name, the winner.
struct HiddenFile {
  FoundItem file;                            ///< the one that is hidden
  ShadowKind kind = ShadowKind::Unreadable;  ///< how it compares with the winner
  std::optional<FileProblem> problem = {};   ///< of kind `Unreadable`: the file that was not read
};

/// A name that several files share. It means the winner, which hides the others.
struct Shadow {
  ustring name;                    ///< as it was looked up
  FoundItem winner;                ///< the file that the name means
  std::vector<HiddenFile> hidden;  ///< in path order, never empty
};

/// The question which names hide files. A plain name is one without separators. Where folders have
/// no meaning, see `LookupRules`, names are relative to the folders of the path and carry their
/// extensions; `extensions` then says which files are reported, and names are looked up as they
/// are, whatever `policy` is.
struct ShadowLookup {
  /// The names to look up, as in `Lookup`; when there are none, every plain name on the path.
  AnyTexts names = {};
  /// As in `Lookup`. With extensions, the names that are looked up are those of files without their
  /// extension: "fn" for "fn.x". A file whose name has a further dot, such as "a.b.x", is looked up
  /// by its whole name, since extensions are not tried with "a.b".
  AnyTexts extensions = {};
  /// How names are compared.
  FilenameMatchingPolicy policy = FilenameMatchingPolicy::FileSystemDefault;
  /// Names that may hide files and are not reported, spelled as the report would spell them.
  AnyTexts allowed = {};
};

/// Which names hide files: each shadow is the answer of `Environment::FindAll` for its name.
struct ShadowReport {
  /// In the order of `ShadowLookup::names`. When there are none: in the order of the bytes of the
  /// names that hide files; if case is ignored, a name is then spelled as that of its first file on
  /// the path.
  std::vector<Shadow> shadows;
  std::vector<ustring> unknown;         ///< those of `ShadowLookup::names` that no file has
  std::vector<ustring> idleAllowances;  ///< allowed names that were looked up and hide nothing
};

/// How many files are hidden, by kind.
class ShadowCounts {
 public:
  /// How many files of this kind.
  [[nodiscard]] std::size_t Of(ShadowKind kind) const { return counts.at(Index(kind)); }
  /// How many files of all kinds.
  [[nodiscard]] std::size_t GetTotal() const noexcept { return total; }
  /// Adds one file.
  void Count(ShadowKind kind) {
    ++counts.at(Index(kind));
    ++total;
  }

 private:
  [[nodiscard]] static std::size_t Index(ShadowKind kind) { return static_cast<std::size_t>(kind); }

  std::array<std::size_t, kShadowKinds.size()> counts = {};
  std::size_t total = 0;
};

/// How many files of one folder are hidden by files of another folder, or of the same one.
struct FolderShadows {
  std::shared_ptr<const IPathEntry> winner;  ///< whose files hide the others
  std::shared_ptr<const IPathEntry> hidden;  ///< whose files are hidden
  ShadowCounts counts;                       ///< how many, by kind
};

/// How many files are hidden, in all and for each pair of folders.
struct ShadowSummary {
  ShadowCounts counts;                 ///< in all
  std::vector<FolderShadows> folders;  ///< those with most hidden files first
};

/// Counts the hidden files of `shadows`, by kind and by folders.
[[nodiscard]] SEARCHPATH_EXPORT ShadowSummary GetSummary(const std::vector<Shadow>& shadows);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_SHADOW_SEARCH_H
