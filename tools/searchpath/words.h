#ifndef SEARCHPATH_TOOLS_SEARCHPATH_WORDS_H
#define SEARCHPATH_TOOLS_SEARCHPATH_WORDS_H

#include "searchpath/host/explanation.h"
#include "searchpath/host/folder_origin.h"
#include "searchpath/host/freshness.h"
#include "searchpath/host/path_differences.h"
#include "searchpath/host/path_examination.h"
#include "searchpath/host/shadow_search.h"
#include "searchpath/host/trust.h"
#include "searchpath/model/path_entry_type.h"

namespace Corvane::PathManagement::tool {

// The words that stand for values in JSON. Programs compare them, so they never change.

[[nodiscard]] const char* GetWord(PathEntryType kind);
[[nodiscard]] const char* GetWord(host::FolderOutcome outcome);
[[nodiscard]] const char* GetWord(host::DecidingRule rule);
[[nodiscard]] const char* GetWord(host::FolderChange change);
[[nodiscard]] const char* GetWord(host::FolderSource source);
[[nodiscard]] const char* GetWord(host::ShadowKind kind);
[[nodiscard]] const char* GetWord(host::FindingKind kind);
[[nodiscard]] const char* GetWord(host::TrustKind kind);
[[nodiscard]] const char* GetWord(host::Freshness freshness);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_WORDS_H
