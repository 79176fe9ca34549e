#ifndef SEARCHPATH_TOOLS_SEARCHPATH_WORDS_H
#define SEARCHPATH_TOOLS_SEARCHPATH_WORDS_H

#include "searchpath/host/explanation.h"
#include "searchpath/host/folder_origin.h"
#include "searchpath/host/path_differences.h"
#include "searchpath/host/path_examination.h"
#include "searchpath/host/shadow_search.h"
#include "searchpath/model/path_entry_type.h"

namespace Corvane::PathManagement::tool {

// The words of JSON, which programs compare: they stay as they are.

/// "ordinary", "+", "@", "private" or "resources".
[[nodiscard]] const char* GetKindText(PathEntryType kind) noexcept;

/// "holds-it", "absent" and the like.
[[nodiscard]] const char* GetOutcomeText(host::FolderOutcome outcome) noexcept;

/// "first-folder", "nothing-found" and the like.
[[nodiscard]] const char* GetRuleText(host::DecidingRule rule) noexcept;

/// "removed", "added", "moved" or "refreshed".
[[nodiscard]] const char* GetChangeText(host::FolderChange change) noexcept;

/// "command-line", "stored-path", "cache" or "package".
[[nodiscard]] const char* GetSourceText(host::FolderSource source) noexcept;

/// "different", "same-file" and the like.
[[nodiscard]] const char* GetShadowText(host::ShadowKind kind) noexcept;

/// "missing", "not-utf-8" and the like.
[[nodiscard]] const char* GetFindingText(host::FindingKind kind) noexcept;

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_WORDS_H
