#include "c/texts.h"

#include "searchpath/model/byte_text.h"

#include <stdexcept>

namespace Corvane::PathManagement::c {

AnyTexts TextsOf(const char* const* texts, std::size_t count) {
  AnyTexts all;
  for (std::size_t at = 0; at < count; ++at) {
    if (texts == nullptr || texts[at] == nullptr) throw std::invalid_argument("a text is null");
    all.push_back(AnyText(texts[at]));
  }
  return all;
}

host::Lookup LookupOf(const searchpath_lookup* lookup) {
  if (lookup == nullptr || lookup->name == nullptr) throw std::invalid_argument("no name is given");
  host::Lookup made{.name = lookup->name,
                    .extensions = TextsOf(lookup->extensions, lookup->extension_count)};
  if (lookup->from_folder != nullptr) made.fromFolder = AnyText(lookup->from_folder);
  if (lookup->ignore_case != 0) made.policy = FilenameMatchingPolicy::IgnoreCase;
  return made;
}

std::string BytesOf(const ustring& text) { return BytesFromText(text).value_or(""); }

searchpath_text View(const std::string& text) { return {text.c_str(), text.size()}; }

}  // namespace Corvane::PathManagement::c
