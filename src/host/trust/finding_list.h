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

/// Names that a finding could take over.
struct NameScope {
  std::size_t fromFolder = 0;  // names that an earlier folder of the path answers are out of reach
  std::string prefix = {};     // ended by "/", or else one name; "" for all names
};

/// Which folder of the path answers each name: its number in path order.
using AnsweredNames = std::map<std::string, std::size_t, std::less<>>;

/// Gathers findings. Within a part of the path, each object is reported once in each way.
class FindingList {
 public:
  void BeginPart(ustring text);

  /// Does nothing when there is nobody.
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
  std::map<std::pair<TrustKind, std::string>, std::size_t> inPart;  // by kind and object: an index
  std::vector<Gathered> all;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_TRUST_FINDING_LIST_H
