#include "json/json_fault.h"

#include "searchpath/model/byte_text.h"

#include <array>
#include <string>

namespace Corvane::PathManagement::json {

namespace {

// In the order of `JsonFault`.
constexpr std::array<const char16_t*, 9> kWords = {
    u"not UTF-8 here",          u"not JSON here", u"deeper than 32 levels",
    u"more than 10,000 values", u"given twice",   u"missing",
    u"no such field",           u"expected ",     u"out of range"};
static_assert(kWords.size() == static_cast<std::size_t>(JsonFault::OutOfRange) + 1);

}  // namespace

const char16_t* GetWords(JsonFault fault) { return kWords.at(static_cast<std::size_t>(fault)); }

ustring GetMessage(const ustring& file, std::optional<std::size_t> line, const ustring& field,
                   const ustring& what) {
  ustring text = file;
  if (line) text += u':' + TextFromBytes(std::to_string(*line));
  text += u": ";
  if (!field.empty()) text += field + u": ";
  return text + what;
}

}  // namespace Corvane::PathManagement::json
