#ifndef SEARCHPATH_HOST_WORDS_H
#define SEARCHPATH_HOST_WORDS_H

#include "searchpath/export.h"
#include "searchpath/host/explanation.h"
#include "searchpath/host/folder_origin.h"
#include "searchpath/host/freshness.h"
#include "searchpath/host/path_differences.h"
#include "searchpath/host/path_examination.h"
#include "searchpath/host/shadow_search.h"
#include "searchpath/host/trust.h"
#include "searchpath/model/path_entry.h"
#include "searchpath/model/path_entry_type.h"

namespace Corvane::PathManagement::host {

/// The word that stands for a value in JSON: "hidden-by-earlier". Words never change, since
/// programs compare them.
/// @{
[[nodiscard]] SEARCHPATH_EXPORT const char* GetWord(PathEntryType kind);
[[nodiscard]] SEARCHPATH_EXPORT const char* GetWord(FolderOutcome outcome);
[[nodiscard]] SEARCHPATH_EXPORT const char* GetWord(DecidingRule rule);
[[nodiscard]] SEARCHPATH_EXPORT const char* GetWord(FolderChange change);
[[nodiscard]] SEARCHPATH_EXPORT const char* GetWord(FolderSource source);
[[nodiscard]] SEARCHPATH_EXPORT const char* GetWord(ShadowKind kind);
[[nodiscard]] SEARCHPATH_EXPORT const char* GetWord(FindingKind kind);
[[nodiscard]] SEARCHPATH_EXPORT const char* GetWord(TrustKind kind);
[[nodiscard]] SEARCHPATH_EXPORT const char* GetWord(Freshness freshness);
/// @}

/// Why `folder` cannot be searched, in words; null when it can be searched or is not on disk. Lists
/// the folder.
[[nodiscard]] SEARCHPATH_EXPORT const char* FindProblemText(const IPathEntry& folder);
/// Why the folder of `asked` gave no answer, if it is unreadable, a repeat or hidden; null for all
/// other outcomes.
[[nodiscard]] SEARCHPATH_EXPORT const char* FindProblemText(const AskedFolder& asked);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_WORDS_H
