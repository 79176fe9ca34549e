#ifndef SEARCHPATH_SRC_HOST_TRUST_INTRUDERS_H
#define SEARCHPATH_SRC_HOST_TRUST_INTRUDERS_H

#include "host/trust/accounts.h"
#include "host/trust/path_walk.h"
#include "searchpath/host/trust.h"

#include <vector>

namespace Corvane::PathManagement::host {

/// Those who are not trusted and can do a certain thing to an object.
struct Intruders {
  std::vector<Intruder> owners;  // who can because they own the object
  std::vector<Intruder> others;  // who can because they may write it

  /// The owners and the others.
  [[nodiscard]] std::vector<Intruder> Join() const;
};

/// Finds out who can do what, from facts alone: it asks the disk nothing.
///
/// Users who cannot pass each folder above an object can do nothing to it. The owner of a folder
/// can get any right to it.
class IntruderSearch {
 public:
  /// Precondition: `knownAccounts` outlives this object.
  explicit IntruderSearch(Accounts& knownAccounts) : accounts(knownAccounts) {}

  /// Who can make names in `folder`; the result's `owners` are those of the folder.
  [[nodiscard]] Intruders FindCreators(const PassedFolder& folder) const;
  /// Who can rename or remove `object`, which stands in `folder`, and put something else in its
  /// place; the result's `owners` are those of the folder.
  [[nodiscard]] Intruders FindReplacers(const PassedFolder& folder,
                                        const AccessFacts& object) const;
  /// Who can write to `file`, which stands in `folder`; the result's `owners` are the file's.
  [[nodiscard]] Intruders FindWriters(const PassedFolder& folder, const AccessFacts& file) const;

 private:
  /// A suspect who has the rights in question, and how.
  struct Able {
    const Suspect* suspect = nullptr;  // never null in results
    Permission permission;
  };

  [[nodiscard]] std::vector<Able> FindAble(const PassedFolder* above, const AccessFacts& object,
                                           unsigned wanted) const;
  [[nodiscard]] Intruders Describe(const std::vector<Able>& able) const;
  [[nodiscard]] Intruder Describe(const Able& one) const;

  Accounts& accounts;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_TRUST_INTRUDERS_H
