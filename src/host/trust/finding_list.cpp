#include "host/trust/finding_list.h"

#include "searchpath/model/byte_text.h"

#include <algorithm>
#include <set>

namespace Corvane::PathManagement::host {

namespace {

/// Adds to `names` those in `answered` that are in `scope`.
void AddNames(const NameScope& scope, const AnsweredNames& answered, std::set<std::string>& names) {
  const bool isOne = !scope.prefix.empty() && !scope.prefix.ends_with('/');
  for (auto name = answered.lower_bound(scope.prefix);
       name != answered.end() && name->first.starts_with(scope.prefix); ++name) {
    if (isOne && name->first != scope.prefix) break;
    if (name->second >= scope.fromFolder) names.insert(name->first);
  }
}

/// Whether both are the same user or group, or both have no name and are of the same kind.
bool AreAlike(const Intruder& one, const Intruder& other) {
  return one.kind == other.kind && one.name == other.name;
}

/// Adds those of `more` that `known` lacks; of a group in both, the members that `known` lacks.
void Merge(const std::vector<Intruder>& more, std::vector<Intruder>& known) {
  for (const Intruder& added : more) {
    const auto same = std::find_if(known.begin(), known.end(),
                                   [&](const Intruder& each) { return AreAlike(each, added); });
    if (same == known.end()) {
      known.push_back(added);
      continue;
    }
    for (std::size_t at = 0; at < added.members.size(); ++at) {
      const auto& users = same->users;
      if (std::find(users.begin(), users.end(), added.users[at]) != users.end()) continue;
      same->users.push_back(added.users[at]);
      same->members.push_back(added.members[at]);
    }
  }
}

}  // namespace

void FindingList::BeginPart(ustring text) {
  part = std::move(text);
  inPart.clear();
}

void FindingList::Add(TrustKind kind, const std::string& folder, const std::string& object,
                      const std::vector<Intruder>& who, const std::vector<NameScope>& scopes) {
  if (who.empty()) return;
  const auto [known, isNew] = inPart.emplace(std::make_pair(kind, object), all.size());
  if (isNew) {
    all.push_back({{.kind = kind,
                    .folder = TextFromBytes(folder),
                    .object = TextFromBytes(object.empty() ? "/" : object),
                    .who = who,
                    .origin = part},
                   {}});
  }
  Gathered& gathered = all[known->second];
  if (!isNew) Merge(who, gathered.finding.who);
  gathered.scopes.insert(gathered.scopes.end(), scopes.begin(), scopes.end());
}

std::vector<TrustFinding> FindingList::Take(const AnsweredNames& answered) && {
  std::vector<TrustFinding> findings;
  findings.reserve(all.size());
  for (Gathered& gathered : all) {
    std::set<std::string> names;
    for (const NameScope& scope : gathered.scopes) AddNames(scope, answered, names);
    for (const std::string& name : names) gathered.finding.names.push_back(TextFromBytes(name));
    findings.push_back(std::move(gathered.finding));
  }
  return findings;
}

}  // namespace Corvane::PathManagement::host
