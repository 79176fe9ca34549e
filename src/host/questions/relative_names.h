#ifndef SEARCHPATH_SRC_HOST_QUESTIONS_RELATIVE_NAMES_H
#define SEARCHPATH_SRC_HOST_QUESTIONS_RELATIVE_NAMES_H

#include "host/rules/ruled_path.h"
#include "searchpath/host/name_changes.h"

#include <functional>
#include <vector>

namespace Corvane::PathManagement::host {

/// Calls visit(file) for every file that counts by the rules of `path`, even if another file hides
/// it: in the folders of the path and, where the rules look up names with a separator there, below
/// them. Goes in the order of the path, then of the relative names of folders, then of names. Ends
/// when a visit returns true; returns whether one did.
///
/// Cost: lists all folders.
bool ForEachFileByRules(const RuledPath& path, const std::function<bool(const FoundItem&)>& visit);

/// The names, relative to the folders of the path, that mean another file on `after` than on
/// `before`, in the order of their bytes. A file in another folder, by canonical location, is
/// another file.
///
/// Cost: lists all folders, and holds all names of both paths.
[[nodiscard]] std::vector<NameChange> FindRelativeNameChanges(const RuledPath& before,
                                                              const RuledPath& after);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_QUESTIONS_RELATIVE_NAMES_H
