#include "host/names/shared_names.h"

#include "host/names/folded_name.h"
#include "host/names/name_block.h"
#include "searchpath/host/filename_comparison.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/utilities/file_lookup.h"

#include <algorithm>

namespace Corvane::PathManagement::host {

namespace {

/// How much of the end of `file` is `extension`; empty when it ends otherwise. Names that are one
/// when case is ignored may differ in length.
std::size_t LengthAtEnd(std::string_view file, const std::pair<ustring, std::string>& extension,
                        FilenameMatchingPolicy policy) {
  const auto& [text, bytes] = extension;
  if (file.ends_with(bytes)) return bytes.size();
  if (policy != FilenameMatchingPolicy::IgnoreCase) return std::string_view::npos;
  const std::size_t longest = std::min(file.size(), 3 * bytes.size());
  for (std::size_t length = 1; length <= longest; ++length) {
    const ustring end = TextFromBytes(file.substr(file.size() - length));
    if (AreSameFilename(end, text, policy)) return length;
  }
  return std::string_view::npos;
}

/// Whether a look-up of `name` tries extensions: it has none of its own.
bool IsTriedWithExtensions(std::string_view name) {
  return !CreateSearchTargetWithExtensionInFilenamePreferred(TextFromBytes(name), {u".x"})
              .GetExtensions()
              .empty();
}

}  // namespace

SharedNames::SharedNames(const std::vector<ustring>& extensionList,
                         FilenameMatchingPolicy matchingPolicy)
    : hasExtensions(!extensionList.empty()), policy(matchingPolicy) {
  for (const ustring& extension : extensionList) {
    // One that is no text of bytes ends no file.
    if (auto bytes = BytesFromText(extension)) extensions.emplace_back(extension, *bytes);
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
  bool isWhole = false;
  ForEachName(name, [&](std::string_view lookedUp) { isWhole = isWhole || lookedUp == name; });
  return isWhole;
}

/// Calls use(name) for each name that `file` is looked up by; often for none.
template <class Use>
void SharedNames::ForEachName(std::string_view file, const Use& use) const {
  if (!hasExtensions) use(file);
  for (const auto& extension : extensions) {
    const std::size_t length = LengthAtEnd(file, extension, policy);
    if (length == std::string_view::npos || length == file.size()) continue;
    const std::string_view rest = file.substr(0, file.size() - length);
    use(IsTriedWithExtensions(rest) ? rest : file);
  }
}

void SharedNames::Add(std::string_view name) {
  std::string buffer;
  const bool folds = policy == FilenameMatchingPolicy::IgnoreCase;
  const std::string_view key = folds ? FoldName(name, buffer) : name;
  const auto found = names.find(key);
  if (found == names.end()) {
    const bool isName = key == name;
    const std::string_view kept = isName ? name : foldedKeys.emplace_back(key);
    names.emplace(kept, Name{.spelling = name, .folder = folderCount});
    return;
  }
  Name& known = found->second;
  known.isShared = true;
  known.isRespelled = known.isRespelled || known.spelling != name;
  if (known.folder == folderCount) known.spelling = std::min(known.spelling, name);
}

std::vector<std::string> SharedNames::GetShared() const {
  std::vector<std::string> shared;
  for (const auto& [key, name] : names) {
    if (name.isShared) shared.emplace_back(name.spelling);
  }
  return shared;
}

std::vector<std::string> SharedNames::GetRespelled() const {
  std::vector<std::string> respelled;
  for (const auto& [key, name] : names) {
    if (name.isRespelled) respelled.emplace_back(name.spelling);
  }
  return respelled;
}

}  // namespace Corvane::PathManagement::host
