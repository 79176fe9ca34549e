#include "searchpath/host/package_problem.h"

#include "searchpath/model/byte_text.h"

#include <array>
#include <cstddef>
#include <string>

namespace Corvane::PathManagement::host {

namespace {

/// In the order of `PackageFault`. Where a detail follows, they lead to it.
constexpr std::array<const char16_t*, 16> kWords = {
    u"cannot be read: ",
    u"not a regular file",
    u"larger than 1 MiB",
    u"not UTF-8 here",
    u"not JSON here",
    u"deeper than 32 levels",
    u"more than 10,000 values",
    u"given twice",
    u"missing",
    u"no such field; yours go into \"properties\"",
    u"expected ",
    u"out of range",
    u"not below the package's folder; for others write an IRI",
    u"",
    u"the same name and version as in ",
    u"left out, since the packages before it take 64 MiB"};
static_assert(kWords.size() == static_cast<std::size_t>(PackageFault::TooMuch) + 1);

}  // namespace

ustring PackageProblem::GetText() const {
  ustring text = file;
  if (line) text += u':' + TextFromBytes(std::to_string(*line));
  text += u": ";
  if (!field.empty()) text += field + u": ";
  return text + kWords.at(static_cast<std::size_t>(fault)) + detail;
}

}  // namespace Corvane::PathManagement::host
