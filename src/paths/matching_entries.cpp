#include "searchpath/utilities/matching_entries.h"

#include "searchpath/model/constants.h"
#include "searchpath/model/path.h"
#include "searchpath/platform/current_working_folder.h"
#include "searchpath/platform/filesystem.h"

#include <utility>

namespace Corvane::PathManagement {

namespace {

using current_working_folder::FailedToAbsolutizeException;
using current_working_folder::ICurrentWorkingFolder;

bool IsSeparator(char16_t unit) {
  return Constants::PathnameSeparatorStr.find(unit) != ustring::npos;
}

/// Whether `name` is absolute as users type it: "/x", "~x" or an IRI. `name` is not
/// changed: the working folder expands it later.
bool IsAbsolute(const ustring& name) {
  namespace files = fl::filesystem::detail;
  const ustring native = files::make_native_form(name, /*expand=*/true);
  if (files::is_absolute_path_when_expanded(native, /*expand=*/true)) return true;
  // A network share: `is_absolute_path_when_expanded` need not know shares on every platform.
  return name.size() >= 2 && IsSeparator(name[0]) && IsSeparator(name[1]);
}

/// The entry for `folder`, or none.
PathEntries EntryForFolder(const ustring& folder, const IPath& path,
                           const ICurrentWorkingFolder& workingFolder,
                           FilenameMatchingPolicy policy) {
  try {
    auto entry = path.GetPathEntryFromAbsoluteIRI(workingFolder.absolutize(folder), policy);
    if (entry != nullptr) return {std::move(entry)};
  } catch (const FailedToAbsolutizeException&) {
    // What cannot be located has no entry on any path.
  }
  return {};
}

}  // namespace

PathEntries GetMatchingEntries(SearchScope scope, const ustring& name, const IPath& path,
                               const ICurrentWorkingFolder& workingFolder,
                               FilenameMatchingPolicy policy) {
  if (name.empty()) return {};
  if (IsAbsolute(name)) return EntryForFolder(name, path, workingFolder, policy);
  return path.GetPartiallyMatchingEntries(scope, name, policy);
}

}  // namespace Corvane::PathManagement
