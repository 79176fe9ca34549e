#include "host/names/shared_names.h"

#include "host/names/folded_name.h"
#include "host/names/name_block.h"
#include "searchpath/model/byte_text.h"

#include <algorithm>

namespace Corvane::PathManagement::host {

namespace {

/// How many bytes at the end of `file` are `extension`; npos when `file` does not end with it.
/// Where case is ignored, `extension` is folded, and the bytes of `file` may be more or fewer.
std::size_t LengthAtEnd(std::string_view file, std::string_view extension, bool foldsCase) {
  if (!foldsCase) return file.ends_with(extension) ? extension.size() : std::string_view::npos;
  // The folded form of a name is at least a third as long as the name.
  const std::size_t longest = std::min(file.size(), 3 * extension.size());
  std::string buffer;
  for (std::size_t length = 0; length <= longest; ++length) {
    if (FoldName(file.substr(file.size() - length), buffer) == extension) return length;
  }
  return std::string_view::npos;
}

/// Whether a look-up of the plain `name` tries extensions, by the rule of
/// `CreateSearchTargetWithExtensionInFilenamePreferred`: not for a name that has an extension,
/// which begins at a dot after the first character, and not for a name that ends with a dot.
bool IsTriedWithExtensions(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  return dot == std::string_view::npos || (dot == 0 && name.size() > 1);
}

}  // namespace

SharedNames::SharedNames(const std::vector<ustring>& extensionList, FilenameMatchingPolicy policy)
    : hasExtensions(!extensionList.empty()),
      foldsCase(policy == FilenameMatchingPolicy::IgnoreCase) {
  std::string buffer;
  for (const ustring& extension : extensionList) {
    // No file name ends with a text that cannot become bytes.
    const auto bytes = BytesFromText(extension);
    if (bytes) extensions.emplace_back(foldsCase ? FoldName(*bytes, buffer) : *bytes);
  }
}

void SharedNames::AddFolder(const NameBlock& files) {
  for (std::size_t file = 0; file < files.size(); ++file) {
    ForEachName(files[file], [this](std::string_view name) { Add(name); });
  }
  ++folderCount;
}

bool SharedNames::IsName(std::string_view name) const {
  if (!hasExtensions || IsTriedWithExtensions(name)) return true;
  bool isFound = false;
  ForEachName(name, [&](std::string_view lookedUp) { isFound = isFound || lookedUp == name; });
  return isFound;
}

/// Calls use(name) for the name by which `file` is collected, once for each extension that it ends
/// with: the name without the extension where a look-up of that tries extensions.
template <class Use>
void SharedNames::ForEachName(std::string_view file, const Use& use) const {
  if (!hasExtensions) use(file);
  for (const auto& extension : extensions) {
    const std::size_t length = LengthAtEnd(file, extension, foldsCase);
    if (length == std::string_view::npos || length == file.size()) continue;
    const std::string_view rest = file.substr(0, file.size() - length);
    // "a.b.zt" is found by its whole name only: a look-up of "a.b" tries no extensions.
    use(IsTriedWithExtensions(rest) ? rest : file);
  }
}

void SharedNames::Add(std::string_view name) {
  std::string buffer;
  const std::string_view key = foldsCase ? FoldName(name, buffer) : name;
  const auto found = indices.find(key);
  if (found == indices.end()) {
    const bool isOwnKey = key == name;  // and lies in a name block, which outlives this
    indices.emplace(isOwnKey ? name : foldedKeys.emplace_back(key), names.size());
    names.push_back({.spelling = name, .folder = folderCount});
    return;
  }
  Name& known = names[found->second];
  known.isShared = hasShared = true;
  known.isRespelled = known.isRespelled || known.spelling != name;
  if (known.folder == folderCount) known.spelling = std::min(known.spelling, name);
}

std::vector<std::string> SharedNames::SpellingsOf(bool Name::* condition) const {
  std::vector<std::string> spellings;
  for (const Name& name : names) {
    if (name.*condition) spellings.emplace_back(name.spelling);
  }
  return spellings;
}

std::vector<std::string> SharedNames::GetShared() const { return SpellingsOf(&Name::isShared); }

std::vector<std::string> SharedNames::GetRespelled() const {
  return SpellingsOf(&Name::isRespelled);
}

}  // namespace Corvane::PathManagement::host
