#include "finder.h"

#include "explanation_output.h"
#include "found_file.h"
#include "hint.h"
#include "output.h"
#include "progress.h"

#include <utility>

namespace Corvane::PathManagement::tool {

namespace {

// `boost::optional`, as `Environment::Find` returns.
boost::optional<FoundItem> FirstOf(const std::vector<FoundItem>& files) {
  return files.empty() ? boost::optional<FoundItem>() : files.front();
}

}  // namespace

Finder::Finder(const AnswerOptions& answerOptions, const PathOptions& pathOptions,
               const Output& whereTo, const host::Environment& searchedPath,
               host::Lookup commonLookup)
    : options(answerOptions),
      path(pathOptions),
      output(whereTo),
      environment(searchedPath),
      lookup(std::move(commonLookup)),
      reportsProblems(!pathOptions.strict) {}

bool Finder::Ask(const std::string& name) const {
  if (options.glob) return FindMatching(name);
  return options.explain ? Explain(name) : Find(name);
}

void Finder::Answer(const std::string& name) {
  lookup.name = path.GetFileName(name);
  const bool found = Ask(name);
  // An explanation is one JSON object in any case.
  if (options.manyNames && output.IsJson() && !options.explain) CloseAnswer(name, found);
  if (found) return;
  foundAll = false;
  // This name was looked for in all folders, so the problems of all folders are known. With --stdin
  // the caller reports them at the end.
  if (!options.manyNames) ReportProblems();
  ReportMiss(name);
}

void Finder::ReportMiss(const std::string& name) const {
  if (options.glob) {
    Report("no file on the path has a name that matches " + Quoted(name));
    return;
  }
  std::string hint;
  if (!options.manyNames) {
    hint = WithProgress(path.quiet, [&] { return GetHint(environment, lookup); });
  }
  if (hint.empty() && options.suggestsGlob && host::NamePattern::IsPattern(lookup.name)) {
    hint = "; --glob takes it as a pattern";
  }
  Report("no file called " + Quoted(name) + " on the path" + hint);
}

std::optional<FoundItem> Finder::FindFirst(const std::string& name) {
  lookup.name = path.GetFileName(name);
  const auto file = environment.Find(lookup);
  return file ? std::optional(*file) : std::nullopt;
}

void Finder::CloseAnswer(const std::string& name, bool found) const {
  if (!found) WriteMiss(output, name);
  // Otherwise each name has one object: its file, or that there is none.
  if (options.all || options.glob) WriteEnd(output, name);
}

void Finder::ReportProblems() {
  if (reportsProblems) ReportProblemsMet(environment, path);
  reportsProblems = false;
}

bool Finder::Explain(const std::string& name) const {
  const host::Explanation explanation =
      WithProgress(path.quiet, [&] { return environment.Explain(lookup); });
  WriteExplanation(output, path, environment, name, explanation);
  Record(FirstOf(explanation.files));
  return !explanation.files.empty();
}

bool Finder::Find(const std::string& name) const {
  if (options.all) {
    const std::vector<FoundItem> files =
        WithProgress(path.quiet, [&] { return environment.FindAll(lookup); });
    for (const FoundItem& file : files) WriteAnswer(output, name, file);
    Record(FirstOf(files));
    return !files.empty();
  }
  const auto file = WithProgress(path.quiet, [&] { return environment.Find(lookup); });
  if (file) WriteAnswer(output, name, *file);
  Record(file);
  return file.has_value();
}

// Records nothing: --glob cannot be given together with --receipt or --depfile.
bool Finder::FindMatching(const std::string& pattern) const {
  const auto matching = WithProgress(path.quiet, [&] { return environment.FindMatching(lookup); });
  for (const auto& [name, files] : matching) {
    const std::size_t count = options.all ? files.size() : 1;  // each name has at least one file
    for (std::size_t i = 0; i < count; ++i) WriteMatch(output, pattern, name, files[i]);
  }
  return !matching.empty();
}

void Finder::Record(const boost::optional<FoundItem>& file) const {
  if (recorder != nullptr) recorder->Add(lookup, file);
}

}  // namespace Corvane::PathManagement::tool
