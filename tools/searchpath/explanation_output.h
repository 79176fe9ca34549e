#ifndef SEARCHPATH_TOOLS_SEARCHPATH_EXPLANATION_OUTPUT_H
#define SEARCHPATH_TOOLS_SEARCHPATH_EXPLANATION_OUTPUT_H

#include "searchpath/host/environment.h"

#include <string>

namespace Corvane::PathManagement::tool {

class Output;
struct PathOptions;

/// Writes why `name` means its file, or no file: in words, or as one JSON object. `environment`
/// is the one that made `explanation`, and has the path that `options` name.
void WriteExplanation(const Output& output, const PathOptions& options,
                      const host::Environment& environment, const std::string& name,
                      const host::Explanation& explanation);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_EXPLANATION_OUTPUT_H
