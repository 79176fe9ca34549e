#ifndef SEARCHPATH_SRC_HOST_TRUST_FINDING_LIST_H
#define SEARCHPATH_SRC_HOST_TRUST_FINDING_LIST_H

#include "host/trust/intruders.h"
#include "searchpath/host/trust.h"

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace Corvane::PathManagement::host {

/// The names that a finding could take over.
struct NameScope {
  // The number, in path order, of a searched folder. A name that an earlier folder answers cannot
  // be taken over.
  std::size_t fromFolder = 0;
  std::string prefix = {};  // "lib/": all names below it; "lib": that one name; "": all names
};

/// Each name with the number, in path order, of the folder that answers it.
using AnsweredNames = std::map<std::string, std::size_t, std::less<>>;

/// Gathers findings. Within one part of the path, as parts were given, an object has at most one
/// finding of each kind.
class FindingList {
 public:
  /// What is added from now on comes from the part of the path called `text`.
  void BeginPart(ustring text);

  /// Adds that those in `who` can do `kind` to `object`, which matters for the searched `folder`
  /// and the names in `scopes`. If this part has a finding of that kind for the object, adds `who`
  /// and `scopes` to that finding: in a sticky folder each link can be replaced by its own owner,
  /// so each link there may add somebody. If `who` is empty, does nothing. An `object` of "" is the
  /// root.
  void Add(TrustKind kind, const std::string& folder, const std::string& object,
           const std::vector<Intruder>& who, const std::vector<NameScope>& scopes);

  /// The findings, with the names in `answered` that each could take over.
  [[nodiscard]] std::vector<TrustFinding> Take(const AnsweredNames& answered) &&;

 private:
  struct Gathered {
    TrustFinding finding;
    std::vector<NameScope> scopes;
  };

  ustring part;
  // The findings of this part: by kind and object, an index in all.
  std::map<std::pair<TrustKind, std::string>, std::size_t> inPart;
  std::vector<Gathered> all;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_TRUST_FINDING_LIST_H
