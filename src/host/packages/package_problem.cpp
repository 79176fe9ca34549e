#include "searchpath/host/package_problem.h"

#include "json/json_fault.h"

namespace Corvane::PathManagement::host {

namespace {

/// The words for `fault`. The detail, if there is one, comes directly after them.
const char16_t* WordsOf(PackageFault fault) {
  switch (fault) {
    case PackageFault::Unreadable:
      return u"cannot be read: ";
    case PackageFault::NotAFile:
      return u"not a regular file";
    case PackageFault::TooLarge:
      return u"larger than 1 MiB";
    case PackageFault::UnknownField:
      return u"no such field; yours go into \"properties\"";
    case PackageFault::OutsideOfFolder:
      return u"not below the package's folder; for others write an IRI";
    case PackageFault::InvalidFolder:
      return u"";  // the detail says it all
    case PackageFault::Repeated:
      return u"the same name and version as in ";
    case PackageFault::TooMuch:
      return u"left out, since the packages before it take 64 MiB";
    default:  // those of JSON texts, which `JsonFault` has in the same order
      return json::GetWords(static_cast<json::JsonFault>(static_cast<int>(fault) -
                                                         static_cast<int>(PackageFault::NotUtf8)));
  }
}

}  // namespace

ustring PackageProblem::GetText() const {
  return json::GetMessage(file, line, field, WordsOf(fault) + detail);
}

}  // namespace Corvane::PathManagement::host
