#ifndef SEARCHPATH_TOOLS_SEARCHPATH_SARIF_LOG_H
#define SEARCHPATH_TOOLS_SEARCHPATH_SARIF_LOG_H

#include "searchpath/host/shadow_search.h"

#include <nlohmann/json.hpp>

#include <vector>

namespace Corvane::PathManagement::tool {

/// The shadows of one run, names with the files that they hide, in the Static Analysis Results
/// Interchange Format, version 2.1.0, which code hosts read. Each hidden file is the location of
/// one result; the file that hides it is the related location.
class SarifLog {
 public:
  void Add(const std::vector<host::Shadow>& shadows);

  /// Writes the whole log to standard output. Errors: as `WriteData`.
  void Write() const;

 private:
  nlohmann::ordered_json results = nlohmann::ordered_json::array();
};

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_SARIF_LOG_H
