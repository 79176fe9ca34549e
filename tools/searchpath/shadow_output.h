#ifndef SEARCHPATH_TOOLS_SEARCHPATH_SHADOW_OUTPUT_H
#define SEARCHPATH_TOOLS_SEARCHPATH_SHADOW_OUTPUT_H

#include "searchpath/host/shadow_search.h"
#include "searchpath/model/ustring.h"

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

class Output;
class SarifLog;

/// How shadows, names with the files that they hide, are printed, and which of these files.
struct ShadowFormat {
  bool isSummary = false;                 // print how many files each folder hides, not which
  std::set<host::ShadowKind> kinds = {};  // the kinds of hidden files to print; empty for all
  SarifLog* sarif = nullptr;  // not null: gets the shadows, and nothing is printed; not owned
};

/// Removes hidden files of other kinds than `kinds`, and names that then hide nothing. When `kinds`
/// is empty, removes nothing.
void KeepOnly(const std::set<host::ShadowKind>& kinds, std::vector<host::Shadow>& shadows);

/// Prints the shadows as `format` says. `list` is the number of the list of folders that was
/// searched, if there are several lists; in JSON, each object begins with it.
void WriteShadows(const Output& output, const std::vector<host::Shadow>& shadows,
                  const ShadowFormat& format, std::optional<std::size_t> list = {});

/// Reports each file that could not be read to compare a hidden file with the one that hides it,
/// once.
void ReportUnread(const std::vector<host::Shadow>& shadows);

/// Reports that no file on the path is called `name`; `hint` is appended to the message.
void ReportUnknown(const ustring& name, const std::string& hint = "");

/// Reports `names`: those of --allow that hide no file.
void ReportIdleAllowances(const std::vector<ustring>& names);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_SHADOW_OUTPUT_H
