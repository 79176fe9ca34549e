#include "host/trust/accounts.h"

#include <pwd.h>

#include <cerrno>
#include <grp.h>
#include <mutex>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

/// Asks a database with get(record, buffer, size, found), and calls use(record) if one is found.
/// `buffer` is for the texts of the record; get() returns ERANGE when it is too small.
template <class Record, class Get, class Use>
void AskDatabase(const Get& get, const Use& use) {
  std::vector<char> buffer(4096);
  Record record = {};
  Record* found = nullptr;
  while (get(&record, buffer.data(), buffer.size(), &found) == ERANGE) {
    buffer.resize(2 * buffer.size());
  }
  if (found != nullptr) use(*found);
}

template <class Use>
void AskForUser(const std::string& name, const Use& use) {
  AskDatabase<passwd>([&](auto... out) { return getpwnam_r(name.c_str(), out...); }, use);
}

std::vector<Suspect> ReadUsers() {
  // All threads share one reading position in the database.
  static std::mutex mutex;
  const std::lock_guard lock(mutex);
  std::vector<Suspect> users;
  setpwent();
  for (const passwd* user = getpwent(); user != nullptr; user = getpwent()) {
    users.push_back({user->pw_uid, user->pw_gid, user->pw_name});
  }
  endpwent();
  return users;
}

}  // namespace

// The first suspect has no id: what that one may do, everyone may do.
Accounts::Accounts(uid_t user) : trusted(user), suspects(1), knownUsers({0, user}) {
  for (Suspect& suspect : ReadUsers()) {
    if (knownUsers.insert(suspect.id.value()).second) suspects.push_back(std::move(suspect));
  }
}

void Accounts::AddSuspectsOf(const AccessFacts& facts) {
  AddUser(facts.owner);
  // Asking for a group adds its members to the suspects.
  static_cast<void>(GroupOf(facts.group));
  for (const AccessEntry& entry : facts.list) {
    if (entry.kind == AccessEntry::Kind::User) AddUser(entry.id);
    if (entry.kind == AccessEntry::Kind::Group) static_cast<void>(GroupOf(entry.id));
  }
}

PermissionSeeker Accounts::GetSeeker(const Suspect& suspect) {
  return {suspect.id, [this, &suspect](gid_t group) {
            return suspect.id &&
                   (suspect.primaryGroup == group || GroupOf(group).members.contains(suspect.name));
          }};
}

/// A file may belong to a user whom the database does not list though it knows the id, or to an id
/// without an account. Such an id has no primary group, which -1 stands for.
void Accounts::AddUser(uid_t user) {
  if (!knownUsers.insert(user).second) return;
  Suspect suspect{.id = user, .primaryGroup = static_cast<gid_t>(-1), .name = std::to_string(user)};
  AskDatabase<passwd>([&](auto... out) { return getpwuid_r(user, out...); },
                      [&](const passwd& found) {
                        suspect.primaryGroup = found.pw_gid;
                        suspect.name = found.pw_name;
                      });
  suspects.push_back(std::move(suspect));
}

Accounts::Group& Accounts::GroupOf(gid_t id) {
  const auto [known, isNew] = groups.emplace(id, Group{.name = std::to_string(id), .members = {}});
  if (!isNew) return known->second;
  AskDatabase<group>([&](auto... out) { return getgrgid_r(id, out...); },
                     [&](const group& found) {
                       known->second.name = found.gr_name;
                       for (char** name = found.gr_mem; *name != nullptr; ++name) {
                         known->second.members.emplace(*name);
                       }
                     });
  for (const std::string& name : known->second.members) {
    if (const auto user = FindUserId(name)) AddUser(*user);
  }
  return known->second;
}

std::optional<uid_t> FindUserId(const std::string& name) {
  std::optional<uid_t> id;
  AskForUser(name, [&](const passwd& found) { id = found.pw_uid; });
  return id;
}

}  // namespace Corvane::PathManagement::host
