#ifndef SEARCHPATH_HOST_SHADOW_SEARCH_H
#define SEARCHPATH_HOST_SHADOW_SEARCH_H

#include "searchpath/export.h"
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

/// What a hidden file is to the one that hides it.
enum class ShadowKind : std::uint8_t {
  Different,   ///< other bytes
  Identical,   ///< the same bytes
  OtherCase,   ///< of another name, which is the same only because case is ignored
  SameFile,    ///< the very same file, through a link
  Unreadable,  ///< not known, since one of the two cannot be read
};

inline constexpr std::array<ShadowKind, 5> kShadowKinds = {
    ShadowKind::Different, ShadowKind::Identical, ShadowKind::OtherCase, ShadowKind::SameFile,
    ShadowKind::Unreadable};

/// The kind in words.
[[nodiscard]] SEARCHPATH_EXPORT const char* GetText(ShadowKind kind) noexcept;

/// A file that could not be read, and why.
struct FileProblem {
  FoundItem file;
  std::error_code reason;
};

/// A file that is not what its name means.
struct HiddenFile {
  FoundItem file;
  ShadowKind kind = ShadowKind::Unreadable;
  std::optional<FileProblem> problem = {};  ///< of kind `Unreadable`: which of the two, and why
};

/// A name that several files have: the one that it means hides the others.
struct Shadow {
  ustring name;
  FoundItem winner;
  std::vector<HiddenFile> hidden;  ///< in path order, never empty
};

/// A question for shadows.
struct ShadowLookup {
  /// As in `Lookup`; none means every plain name on the path.
  std::vector<ustring> names = {};
  /// As in `Lookup`. With extensions, every plain name means every one that is written without: "fn"
  /// for "fn.x". Where what is left would have an extension of its own, it is the whole file name.
  std::vector<ustring> extensions = {};
  FilenameMatchingPolicy policy = FilenameMatchingPolicy::FileSystemDefault;
  /// Names, as they are reported, that may hide files: not reported.
  std::vector<ustring> allowed = {};
};

/// Which names mean one file and hide others: for each, the answer of `Environment::FindAll`.
struct ShadowReport {
  /// In the order of the names asked, or of their bytes. When case is ignored, a name is written as
  /// its first file on the path is.
  std::vector<Shadow> shadows;
  std::vector<ustring> unknown;         ///< names asked that no file has
  std::vector<ustring> idleAllowances;  ///< allowed names, of those asked, that hide nothing
};

/// How many files are hidden, by kind.
class ShadowCounts {
 public:
  [[nodiscard]] std::size_t Of(ShadowKind kind) const { return counts.at(Index(kind)); }
  [[nodiscard]] std::size_t GetTotal() const noexcept { return total; }
  void Count(ShadowKind kind) {
    ++counts.at(Index(kind));
    ++total;
  }

 private:
  [[nodiscard]] static std::size_t Index(ShadowKind kind) { return static_cast<std::size_t>(kind); }

  std::array<std::size_t, kShadowKinds.size()> counts = {};
  std::size_t total = 0;
};

/// How many files one folder hides in another, or in itself.
struct FolderShadows {
  std::shared_ptr<const IPathEntry> winner;
  std::shared_ptr<const IPathEntry> hidden;
  ShadowCounts counts;
};

/// Shadows in short.
struct ShadowSummary {
  ShadowCounts counts;
  std::vector<FolderShadows> folders;  ///< those with most hidden files first
};

[[nodiscard]] SEARCHPATH_EXPORT ShadowSummary GetSummary(const std::vector<Shadow>& shadows);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_SHADOW_SEARCH_H
