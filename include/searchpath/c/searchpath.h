#ifndef SEARCHPATH_C_SEARCHPATH_H
#define SEARCHPATH_C_SEARCHPATH_H

/// \file
/// Which file a name means on a path of folders, why that one, and what it hides: for C99 and for
/// languages that call C.
///
/// Texts are bytes, as file names are; those that go in end with NUL. Handles are opaque. A handle
/// that was handed out through a pointer is freed by the `_free` function of its type, which also
/// takes null. All else that a function returns, pointers to texts and to parts of a handle, is a
/// view: it lives as long as the handle that was passed in.
///
/// Threads: a handle may be used from any number of threads at once, and by none from the time it
/// is freed.
/// Errors: a function that can fail returns a status. When it fails, it says in `error`, unless
/// that is null, what is wrong, and the handle that it hands out is null. No exception leaves the
/// library. To find nothing is no error.
/// Precondition: no handle is null, and each index is below the count that belongs to it.

#include "searchpath/export.h"

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// Raised by one when a function is added. The existing functions of this library never change.
#define SEARCHPATH_C_VERSION 2

/// The `SEARCHPATH_C_VERSION` of the library in use: not below that of the header.
SEARCHPATH_EXPORT uint32_t searchpath_version(void);

/// How a function ended.
typedef enum searchpath_status {
  SEARCHPATH_OK = 0,       ///< it succeeded
  SEARCHPATH_INVALID = 1,  ///< an argument is missing or not valid
  SEARCHPATH_FOLDER = 2,   ///< `from_folder` cannot be used
  SEARCHPATH_SYSTEM = 3,  ///< the system has no memory, descriptor or thread left, or a disk failed
  SEARCHPATH_FILE = 4     ///< a file cannot be read, or is not what it should be
} searchpath_status;

/// What went wrong, in words; cut off after 255 bytes.
typedef struct searchpath_error {
  char message[256];  ///< ends with NUL; set only by a function that fails
} searchpath_error;

/// Bytes, followed by a NUL; there may be further NULs among them.
typedef struct searchpath_text {
  const char* bytes;  ///< null only where a function says so
  size_t size;        ///< without the NUL at the end
} searchpath_text;

/// A path of folders, and what was found out about it.
typedef struct searchpath_environment searchpath_environment;
/// Files, in path order.
typedef struct searchpath_files searchpath_files;
/// Why a name means what it means.
typedef struct searchpath_explanation searchpath_explanation;
/// Names that hide files.
typedef struct searchpath_shadows searchpath_shadows;
/// Follows an environment while its folders change.
typedef struct searchpath_watch searchpath_watch;

/// Makes a path of `folder_count` folders as users type them, searched in that order. `rules` is
/// "environment", "plain", "program" or "include"; null means "environment". Where `recursive` is
/// not 0, all ordinary folders below them are on the path as well. A folder that cannot be searched
/// is searched as if it were empty. Relative folders and names, also in later questions, are below
/// the working folder that the process has now.
SEARCHPATH_EXPORT searchpath_status searchpath_environment_open(
    const char* const* folders, size_t folder_count, int recursive, const char* rules,
    searchpath_environment** environment, searchpath_error* error);
/// Frees the environment; files, explanations and other handles that came from it stay valid.
SEARCHPATH_EXPORT void searchpath_environment_free(searchpath_environment* environment);

/// A question: which file does a name mean?
typedef struct searchpath_lookup {
  const char* name;               ///< a file name, or a partial pathname
  const char* const* extensions;  ///< with or without their dot; null when there are none
  size_t extension_count;         ///< of `extensions`
  const char* from_folder;        ///< the folder of the code that asks; null when there is none
  int ignore_case;                ///< 0: names are compared as the file system compares them
} searchpath_lookup;

/// Finds the file that the name means. `files` then holds one file or none.
SEARCHPATH_EXPORT searchpath_status searchpath_find(const searchpath_environment* environment,
                                                    const searchpath_lookup* lookup,
                                                    searchpath_files** files,
                                                    searchpath_error* error);
/// Finds the file that the name means, then every file that it hides, in path order.
SEARCHPATH_EXPORT searchpath_status searchpath_find_all(const searchpath_environment* environment,
                                                        const searchpath_lookup* lookup,
                                                        searchpath_files** files,
                                                        searchpath_error* error);
/// How many files there are.
SEARCHPATH_EXPORT size_t searchpath_files_count(const searchpath_files* files);
/// The native path of a file.
SEARCHPATH_EXPORT searchpath_text searchpath_files_path(const searchpath_files* files,
                                                        size_t index);
/// Frees the files, and so ends the views of their paths. Not for files that are a part of another
/// handle: these are freed with that handle.
SEARCHPATH_EXPORT void searchpath_files_free(searchpath_files* files);

/// Finds out which folders a look-up searches, in order, and what is found in each.
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
/// How many folders were searched.
SEARCHPATH_EXPORT size_t searchpath_explanation_count(const searchpath_explanation* explanation);
/// The native path of a folder that was searched.
SEARCHPATH_EXPORT searchpath_text
searchpath_explanation_folder(const searchpath_explanation* explanation, size_t index);
/// What was found in the folder, in words: "holds it", "absent".
SEARCHPATH_EXPORT searchpath_text
searchpath_explanation_outcome(const searchpath_explanation* explanation, size_t index);
/// What brought the folder onto the path: the folder itself or one above it, as it was given.
SEARCHPATH_EXPORT searchpath_text
searchpath_explanation_origin(const searchpath_explanation* explanation, size_t index);
/// The files of that name in the folder, the best first; none for a hidden or repeated folder. They
/// are a part of the explanation.
SEARCHPATH_EXPORT const searchpath_files* searchpath_explanation_files(
    const searchpath_explanation* explanation, size_t index);
/// Frees the explanation, with all that is a part of it.
SEARCHPATH_EXPORT void searchpath_explanation_free(searchpath_explanation* explanation);

/// Finds all names that hide files. Of `lookup`, which may be null, only the extensions and
/// `ignore_case` are used: the names are those that would be looked up with these.
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
/// How a hidden file compares with the one that hides it, in words: "identical". `file` is its
/// index in `searchpath_shadows_files`; the text is "" for 0, the file that hides the others.
SEARCHPATH_EXPORT searchpath_text searchpath_shadows_kind(const searchpath_shadows* shadows,
                                                          size_t index, size_t file);
/// Frees the shadows, with all that is a part of them.
SEARCHPATH_EXPORT void searchpath_shadows_free(searchpath_shadows* shadows);

/// Watches the disk for changes to the path of `environment`, which may be freed afterwards.
SEARCHPATH_EXPORT searchpath_status searchpath_watch_open(const searchpath_environment* environment,
                                                          searchpath_watch** watch,
                                                          searchpath_error* error);
/// A descriptor for `poll`: readable from when something may have changed until the next
/// `searchpath_watch_environment`. It belongs to the watch. The kernel reports no changes on
/// network file systems: with folders there, ask for the environment from time to time as well.
/// Negative when the kernel reports no changes at all.
SEARCHPATH_EXPORT int searchpath_watch_descriptor(const searchpath_watch* watch);
/// Hands out an environment as the disk is now. It may or may not show later changes: after a
/// change, ask for a new one. Costs one system call when nothing has changed; otherwise all folders
/// are listed again.
SEARCHPATH_EXPORT searchpath_status searchpath_watch_environment(
    const searchpath_watch* watch, searchpath_environment** environment, searchpath_error* error);
/// Frees the watch; environments that it gave stay valid.
SEARCHPATH_EXPORT void searchpath_watch_free(searchpath_watch* watch);

/// The explanation as an object in JSON: what `searchpath find --explain --json` prints.
SEARCHPATH_EXPORT searchpath_text
searchpath_explanation_json(const searchpath_explanation* explanation);

// Receipts: answers, and what they rest on, so that they can be verified later.

/// Answers, and what they rest on, such as the folders that were searched.
typedef struct searchpath_receipt searchpath_receipt;
/// The answers in a receipt.
typedef struct searchpath_answers searchpath_answers;
/// The names of a receipt that mean another file now.
typedef struct searchpath_changes searchpath_changes;

/// Asks the questions as `searchpath_find` does, and hands out the receipt of the answers.
SEARCHPATH_EXPORT searchpath_status searchpath_find_with_receipt(
    const searchpath_environment* environment, const searchpath_lookup* lookups,
    size_t lookup_count, searchpath_receipt** receipt, searchpath_error* error);
/// Reads a receipt that `searchpath_receipt_save` or `searchpath find --receipt` has written. It is
/// of use only on the machine that made it.
SEARCHPATH_EXPORT searchpath_status searchpath_receipt_load(const char* file,
                                                            searchpath_receipt** receipt,
                                                            searchpath_error* error);
/// Writes the receipt to `file`, which it replaces in one step.
SEARCHPATH_EXPORT searchpath_status searchpath_receipt_save(const searchpath_receipt* receipt,
                                                            const char* file,
                                                            searchpath_error* error);
/// Frees the receipt; what was made of it stays valid.
SEARCHPATH_EXPORT void searchpath_receipt_free(searchpath_receipt* receipt);

/// The names, in the order in which they were asked for, and what they meant.
SEARCHPATH_EXPORT searchpath_status searchpath_receipt_answers(const searchpath_receipt* receipt,
                                                               searchpath_answers** answers,
                                                               searchpath_error* error);
/// How many names there are.
SEARCHPATH_EXPORT size_t searchpath_answers_count(const searchpath_answers* answers);
/// The name as it was asked for.
SEARCHPATH_EXPORT searchpath_text searchpath_answers_name(const searchpath_answers* answers,
                                                          size_t index);
/// The file that the name meant; the bytes are null when there was none.
SEARCHPATH_EXPORT searchpath_text searchpath_answers_path(const searchpath_answers* answers,
                                                          size_t index);
/// Frees the answers, and so ends the views of their texts.
SEARCHPATH_EXPORT void searchpath_answers_free(searchpath_answers* answers);

/// Finds the names that mean another file now. Only names whose answers may have changed are looked
/// up again. When nothing has changed, this takes about one question to the disk for each folder.
SEARCHPATH_EXPORT searchpath_status searchpath_receipt_verify(const searchpath_receipt* receipt,
                                                              searchpath_changes** changes,
                                                              searchpath_error* error);
/// How many names mean another file.
SEARCHPATH_EXPORT size_t searchpath_changes_count(const searchpath_changes* changes);
/// The name as it was asked for.
SEARCHPATH_EXPORT searchpath_text searchpath_changes_name(const searchpath_changes* changes,
                                                          size_t index);
/// The file in the receipt; the bytes are null when there was none.
SEARCHPATH_EXPORT searchpath_text searchpath_changes_before(const searchpath_changes* changes,
                                                            size_t index);
/// The file that the name means now; the bytes are null when there is none.
SEARCHPATH_EXPORT searchpath_text searchpath_changes_after(const searchpath_changes* changes,
                                                           size_t index);
/// A receipt for the same questions, with the changed answers. When nothing at all had changed on
/// the disk, it has the same content as the verified one.
SEARCHPATH_EXPORT searchpath_status searchpath_changes_renew(const searchpath_changes* changes,
                                                             searchpath_receipt** receipt,
                                                             searchpath_error* error);
/// Frees the changes, and so ends the views of their texts; receipts that they gave stay valid.
SEARCHPATH_EXPORT void searchpath_changes_free(searchpath_changes* changes);

#ifdef __cplusplus
}
#endif

#endif  // SEARCHPATH_C_SEARCHPATH_H
