#include "words.h"

namespace Corvane::PathManagement::tool {

const char* GetKindText(PathEntryType kind) noexcept {
  switch (kind) {
    case PathEntryType::PlusFolder:
      return "+";
    case PathEntryType::AtFolder:
      return "@";
    case PathEntryType::PrivateFolder:
      return "private";
    case PathEntryType::ResourcesFolder:
      return "resources";
    case PathEntryType::Ordinary:
      break;
  }
  return "ordinary";
}

const char* GetOutcomeText(host::FolderOutcome outcome) noexcept {
  switch (outcome) {
    case host::FolderOutcome::HoldsIt:
      return "holds-it";
    case host::FolderOutcome::MethodEntry:
      return "method-entry";
    case host::FolderOutcome::HiddenByEarlier:
      return "hidden-by-earlier";
    case host::FolderOutcome::LosesToEarlierFolder:
      return "loses-to-earlier-folder";
    case host::FolderOutcome::OtherCaseOnly:
      return "other-case-only";
    case host::FolderOutcome::Unreadable:
      return "unreadable";
    case host::FolderOutcome::Absent:
      break;
  }
  return "absent";
}

const char* GetRuleText(host::DecidingRule rule) noexcept {
  switch (rule) {
    case host::DecidingRule::FirstFolder:
      return "first-folder";
    case host::DecidingRule::MethodEntryFirst:
      return "method-entry-first";
    case host::DecidingRule::FolderBeforeMethod:
      return "folder-before-method";
    case host::DecidingRule::PrivateFolder:
      return "private-folder";
    case host::DecidingRule::PartialPathname:
      return "partial-pathname";
    case host::DecidingRule::NothingFound:
      break;
  }
  return "nothing-found";
}

}  // namespace Corvane::PathManagement::tool
