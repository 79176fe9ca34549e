#include "searchpath/host/lookup_rules.h"

namespace Corvane::PathManagement::host {

std::optional<LookupRules> FindRules(std::string_view name) noexcept {
  for (const NamedRules& known : kNamedRules) {
    if (known.name == name) return known.rules;
  }
  return std::nullopt;
}

}  // namespace Corvane::PathManagement::host
