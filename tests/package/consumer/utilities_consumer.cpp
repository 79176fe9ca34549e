#include <iostream>
#include <searchpath/utilities.h>

// Text to IRI and back, and an exception across the border of the library.
int main() {
  using namespace Corvane::PathManagement;
  const AbsoluteIRI iri = GetIRIFromString(u"/opt/tools");
  if (iri.toString() != u"file:///opt/tools" || GetStringFromIRI(iri) != u"/opt/tools") return 1;
  try {
    static_cast<void>(AbsoluteIRI(u"no scheme"));
  } catch (const foundation::storage::vfs::InvalidIRIException&) {
    std::cout << "utilities_consumer\n";
  }
}
