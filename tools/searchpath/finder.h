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
  bool suggestsGlob = false;  ///< whether a pattern that is no name may be meant as one
  bool explain = false;       ///< each folder asked, and the rule that decided
  bool manyNames = false;  ///< so many that nothing may be done for one that reads the whole path
};

/// Answers one name after the other on standard output, and reports those that mean no file.
class Finder {
 public:
  /// `commonLookup` is the part of the question that is the same for all names.
  Finder(const AnswerOptions& answerOptions, const PathOptions& pathOptions, const Output& whereTo,
         const host::Environment& searchedPath, host::Lookup commonLookup);

  /// From now on, answers go into `receipt`, too.
  void RecordIn(host::ReceiptRecorder& receipt) { recorder = &receipt; }

  void Answer(const std::string& name);

  /// The file that `name` means; writes and reports nothing.
  [[nodiscard]] std::optional<FoundItem> FindFirst(const std::string& name);

  /// Once: the folders that the look-ups have met and cannot search. With --strict all folders have
  /// been looked at before.
  void ReportProblems();

  [[nodiscard]] bool FoundAll() const noexcept { return foundAll; }

 private:
  [[nodiscard]] bool Ask(const std::string& name) const;
  [[nodiscard]] bool Explain(const std::string& name) const;
  [[nodiscard]] bool Find(const std::string& name) const;
  [[nodiscard]] bool FindMatching(const std::string& pattern) const;
  void ReportMiss(const std::string& name) const;
  /// For programs that wait for the answer to each name.
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
