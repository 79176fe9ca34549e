#ifndef SEARCHPATH_TESTS_SUPPORT_NAMES_H
#define SEARCHPATH_TESTS_SUPPORT_NAMES_H

#include "support/recording.h"

// Answers in short: "ab" for the entries a and b or for files in them, "-" for nothing.
namespace Corvane::PathManagement::test {

inline std::string Names(bool answer) { return answer ? "yes" : "no"; }
inline std::string Names(const EntryPointer& entry) {
  return entry == nullptr ? "-" : dynamic_cast<const FakeEntry&>(*entry).name;
}
inline std::string Names(const FoundItem& found) { return Names(found.GetPathEntry()); }
inline std::string Names(const OptionalFile& found) { return found ? Names(*found) : "-"; }
template <class Element>
std::string Names(const std::vector<Element>& list) {
  std::string names;
  for (const Element& element : list) names += Names(element);
  return list.capacity() == list.size() ? names : names + " and spare room";
}
inline std::string Names(const SharedEntryList& list) { return list ? Names(*list) : "no list"; }

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_SUPPORT_NAMES_H
