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

/// Which hidden files are printed, and how.
struct ShadowFormat {
  bool isSummary = false;                 // how many files each folder hides, rather than which
  std::set<host::ShadowKind> kinds = {};  // empty for all
  SarifLog* sarif = nullptr;              // where they go instead, if it is not null
};

/// Takes out what is not among `kinds`; nothing when there are none.
void KeepOnly(const std::set<host::ShadowKind>& kinds, std::vector<host::Shadow>& shadows);

/// Prints the shadows. In JSON, the objects begin with the
/// number of the `list` of folders that was searched, if it is one of several.
void WriteShadows(const Output& output, const std::vector<host::Shadow>& shadows,
                  const ShadowFormat& format, std::optional<std::size_t> list = {});

/// Reports each file that could not be read, once.
void ReportUnread(const std::vector<host::Shadow>& shadows);

/// Reports that no file has a name that was asked for; `hint` follows.
void ReportUnknown(const ustring& name, const std::string& hint = "");

/// Reports that names which may hide files hide none.
void ReportIdleAllowances(const std::vector<ustring>& names);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_SHADOW_OUTPUT_H
