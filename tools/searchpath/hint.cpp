#include "hint.h"

#include "output.h"
#include "phrases.h"

#include <vector>

namespace Corvane::PathManagement::tool {

std::string GetHint(const host::Environment& environment, const host::Lookup& lookup) {
  const std::vector<host::SimilarFile> similar = environment.FindSimilar(lookup);
  if (similar.empty()) return "";
  std::vector<std::string> files;
  for (const auto& [file, similarity] : similar) {
    // With --policy ignore-case, the name would mean the first of these files.
    const bool isMeant = files.empty() && similarity == host::Similarity::OtherCase &&
                         environment.GetRules().foldersHaveMeaning;
    files.push_back(Quoted(host::GetNativePath(file)) + " (" + host::GetText(similarity) +
                    (isMeant ? ": --policy ignore-case finds it)" : ")"));
  }
  return "; did you mean " + Join(files, ", ", " or ") + '?';
}

}  // namespace Corvane::PathManagement::tool
