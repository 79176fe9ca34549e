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
  bool all = false;           ///< print the file that a name means, then those that it hides
  bool glob = false;          ///< names are patterns
  bool suggestsGlob = false;  ///< suggest --glob for a name not found that looks like a pattern
  bool explain = false;       ///< print each folder that was searched, and the rule that decided
  bool manyNames = false;     ///< names come from standard input; no "did you mean" for them
};

/// Prints what names mean, one after the other, and reports those that mean no file.
class Finder {
 public:
  /// `commonLookup` holds all but the name of each look-up. `pathOptions`, `whereTo` and
  /// `searchedPath` have to outlive this object.
  Finder(const AnswerOptions& answerOptions, const PathOptions& pathOptions, const Output& whereTo,
         const host::Environment& searchedPath, host::Lookup commonLookup);

  /// From now on, answers go into `receipt`, too, which keeps what they rest on. `receipt` has to
  /// exist while names are answered.
  void RecordIn(host::ReceiptRecorder& receipt) { recorder = &receipt; }

  /// Prints what `name` means, or reports that it means no file.
  ///
  /// Errors: as `Environment::Find`; those of `Output`.
  void Answer(const std::string& name);

  /// The file that `name` means; `nullopt` when there is none. Prints and reports nothing.
  [[nodiscard]] std::optional<FoundItem> FindFirst(const std::string& name);

  /// Reports the folders that look-ups have come upon and could not search; does nothing when
  /// called again. With --strict it does nothing at all: the caller has reported all such folders.
  void ReportProblems();

  /// Whether all names that were answered mean a file.
  [[nodiscard]] bool FoundAll() const noexcept { return foundAll; }

 private:
  // Each of these four prints the answer and returns whether a file was found; `Ask` calls that one
  // of the other three that the options want. They search for `lookup.name`, which `Answer` has
  // made of `name`; the output has `name`.
  [[nodiscard]] bool Ask(const std::string& name) const;
  [[nodiscard]] bool Explain(const std::string& name) const;
  [[nodiscard]] bool Find(const std::string& name) const;
  [[nodiscard]] bool FindMatching(const std::string& pattern) const;
  void ReportMiss(const std::string& name) const;
  // Writes the JSON objects by which a program that writes names sees that the answer is complete.
  void CloseAnswer(const std::string& name, bool found) const;
  void Record(const boost::optional<FoundItem>& file) const;

  AnswerOptions options;
  const PathOptions& path;
  const Output& output;
  const host::Environment& environment;
  host::Lookup lookup;
  host::ReceiptRecorder* recorder = nullptr;  // not owned
  bool reportsProblems;                       // whether `ReportProblems` still has something to do
  bool foundAll = true;
};

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_FINDER_H
