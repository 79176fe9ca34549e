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
    case host::FolderOutcome::DroppedAsRepeat:
      return "dropped-as-repeat";
    case host::FolderOutcome::FilteredOut:
      return "filtered-out";
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

const char* GetChangeText(host::FolderChange change) noexcept {
  switch (change) {
    case host::FolderChange::Removed:
      return "removed";
    case host::FolderChange::Added:
      return "added";
    case host::FolderChange::Moved:
      return "moved";
    case host::FolderChange::Refreshed:
      break;
  }
  return "refreshed";
}

const char* GetSourceText(host::FolderSource source) noexcept {
  switch (source) {
    case host::FolderSource::StoredPath:
      return "stored-path";
    case host::FolderSource::Cache:
      return "cache";
    case host::FolderSource::Package:
      return "package";
    case host::FolderSource::Given:
      break;
  }
  return "command-line";
}

const char* GetShadowText(host::ShadowKind kind) noexcept {
  switch (kind) {
    case host::ShadowKind::Different:
      return "different";
    case host::ShadowKind::Identical:
      return "identical";
    case host::ShadowKind::OtherCase:
      return "other-case";
    case host::ShadowKind::SameFile:
      return "same-file";
    case host::ShadowKind::Unreadable:
      break;
  }
  return "unreadable";
}

const char* GetFindingText(host::FindingKind kind) noexcept {
  switch (kind) {
    case host::FindingKind::Missing:
      return "missing";
    case host::FindingKind::Unreadable:
      return "unreadable";
    case host::FindingKind::Empty:
      return "empty";
    case host::FindingKind::Repeat:
      return "repeat";
    case host::FindingKind::Special:
      return "special";
    case host::FindingKind::Slow:
      return "slow";
    case host::FindingKind::CaseCollision:
      return "case-collision";
    case host::FindingKind::NotUtf8:
      break;
  }
  return "not-utf-8";
}

}  // namespace Corvane::PathManagement::tool
