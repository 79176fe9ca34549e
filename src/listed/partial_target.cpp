#include "listed/partial_target.h"

#include "searchpath/model/constants.h"
#include "searchpath/utilities/iri_conversion.h"

namespace Corvane::PathManagement::detail {

std::optional<PartialTarget> SplitTarget(const SearchTarget& target) {
  const ustring& name = target.GetName();
  const auto separator = name.find_last_of(Constants::PathnameSeparatorStr);
  if (separator == ustring::npos) return std::nullopt;
  return PartialTarget{name.substr(0, separator + 1),
                       SearchTarget(name.substr(separator + 1), target.GetExtensions())};
}

bool BeginsAtRoot(const ustring& pathname) {
  return !pathname.empty() &&
         Constants::PathnameSeparatorStr.find(pathname.front()) != ustring::npos;
}

std::shared_ptr<const IPathEntry> EntryNamed(const IPath& path, const ustring& pathname,
                                             FilenameMatchingPolicy policy) {
  try {
    return path.GetPathEntryFromAbsoluteIRI(GetIRIFromString(pathname), policy);
  } catch (const foundation::storage::vfs::InvalidIRIException&) {
    return nullptr;
  }
}

}  // namespace Corvane::PathManagement::detail
