#include "hint.h"

#include "output.h"
#include "phrases.h"

#include <vector>

namespace Corvane::PathManagement::tool {

namespace {

// Why the first file of that very name does not count; empty when no such file is there.
std::string FindRefusal(const host::Environment& environment, const host::Lookup& lookup) {
  // True for the rules "environment" alone, under which a file counts whatever its rights.
  if (environment.GetRules().foldersHaveMeaning) return "";
  for (const host::AskedFolder& asked : environment.Explain(lookup).asked) {
    if (asked.outcome == host::FolderOutcome::NotExecutable) {
      return "; " + Quoted(asked.instead) + " may not be executed";
    }
    if (asked.outcome == host::FolderOutcome::NotReadable) {
      return "; " + Quoted(asked.instead) + " cannot be read";
    }
  }
  return "";
}

}  // namespace

std::string GetHint(const host::Environment& environment, const host::Lookup& lookup) {
  std::string refusal = FindRefusal(environment, lookup);
  if (!refusal.empty()) return refusal;
  const std::vector<host::SimilarFile> similar = environment.FindSimilar(lookup);
  if (similar.empty()) return "";
  std::vector<std::string> files;
  for (const auto& [file, similarity] : similar) {
    // With --policy ignore-case, which other rules refuse, the name means the first of these files.
    const bool ignoringCaseFindsIt = files.empty() && similarity == host::Similarity::OtherCase &&
                                     environment.GetRules().foldersHaveMeaning;
    files.push_back(Quoted(host::GetNativePath(file)) + " (" + host::GetText(similarity) +
                    (ignoringCaseFindsIt ? ": --policy ignore-case finds it)" : ")"));
  }
  return "; did you mean " + Join(files, ", ", " or ") + '?';
}

}  // namespace Corvane::PathManagement::tool
