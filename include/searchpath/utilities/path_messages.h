#ifndef SEARCHPATH_UTILITIES_PATH_MESSAGES_H
#define SEARCHPATH_UTILITIES_PATH_MESSAGES_H

namespace Corvane::PathManagement {

/// The messages that editing the search path appends to a `Notification`, for those who translate
/// them. Each message has one argument, a `ustring`: the folder.
///
/// A folder that cannot be used, whether it was to be added or removed, is reported in
/// `FolderCatalogue`, as it was typed. The key depends on the number that
/// `FailedToAbsolutizeException::GetErrorCode` returns:
///
/// | number | `AbsolutizeError` | key |
/// |---|---|---|
/// | 0 | `InvalidText` | `InvalidLocation` |
/// | 3 | `PermissionDenied` | `PermissionDenied` |
/// | 4, 5, 6, 7 | `Absent`, `NotAFolder`, `BrokenLink`, `LinkLoop` | `NoSuchFolder` |
/// | 9 | `NameTooLong` | `NameTooLong` |
/// | 1, 2, 8, above 9 | `NoWorkingFolder`, `InputOutput`, `Other`, `NoAnswer` | none: thrown |
///
/// A folder that was to be removed but is not on the path is reported in `RemovalCatalogue` with
/// the key `NotOnPath`, as `GetStringFromIRI` writes it.
///
/// `host::RemoveFolders` also removes folders that cannot be used, so it reports in
/// `RemovalCatalogue` alone. For a text that has no location, it reports `NotOnPath` with the text
/// as it was typed.
///
/// Catalogues and keys are spelled as in the message files of environments, which hold the texts.
struct PathMessages {
  /// The catalogue of folders that cannot be used.
  static constexpr char16_t FolderCatalogue[] = u"ZENTRA:mpath";
  static constexpr char16_t InvalidLocation[] = u"invalidLocation";             ///< for number 0
  static constexpr char16_t PermissionDenied[] = u"directoryPermissionDenied";  ///< for number 3
  /// For numbers 4 to 7.
  static constexpr char16_t NoSuchFolder[] = u"nameNonexistentOrNotADirectory";
  static constexpr char16_t NameTooLong[] = u"directoryNameTooLong";  ///< for number 9

  /// The catalogue of folders that were to be removed but are not on the path.
  static constexpr char16_t RemovalCatalogue[] = u"ZENTRA:rmpath";
  static constexpr char16_t NotOnPath[] = u"DirNotFound";  ///< the only key of that catalogue
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_PATH_MESSAGES_H
