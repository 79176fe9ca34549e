#include "hint.h"

#include "output.h"

#include <cstddef>
#include <vector>

namespace Corvane::PathManagement::tool {

std::string GetHint(const host::Environment& environment, const host::Lookup& lookup) {
  const std::vector<host::SimilarFile> similar = environment.FindSimilar(lookup);
  if (similar.empty()) return "";
  std::string hint;
  for (std::size_t i = 0; i < similar.size(); ++i) {
    const auto& [file, similarity] = similar[i];
    if (i > 0) hint += i + 1 < similar.size() ? ", " : " or ";
    hint += Quoted(GetBytes(host::GetNativePath(file))) + " (" + host::GetText(similarity);
    // Of several, the first on the path is what a name means.
    const bool isFirst = i == 0 && similarity == host::Similarity::OtherCase;
    hint += isFirst ? ": --policy ignore-case finds it)" : ")";
  }
  return "; did you mean " + hint + '?';
}

}  // namespace Corvane::PathManagement::tool
