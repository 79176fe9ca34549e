#ifndef SEARCHPATH_UTILITIES_PATH_MESSAGES_H
#define SEARCHPATH_UTILITIES_PATH_MESSAGES_H

namespace Corvane::PathManagement {

/// The messages that editing the search path appends to a `Notification`: an interface for whoever
/// words them in another language. Each has one argument, a `ustring`: the folder.
///
/// A folder that cannot be used, whether it was to be added or removed, is reported in
/// `FolderCatalogue`, as it was typed. Which key depends on the number that
/// `FailedToAbsolutizeException::GetErrorCode` returns:
///
/// | number | `AbsolutizeError` | key |
/// |---|---|---|
/// | 0 | `InvalidText` | `InvalidLocation` |
/// | 3 | `PermissionDenied` | `PermissionDenied` |
/// | 4, 5, 6, 7 | `Absent`, `NotAFolder`, `BrokenLink`, `LinkLoop` | `NoSuchFolder` |
/// | 9 | `NameTooLong` | `NameTooLong` |
/// | 1, 2, 8, above 9 | `NoWorkingFolder`, `InputOutput`, `Other` | none: the exception is let out |
///
/// A folder that was to be removed and is not on the path is reported in `RemovalCatalogue` under
/// `NotOnPath`, as `GetStringFromIRI` writes it.
struct PathMessages {
  /// Of problems with folders that were to be added.
  static constexpr char16_t FolderCatalogue[] = u"ZENTRA:mpath";
  static constexpr char16_t InvalidLocation[] = u"invalidLocation";             ///< for number 0
  static constexpr char16_t PermissionDenied[] = u"directoryPermissionDenied";  ///< for number 3
  /// For numbers 4 to 7.
  static constexpr char16_t NoSuchFolder[] = u"nameNonexistentOrNotADirectory";
  static constexpr char16_t NameTooLong[] = u"directoryNameTooLong";  ///< for number 9

  /// Of problems with folders that were to be removed.
  static constexpr char16_t RemovalCatalogue[] = u"ZENTRA:rmpath";
  static constexpr char16_t NotOnPath[] = u"DirNotFound";  ///< its one argument is the folder
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_PATH_MESSAGES_H
