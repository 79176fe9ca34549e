#ifndef SEARCHPATH_TESTS_SUPPORT_PARTIAL_PATHNAME_MODEL_H
#define SEARCHPATH_TESTS_SUPPORT_PARTIAL_PATHNAME_MODEL_H

#include "searchpath/model/ustring.h"

#include <functional>
#include <string_view>
#include <vector>

// Slow, obvious models of cutting and matching pathnames, which share no code with the library.
namespace Corvane::PathManagement::test {

using NameEqual = std::function<bool(const ustring&, const ustring&)>;

enum class Form : unsigned char { Loose, Strict };

inline std::vector<ustring> NaiveSplit(std::u16string_view text, std::u16string_view separators) {
  std::vector<ustring> parts(1);
  for (const char16_t unit : text) {
    if (separators.find(unit) == separators.npos) {
      parts.back() += unit;
    } else if (!parts.back().empty()) {
      parts.emplace_back();
    }
  }
  if (parts.back().empty()) parts.pop_back();
  return parts;
}

inline bool NaiveNameMatch(const ustring& part, const ustring& name, const NameEqual& equal,
                           Form form) {
  const ustring bare = name.substr(1);  // no name is empty
  const bool isPlus = name[0] == u'+';
  const bool isAt = name[0] == u'@';
  if (form == Form::Loose) return equal(part, name) || ((isPlus || isAt) && equal(part, bare));
  if (isPlus || name == u"private") return part == name;
  if (isAt) return part == name || (part == bare && (part.empty() || part[0] != u'@'));
  return equal(part, name);
}

inline bool NaiveMatch(const std::vector<ustring>& partial, std::u16string_view folder,
                       const NameEqual& equal, Form form) {
  const std::vector<ustring> names = NaiveSplit(folder, u"/");
  if (partial.size() > names.size()) return false;
  std::size_t inFront = names.size() - partial.size();
  for (std::size_t at = 0; at < partial.size(); ++at) {
    if (!NaiveNameMatch(partial[at], names[inFront + at], equal, form)) return false;
  }
  // An empty partial pathname means any place in the folder, whose own kind then does not matter.
  if (form == Form::Loose && partial.empty() && inFront > 0) --inFront;
  for (; inFront > 0; --inFront) {
    const ustring& name = names[inFront - 1];
    const bool isPassedOver = name[0] == u'@' || name == u"private" || name == u"resources";
    if (name[0] == u'+' || (isPassedOver && form == Form::Strict)) return false;
    if (!isPassedOver) return true;
  }
  return true;
}

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_SUPPORT_PARTIAL_PATHNAME_MODEL_H
