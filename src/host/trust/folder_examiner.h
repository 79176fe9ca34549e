#ifndef SEARCHPATH_SRC_HOST_TRUST_FOLDER_EXAMINER_H
#define SEARCHPATH_SRC_HOST_TRUST_FOLDER_EXAMINER_H

#include "host/rules/asked_file.h"
#include "host/trust/step_report.h"
#include "searchpath/host/folder_problem.h"
#include "searchpath/host/lookup_rules.h"

#include <sys/stat.h>

#include <cstddef>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace Corvane::PathManagement::host {

/// A folder in which names are searched.
struct SearchedFolder {
  using Identity = std::pair<dev_t, ino_t>;  // the same for all paths that lead to a folder

  std::string path;
  std::string prefix = {};  // in front of the names of its files: "", or ends in "/"
  bool holdsFiles = true;   // otherwise only special folders in it are searched
  // The folders above it that led to it, from the folder of the path down to the nearest.
  std::vector<Identity> way = {};
};

/// Examines folders, one after the other in path order: the way to each folder, the folder itself,
/// and what it holds.
class FolderExaminer {
 public:
  /// `firstNumber` is the number of the folder of the path that is examined first.
  ///
  /// Precondition: `lookupRules` and `knownAccounts` outlive this object.
  FolderExaminer(const LookupRules& lookupRules, Accounts& knownAccounts, std::size_t firstNumber)
      : rules(lookupRules),
        report(knownAccounts, findings),
        accounts(knownAccounts),
        folderNumber(firstNumber) {}
  FolderExaminer(const FolderExaminer&) = delete;
  FolderExaminer& operator=(const FolderExaminer&) = delete;
  ~FolderExaminer() = default;

  /// As `FindingList::BeginPart`.
  void BeginPart(ustring text) { report.BeginPart(std::move(text)); }
  /// Reports, as `kind`, that the working folder decides which folder the part `text` of the path
  /// means; at present it means `folder`.
  void ReportPart(TrustKind kind, const std::string& folder, const std::string& text);

  void Examine(const SearchedFolder& folder);
  /// Examines the folder at `path` and, where names are searched below folders, its tree: all
  /// folders below it.
  void ExamineTree(std::string path);

  /// What is examined from now on belongs to the next folder of the path.
  void GoToNext() noexcept { ++folderNumber; }
  /// The number of the folder that is examined now, or next.
  [[nodiscard]] std::size_t GetNumber() const noexcept { return folderNumber; }

  /// The names that the folders examined so far answer.
  [[nodiscard]] const AnsweredNames& GetAnswered() const noexcept { return answered; }
  /// What could not be looked at, and why.
  [[nodiscard]] const std::vector<FolderProblem>& GetUnexamined() const noexcept {
    return unexamined;
  }
  /// As `FindingList::Take`.
  [[nodiscard]] std::vector<TrustFinding> TakeFindings(const AnsweredNames& names) {
    return std::move(findings).Take(names);
  }

 private:
  using Identity = SearchedFolder::Identity;

  /// A file that an earlier folder of the path hides.
  struct HiddenFile {
    PathStep step;
    std::string folder;
    bool counts = false;        // by the lookup rules
    std::vector<Identity> way;  // the folders that led to the file, as in SearchedFolder
  };

  void ExamineName(const SearchedFolder& folder, const WalkedPath& in, const std::string& name);
  void NoteAnswer(Standing standing, const std::string& relative);
  [[nodiscard]] bool MaySkipLink(const SearchedFolder& folder, const std::string& name,
                                 bool isHidden) const;
  [[nodiscard]] bool MaySkip(const struct stat& status) const;
  [[nodiscard]] bool Descends() const noexcept;
  void AddBelow(const SearchedFolder& above, const std::string& name, const PassedFolder& in,
                const Identity& identity);
  void ReportFoundThroughLoops();
  void NoteFailure(std::error_code error, const std::string& path);

  const LookupRules& rules;
  FindingList findings;
  StepReport report;
  const Accounts& accounts;
  std::vector<FolderProblem> unexamined;
  AnsweredNames answered;
  std::size_t folderNumber;  // of the folder of the path that is examined now, or next
  // Of the tree that is examined now:
  std::vector<SearchedFolder> pending;  // the next one last
  std::vector<HiddenFile> hidden;       // the findings on them wait for all loops to be known
  std::vector<Identity> loops;          // folders that links below them lead back to
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_TRUST_FOLDER_EXAMINER_H
