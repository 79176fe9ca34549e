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
  Owner,           ///< somebody not trusted owns such a folder, or a file that a name means
  ParentWritable,  ///< a folder above can be written, so that what is in it can be replaced
  FileWritable,    ///< a file that a name means can be written
  Creatable,       ///< a folder or a file is missing and can be made
  Relative,        ///< a part of the path depends on the working folder
  EmptyPart,       ///< an empty part of the path is the working folder
};

/// The kind in words, to be put after who can do it: "may write to the file".
[[nodiscard]] SEARCHPATH_EXPORT const char* GetText(TrustKind kind) noexcept;

/// What to do about such a way, in words.
[[nodiscard]] SEARCHPATH_EXPORT const char* GetAdvice(TrustKind kind) noexcept;

/// One or more users who are not trusted.
struct Intruder {
  /// Which users they are.
  enum class Kind : std::uint8_t {
    User,           ///< one user
    Group,          ///< the members of a group who are not trusted
    Everyone,       ///< even a user without any group
    WorkingFolder,  ///< whoever chooses the working folder of the program that asks
  };

  Kind kind;                              ///< which of these
  ustring name = {};                      ///< of the user or the group; its id if it has no name
  std::vector<std::uint32_t> users = {};  ///< the id of the user, or of each member who is meant
  std::vector<ustring> members = {};      ///< of a group: the names of these members
};

/// Who the intruder is, in words: "group staff (eve, mallory)".
[[nodiscard]] SEARCHPATH_EXPORT ustring GetText(const Intruder& intruder);

/// One way in which intruders can make names mean other files. Paths are as users read them.
struct TrustFinding {
  TrustKind kind;  ///< what can be done
  /// The folder in which names are searched.
  ustring folder;
  /// What can be changed or made: that folder, a file, or a folder above one of them, as a path
  /// without links. Of kind `Relative`: the part of the path as it was given; of `EmptyPart`: ".".
  ustring object;
  std::vector<Intruder> who;  ///< who can do it; never empty
  /// The part of the path, as it was given, that brought the folder onto the path.
  ustring origin = {};
  /// If `TrustLookup::names` is set: the names that could be made to mean another file, in the
  /// order of their bytes. Names that mean no file yet are not among them.
  std::vector<ustring> names = {};
};

/// Whom to trust, and how much to say.
struct TrustLookup {
  /// The id of the user who is trusted besides root; when empty, the effective user of this
  /// process.
  std::optional<std::uint32_t> user = {};
  /// Whether each finding is to list the names that it concerns, in `TrustFinding::names`.
  bool names = false;
};

/// Who can change what names mean on a path.
struct TrustReport {
  std::vector<TrustFinding> findings;  ///< in path order
  /// What could not be looked at, and why: there may be further ways in.
  std::vector<FolderProblem> unexamined;
};

/// The id of the user whom `text` gives by name or by number; empty for an unknown name.
[[nodiscard]] SEARCHPATH_EXPORT std::optional<std::uint32_t> FindUser(const ustring& text);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_TRUST_H
