#include "searchpath/host/package_problem.h"

#include "searchpath/model/byte_text.h"

#include <string>

namespace Corvane::PathManagement::host {

namespace {

const char16_t* WordsFor(PackageFault fault) {
  switch (fault) {
    case PackageFault::Unreadable:
      return u"cannot be read: ";
    case PackageFault::NotAFile:
      return u"not a regular file";
    case PackageFault::TooLarge:
      return u"larger than 1 MiB";
    case PackageFault::NotUtf8:
      return u"not UTF-8 here";
    case PackageFault::Syntax:
      return u"not JSON here";
    case PackageFault::TooDeep:
      return u"deeper than 32 levels";
    case PackageFault::TooManyValues:
      return u"more than 10,000 values";
    case PackageFault::RepeatedField:
      return u"given twice";
    case PackageFault::MissingField:
      return u"missing";
    case PackageFault::UnknownField:
      return u"no such field; yours go into \"properties\"";
    case PackageFault::WrongType:
      return u"expected ";
    case PackageFault::OutOfRange:
      return u"out of range";
    case PackageFault::OutsideOfFolder:
      return u"not below the package's folder; for others write an IRI";
    case PackageFault::Repeated:
      return u"the same name and version as in ";
    case PackageFault::TooMuch:
      return u"left out, since the packages before it take 64 MiB";
    case PackageFault::InvalidFolder:
      break;
  }
  return u"";  // the detail says it all
}

}  // namespace

ustring PackageProblem::GetText() const {
  ustring text = file;
  if (line) text += u':' + TextFromBytes(std::to_string(*line));
  text += u": ";
  if (!field.empty()) text += field + u": ";
  return text + WordsFor(fault) + detail;
}

}  // namespace Corvane::PathManagement::host
