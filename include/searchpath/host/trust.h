#ifndef SEARCHPATH_HOST_TRUST_H
#define SEARCHPATH_HOST_TRUST_H

#include "searchpath/export.h"
#include "searchpath/host/folder_problem.h"
#include "searchpath/model/ustring.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace Corvane::PathManagement::host {

/// A way in which somebody who is not trusted can make a name mean another file.
enum class TrustKind : std::uint8_t {
  Writable,        ///< a folder in which names are searched can be written
  Owner,           ///< such a folder, or a file that a name means, belongs to somebody else
  ParentWritable,  ///< a folder above can be written, so that what stands in it can be replaced
  FileWritable,    ///< a file that a name means can be written
  Creatable,       ///< a folder or a file is missing and can be made
  Relative,        ///< a part of the path depends on the working folder
  EmptyPart,       ///< an empty part of the path is the working folder
};

/// The kind in words that follow those on who can do it: "may write to the file".
[[nodiscard]] SEARCHPATH_EXPORT const char* GetText(TrustKind kind) noexcept;

/// What to do about it, in words.
[[nodiscard]] SEARCHPATH_EXPORT const char* GetAdvice(TrustKind kind) noexcept;

/// Somebody who is not trusted.
struct Intruder {
  /// Which users these are.
  enum class Kind : std::uint8_t {
    User,           ///< one user
    Group,          ///< the members of a group who are not trusted
    Everyone,       ///< even a user without any group
    WorkingFolder,  ///< whoever chooses the working folder of the program that asks
  };

  Kind kind;                              ///< of the kinds, which
  ustring name = {};                      ///< of the user or the group; its number if it has none
  std::vector<std::uint32_t> users = {};  ///< the ids of the user, or of those members
  std::vector<ustring> members = {};      ///< of a group: their names
};

/// Who it is, in words: "group staff (eve, mallory)".
[[nodiscard]] SEARCHPATH_EXPORT ustring GetText(const Intruder& intruder);

/// One way in. Paths are as users read them.
struct TrustFinding {
  TrustKind kind;  ///< what can be done
  /// The folder in which names are searched.
  ustring folder;
  /// What can be changed or made: that folder, a file, or a folder above one of them, as a path
  /// without links. Of a part that depends on the working folder: that part, "." for an empty one.
  ustring object;
  std::vector<Intruder> who;  ///< who can do it; never empty
  /// The part of the path, as it was given, that brought the folder onto the path.
  ustring origin = {};
  /// If names were asked for: those of files that could be made to mean other ones, in the order of
  /// their bytes. Names that no file has yet are not among them.
  std::vector<ustring> names = {};
};

/// Whom to trust, and how much to say.
struct TrustLookup {
  /// The id of the user who is trusted beside root; when empty, the effective user of this process.
  std::optional<std::uint32_t> user = {};
  /// Whether each finding is to say which names it could take over.
  bool names = false;
};

/// Who can change what names mean on a path.
struct TrustReport {
  std::vector<TrustFinding> findings;  ///< in path order
  /// What could not be looked at, and why: there may be further ways in.
  std::vector<FolderProblem> unexamined;
};

/// The id of the user whom `text` names, by name or by number; empty when there is none.
[[nodiscard]] SEARCHPATH_EXPORT std::optional<std::uint32_t> FindUser(const ustring& text);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_TRUST_H
