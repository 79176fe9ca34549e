#include "matching.h"

#include "command_line.h"
#include "searchpath/model/byte_text.h"

namespace Corvane::PathManagement::tool {

namespace {

WordList<FilenameMatchingPolicy> GetPolicies() {
  return {{"case-sensitive", FilenameMatchingPolicy::CaseSensitive},
          {"ignore-case", FilenameMatchingPolicy::IgnoreCase},
          {"file-system", FilenameMatchingPolicy::FileSystemDefault}};
}

}  // namespace

void AddPolicyTo(CommandLine& commandLine, std::optional<std::string>& policy) {
  commandLine.AddValue("--policy", "POLICY", policy, "case-sensitive, ignore-case or file-system",
                       GetWords(GetPolicies()));
}

void MatchingOptions::AddTo(CommandLine& commandLine, const std::string& helpOnExtensions) {
  commandLine.AddValues("--ext", "EXT", extensions, helpOnExtensions);
  AddPolicyTo(commandLine, policy);
}

std::vector<ustring> MatchingOptions::GetExtensions(const std::vector<ustring>& otherwise) const {
  if (extensions.empty()) return otherwise;
  std::vector<ustring> withDots;
  for (const std::string& typed : extensions) {
    if (typed.empty()) throw UsageError("--ext is empty; leave it out, or name one: --ext txt");
    withDots.push_back(TextFromBytes(typed.starts_with('.') ? typed : '.' + typed));
  }
  return withDots;
}

FilenameMatchingPolicy GetPolicy(const std::optional<std::string>& policy) {
  return ChooseValue("--policy", policy.value_or("file-system"), GetPolicies());
}

}  // namespace Corvane::PathManagement::tool
