#include "searchpath/utilities/path_strings.h"

#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/constants.h"
#include "searchpath/utilities/iri_conversion.h"
#include "text/root_path.h"
#include "text/tokens.h"

namespace Corvane::PathManagement {

std::vector<ustring> SplitZentraPath(const ustring& pathString) {
  std::vector<ustring> folders;
  detail::ForEachToken(pathString, u";" + Constants::ZentraPathsepStr,
                       [&folders](std::u16string_view folder) { folders.emplace_back(folder); });
  return folders;
}

ustring RemoveRootPathFromAbsolutePath(const fl::filesystem::path& absolutePath) {
  return detail::EraseRoot(absolutePath.native(),
                           fl::filesystem::detail::extract_root_path(absolutePath));
}

PathEntryType GetPathEntryTypeFromBaseName(const ustring& baseName) noexcept {
  if (baseName.starts_with(u'+')) return PathEntryType::PlusFolder;
  if (baseName.starts_with(u'@')) return PathEntryType::AtFolder;
  if (baseName == Constants::PrivateFolderStr) return PathEntryType::PrivateFolder;
  if (baseName == Constants::ResourcesFolderStr) return PathEntryType::ResourcesFolder;
  return PathEntryType::Ordinary;
}

ustring GetPartialPathIncludingSpecialFolders(const ustring& folder) try {
  const AbsoluteIRI iri = GetIRIFromString(folder);
  if (!iri.hasParent()) return iri.getName();
  AbsoluteIRI above = iri;
  while (above.hasParent()) {
    above = above.getParent();
    const ustring name = above.getName();
    if (name.empty() || GetPathEntryTypeFromBaseName(name) == PathEntryType::Ordinary) break;
  }
  return iri.makePathRelativeTo(above);
} catch (const foundation::storage::vfs::InvalidIRIException&) {
  return {};
}

}  // namespace Corvane::PathManagement
