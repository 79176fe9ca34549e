#ifndef SEARCHPATH_TOOLS_SEARCHPATH_FINDER_H
#define SEARCHPATH_TOOLS_SEARCHPATH_FINDER_H

#include "search_path.h"
#include "searchpath/host/receipt.h"

#include <optional>
#include <string>

namespace Corvane::PathManagement::tool {

class Output;

/// How names are answered.
struct AnswerOptions {
  bool all = false;           ///< the file that a name means, then those that it hides
  bool glob = false;          ///< names are patterns
  bool suggestsGlob = false;  ///< for a pattern that is not found as a name, suggest --glob
  bool explain = false;       ///< each folder that was searched, and the rule that decided
  bool manyNames = false;     ///< from standard input; a name not found gets no "did you mean"
};

/// Prints what names mean, one after the other, and reports those that mean no file.
class Finder {
 public:
  /// `commonLookup` holds what is the same for all names. `pathOptions`, `whereTo` and
  /// `searchedPath` have to outlive this object.
  Finder(const AnswerOptions& answerOptions, const PathOptions& pathOptions, const Output& whereTo,
         const host::Environment& searchedPath, host::Lookup commonLookup);

  /// From now on, answers go into `receipt`, too. It has to exist while names are answered.
  void RecordIn(host::ReceiptRecorder& receipt) { recorder = &receipt; }

  /// Errors: as `Environment::Find`; those of `Output`.
  void Answer(const std::string& name);

  /// The file that `name` means; empty when there is none. Prints and reports nothing.
  [[nodiscard]] std::optional<FoundItem> FindFirst(const std::string& name);

  /// Reports the folders that look-ups have come upon and could not search; does nothing when
  /// called again. With --strict it does nothing at all: the caller has reported all such folders.
  void ReportProblems();

  /// Whether all names that were answered mean a file.
  [[nodiscard]] bool FoundAll() const noexcept { return foundAll; }

 private:
  // These print an answer and return whether there is one. They search for `lookup.name`; `name` is
  // the name as it was asked.
  [[nodiscard]] bool Ask(const std::string& name) const;
  [[nodiscard]] bool Explain(const std::string& name) const;
  [[nodiscard]] bool Find(const std::string& name) const;
  [[nodiscard]] bool FindMatching(const std::string& pattern) const;
  void ReportMiss(const std::string& name) const;
  // Writes the JSON objects by which a program sees that the answer is complete.
  void CloseAnswer(const std::string& name, bool found) const;
  void Record(const boost::optional<FoundItem>& file) const;

  AnswerOptions options;
  const PathOptions& path;
  const Output& output;
  const host::Environment& environment;
  host::Lookup lookup;
  host::ReceiptRecorder* recorder = nullptr;  // not owned
  bool reportsProblems;
  bool foundAll = true;
};

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_FINDER_H
