#ifndef SEARCHPATH_C_SEARCHPATH_H
#define SEARCHPATH_C_SEARCHPATH_H

/// \file
/// Which file a name means on a path of folders, why that one, and what it hides: for C99 and for
/// languages that call C.
///
/// Texts are bytes, as file names are; those that go in end with NUL. Handles are opaque. What a
/// function hands out is freed by the function of that name; null may be freed. Views live as long as
/// the handle that they are asked of.
///
/// Threads: a handle may be asked from any number of threads, and is freed when none asks it any
/// more.
/// Errors: a function that can fail returns a status and, where `error` is not null, says there what
/// is wrong. What it hands out is then null. No exception leaves the library. Not found is no error.
/// Precondition: no handle is null, and indices are below the counts.

#include "searchpath/export.h"

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// Raised by one when a function is added; a change of what is there makes a new library.
#define SEARCHPATH_C_VERSION 2

/// The version of the library that is linked, at least that of the header.
SEARCHPATH_EXPORT uint32_t searchpath_version(void);

/// How a function ended.
typedef enum searchpath_status {
  SEARCHPATH_OK = 0,       ///< it did what it is for
  SEARCHPATH_INVALID = 1,  ///< an argument means nothing
  SEARCHPATH_FOLDER = 2,   ///< the folder that asks cannot be used
  SEARCHPATH_SYSTEM = 3,  ///< the system has no memory, descriptor or thread left, or a disk failed
  SEARCHPATH_FILE = 4     ///< a file cannot be read, or is not what it should be
} searchpath_status;

/// What went wrong, in words; cut off where it is longer.
typedef struct searchpath_error {
  char message[256];  ///< ends with NUL; set by a function that fails, by no other
} searchpath_error;

/// Bytes that end with NUL, which does not count; they may hold others.
typedef struct searchpath_text {
  const char* bytes;  ///< null only where a function says so
  size_t size;        ///< without the NUL at the end
} searchpath_text;

/// A path and what is known of it.
typedef struct searchpath_environment searchpath_environment;
/// Files, in path order.
typedef struct searchpath_files searchpath_files;
/// Why a name means what it means.
typedef struct searchpath_explanation searchpath_explanation;
/// Names that hide files.
typedef struct searchpath_shadows searchpath_shadows;
/// An environment that is followed.
typedef struct searchpath_watch searchpath_watch;

/// A path of folders as users type them, searched in that order. `rules` is "environment", "plain",
/// "program" or "include"; null means the first. Where `recursive` is not 0, all folders below are on
/// the path as well. A folder that cannot be searched counts as empty. What is relative, later as well,
/// is below the working folder of the process as it is now.
SEARCHPATH_EXPORT searchpath_status searchpath_environment_open(
    const char* const* folders, size_t folder_count, int recursive, const char* rules,
    searchpath_environment** environment, searchpath_error* error);
/// Frees it; files and explanations that it gave stay.
SEARCHPATH_EXPORT void searchpath_environment_free(searchpath_environment* environment);

/// A question for a name.
typedef struct searchpath_lookup {
  const char* name;               ///< a file name, or a partial pathname
  const char* const* extensions;  ///< with or without their dot; null when there are none
  size_t extension_count;         ///< of `extensions`
  const char* from_folder;        ///< of the code that asks; null when there is none
  int ignore_case;                ///< 0: as the file system compares
} searchpath_lookup;

/// The file that the name means; none when there is none.
SEARCHPATH_EXPORT searchpath_status searchpath_find(const searchpath_environment* environment,
                                                    const searchpath_lookup* lookup,
                                                    searchpath_files** files,
                                                    searchpath_error* error);
/// The same, and every file that it hides, in path order.
SEARCHPATH_EXPORT searchpath_status searchpath_find_all(const searchpath_environment* environment,
                                                        const searchpath_lookup* lookup,
                                                        searchpath_files** files,
                                                        searchpath_error* error);
/// How many files there are.
SEARCHPATH_EXPORT size_t searchpath_files_count(const searchpath_files* files);
/// The native path.
SEARCHPATH_EXPORT searchpath_text searchpath_files_path(const searchpath_files* files,
                                                        size_t index);
/// Frees them, with the views of their paths.
SEARCHPATH_EXPORT void searchpath_files_free(searchpath_files* files);

/// Which folders were asked, in order, and what came of each.
SEARCHPATH_EXPORT searchpath_status searchpath_explain(const searchpath_environment* environment,
                                                       const searchpath_lookup* lookup,
                                                       searchpath_explanation** explanation,
                                                       searchpath_error* error);
/// The rule that decided, in words.
SEARCHPATH_EXPORT searchpath_text
searchpath_explanation_rule(const searchpath_explanation* explanation);
/// The answer of `searchpath_find_all`, a part of the explanation.
SEARCHPATH_EXPORT const searchpath_files* searchpath_explanation_answer(
    const searchpath_explanation* explanation);
/// How many folders were asked.
SEARCHPATH_EXPORT size_t searchpath_explanation_count(const searchpath_explanation* explanation);
/// The native path of the folder that was asked.
SEARCHPATH_EXPORT searchpath_text
searchpath_explanation_folder(const searchpath_explanation* explanation, size_t index);
/// In words: "holds it", "absent".
SEARCHPATH_EXPORT searchpath_text
searchpath_explanation_outcome(const searchpath_explanation* explanation, size_t index);
/// The folder as it was given that brought this one onto the path.
SEARCHPATH_EXPORT searchpath_text
searchpath_explanation_origin(const searchpath_explanation* explanation, size_t index);
/// The files of the folder that count, the best first; a part of the explanation.
SEARCHPATH_EXPORT const searchpath_files* searchpath_explanation_files(
    const searchpath_explanation* explanation, size_t index);
/// Frees it, with all that is a part of it.
SEARCHPATH_EXPORT void searchpath_explanation_free(searchpath_explanation* explanation);

/// The names by which files are looked up with the extensions of `lookup`, as far as they hide files.
/// Its other members do not count.
SEARCHPATH_EXPORT searchpath_status
searchpath_find_shadows(const searchpath_environment* environment, const searchpath_lookup* lookup,
                        searchpath_shadows** shadows, searchpath_error* error);
/// How many names hide files.
SEARCHPATH_EXPORT size_t searchpath_shadows_count(const searchpath_shadows* shadows);
/// The name, as it was looked up.
SEARCHPATH_EXPORT searchpath_text searchpath_shadows_name(const searchpath_shadows* shadows,
                                                          size_t index);
/// The file that the name means, then those that it hides; a part of the shadows.
SEARCHPATH_EXPORT const searchpath_files* searchpath_shadows_files(
    const searchpath_shadows* shadows, size_t index);
/// What a hidden file is to the one that hides it, in words: "identical". `file` counts from 1, as in
/// the list of files; 0 is the file that hides the others, and has no kind.
SEARCHPATH_EXPORT searchpath_text searchpath_shadows_kind(const searchpath_shadows* shadows,
                                                          size_t index, size_t file);
/// Frees them, with all that is a part of them.
SEARCHPATH_EXPORT void searchpath_shadows_free(searchpath_shadows* shadows);

/// Follows the path of an environment on the disk, by its rules. The environment may be freed meanwhile.
SEARCHPATH_EXPORT searchpath_status searchpath_watch_open(const searchpath_environment* environment,
                                                          searchpath_watch** watch,
                                                          searchpath_error* error);
/// A descriptor for `poll`: readable when something may have changed, until the environment is asked
/// for. It belongs to the watch. The kernel reports no changes on network file systems: with folders
/// there, ask for the environment now and then as well. Negative when the kernel reports none at all.
SEARCHPATH_EXPORT int searchpath_watch_descriptor(const searchpath_watch* watch);
/// The path as the disk is now. What changes later is certain to be seen in the next environment only.
/// Takes a system call when nothing has changed; otherwise all folders are listed again.
SEARCHPATH_EXPORT searchpath_status searchpath_watch_environment(
    const searchpath_watch* watch, searchpath_environment** environment, searchpath_error* error);
/// Frees it; environments that it gave stay.
SEARCHPATH_EXPORT void searchpath_watch_free(searchpath_watch* watch);

/// The explanation as an object in JSON: what `searchpath find --explain --json` prints.
SEARCHPATH_EXPORT searchpath_text
searchpath_explanation_json(const searchpath_explanation* explanation);

// Receipts: answers, and what they rest on, so that it can be found out later whether they still hold.

/// Answers, and what they rest on.
typedef struct searchpath_receipt searchpath_receipt;
/// The answers in a receipt.
typedef struct searchpath_answers searchpath_answers;
/// The names of a receipt that mean another file now.
typedef struct searchpath_changes searchpath_changes;

/// The receipt of what `searchpath_find` answers to these questions.
SEARCHPATH_EXPORT searchpath_status searchpath_find_with_receipt(
    const searchpath_environment* environment, const searchpath_lookup* lookups,
    size_t lookup_count, searchpath_receipt** receipt, searchpath_error* error);
/// That of a file, which `searchpath find --receipt` writes as well. A copy of one from another machine
/// is of no use.
SEARCHPATH_EXPORT searchpath_status searchpath_receipt_load(const char* file,
                                                            searchpath_receipt** receipt,
                                                            searchpath_error* error);
/// Replaces the file in one step.
SEARCHPATH_EXPORT searchpath_status searchpath_receipt_save(const searchpath_receipt* receipt,
                                                            const char* file,
                                                            searchpath_error* error);
/// Frees it; what was made of it stays.
SEARCHPATH_EXPORT void searchpath_receipt_free(searchpath_receipt* receipt);

/// The names in the order in which they were asked, and what they meant.
SEARCHPATH_EXPORT searchpath_status searchpath_receipt_answers(const searchpath_receipt* receipt,
                                                               searchpath_answers** answers,
                                                               searchpath_error* error);
/// How many names there are.
SEARCHPATH_EXPORT size_t searchpath_answers_count(const searchpath_answers* answers);
/// The name as it was asked.
SEARCHPATH_EXPORT searchpath_text searchpath_answers_name(const searchpath_answers* answers,
                                                          size_t index);
/// The bytes are null when there was no file.
SEARCHPATH_EXPORT searchpath_text searchpath_answers_path(const searchpath_answers* answers,
                                                          size_t index);
/// Frees them, with the views of their texts.
SEARCHPATH_EXPORT void searchpath_answers_free(searchpath_answers* answers);

/// The names that mean another file now. Only those are asked for whose answers may have changed: as a
/// rule, a question to the disk for each folder.
SEARCHPATH_EXPORT searchpath_status searchpath_receipt_verify(const searchpath_receipt* receipt,
                                                              searchpath_changes** changes,
                                                              searchpath_error* error);
/// How many names mean another file.
SEARCHPATH_EXPORT size_t searchpath_changes_count(const searchpath_changes* changes);
/// The name as it was asked.
SEARCHPATH_EXPORT searchpath_text searchpath_changes_name(const searchpath_changes* changes,
                                                          size_t index);
/// The file in the receipt; the bytes are null when there was none.
SEARCHPATH_EXPORT searchpath_text searchpath_changes_before(const searchpath_changes* changes,
                                                            size_t index);
/// The file that it means now; the bytes are null when there is none.
SEARCHPATH_EXPORT searchpath_text searchpath_changes_after(const searchpath_changes* changes,
                                                           size_t index);
/// The receipt of the same questions, with the changes. Where nothing at all has changed on the disk, it
/// is the one that was verified.
SEARCHPATH_EXPORT searchpath_status searchpath_changes_renew(const searchpath_changes* changes,
                                                             searchpath_receipt** receipt,
                                                             searchpath_error* error);
/// Frees them, with the views of their texts; receipts that they gave stay.
SEARCHPATH_EXPORT void searchpath_changes_free(searchpath_changes* changes);

#ifdef __cplusplus
}
#endif

#endif  // SEARCHPATH_C_SEARCHPATH_H
