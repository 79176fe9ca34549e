#ifndef SEARCHPATH_TOOLS_SEARCHPATH_EXPLANATION_OUTPUT_H
#define SEARCHPATH_TOOLS_SEARCHPATH_EXPLANATION_OUTPUT_H

#include "searchpath/host/environment.h"

#include <string>

namespace Corvane::PathManagement::tool {

class Output;

/// Why `name` means its file: lines in words, or one JSON object with the same facts.
void WriteExplanation(const Output& output, const host::Environment& environment,
                      const std::string& name, const host::Explanation& explanation);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_EXPLANATION_OUTPUT_H
