#include "host/trust/trust_examination.h"

#include "host/folder/folder_walk.h"
#include "host/path/path_view.h"
#include "host/rules/ruled_path.h"
#include "host/trust/folder_examiner.h"
#include "platform/native_path.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/platform/iri_text.h"
#include "searchpath/utilities/iri_conversion.h"

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <string>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using Folder = std::shared_ptr<const FolderEntry>;
using fl::filesystem::detail::NativeBytes;

/// Whether the part of the path would mean another folder if the working folder were another one.
bool DependsOnWorkingFolder(const FolderOrigin& origin, const LookupRules& rules) {
  const ustring& text = origin.folder;
  if (origin.source == FolderSource::Package || text.starts_with(u'/')) return false;
  const bool isExpanded = text.starts_with(u'~') || foundation::storage::vfs::hasIRIPrefix(text);
  return !(isExpanded && rules.expandsParts);
}

/// How a special folder is written in front of the names of its files: "geometry/" for "+geometry".
std::string NameInFront(const FolderEntry& folder) {
  const std::string name = BytesFromText(folder.GetAbsoluteIRI().getName()).value_or("");
  return name.substr(std::min(name.find_first_not_of("+@"), name.size())) + '/';
}

/// Examines a folder of the path and the special folders below it: private, resources, "@..." and
/// "+...".
void ExamineWithSpecialFolders(const PathView& view, const Folder& top, FolderExaminer& examiner) {
  std::vector<std::string> prefixes;  // by depth
  WalkFolders(top, [&](const Folder& folder, std::size_t depth) {
    prefixes.resize(depth);
    prefixes.push_back(depth == 0 ? "" : prefixes.back() + NameInFront(*folder));
    const auto path = NativeBytes(folder->GetAbsoluteIRI());
    if (!path || view.FindHider(*folder) != nullptr) return false;  // the walk goes on
    const bool holdsFiles = folder->GetPathEntryType() != PathEntryType::ResourcesFolder;
    examiner.Examine({*path, prefixes.back(), holdsFiles});
    return false;
  });
}

/// Examines a folder and, if names are searched below folders, those below it.
void ExamineTree(const FolderEntry& folder, FolderExaminer& examiner) {
  if (auto path = NativeBytes(folder.GetAbsoluteIRI())) examiner.ExamineTree(*std::move(path));
}

/// Examines the folders that one part of the path has brought onto it, unless they are hidden.
void ExaminePart(const PathView& view, const LookupRules& rules, const GivenFolders::Given& given,
                 FolderExaminer& examiner) {
  const ustring& text = given.origin.folder;
  const IPathEntry& first = *given.entries.front();
  examiner.BeginPart(text);
  if (view.FindHider(first) == nullptr && DependsOnWorkingFolder(given.origin, rules)) {
    examiner.ReportPart(text.empty() ? TrustKind::EmptyPart : TrustKind::Relative,
                        NativeBytes(first.GetAbsoluteIRI()).value_or(""),
                        text.empty() ? "." : BytesFromText(text).value_or(""));
  }
  for (const auto& entry : given.entries) {
    const auto folder = std::dynamic_pointer_cast<const FolderEntry>(entry);
    if (folder == nullptr || view.FindHider(*folder) != nullptr) continue;
    if (rules.foldersHaveMeaning) {
      ExamineWithSpecialFolders(view, folder, examiner);
    } else {
      ExamineTree(*folder, examiner);
    }
    examiner.GoToNext();
  }
}

}  // namespace

TrustReport ExamineTrustOf(const PathView& view, const RuledPath* ruled, const LookupRules& rules,
                           const TrustLookup& lookup) {
  Accounts accounts(lookup.user.value_or(geteuid()));
  // Folders that only names in quotes are searched in come first. They have an examiner of their
  // own, since they hide nothing from other names.
  FolderExaminer quoted(rules, accounts, /*firstNumber=*/0);
  for (const Folder& folder : ruled == nullptr ? FolderEntries() : ruled->GetQuoteFolders()) {
    quoted.BeginPart(GetStringFromIRI(folder->GetAbsoluteIRI()));
    ExamineTree(*folder, quoted);
    quoted.GoToNext();
  }
  FolderExaminer onPath(rules, accounts, quoted.GetNumber());
  for (const auto& given : view.GetGivenFolders()) ExaminePart(view, rules, given, onPath);
  // For names in quotes: insert() leaves what the quote folders answer as it is.
  AnsweredNames inQuotes = quoted.GetAnswered();
  inQuotes.insert(onPath.GetAnswered().begin(), onPath.GetAnswered().end());

  const AnsweredNames none;  // so that findings list no names
  TrustReport report{quoted.TakeFindings(lookup.names ? inQuotes : none),
                     ruled == nullptr ? view.GetUnlocated() : ruled->FindUnlocated()};
  auto findings = onPath.TakeFindings(lookup.names ? onPath.GetAnswered() : none);
  std::move(findings.begin(), findings.end(), std::back_inserter(report.findings));
  for (const FolderExaminer* examiner : {&quoted, &onPath}) {
    const auto& more = examiner->GetUnexamined();
    report.unexamined.insert(report.unexamined.end(), more.begin(), more.end());
  }
  return report;
}

}  // namespace Corvane::PathManagement::host
