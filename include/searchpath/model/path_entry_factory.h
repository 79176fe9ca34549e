#ifndef SEARCHPATH_MODEL_PATH_ENTRY_FACTORY_H
#define SEARCHPATH_MODEL_PATH_ENTRY_FACTORY_H

#include "searchpath/export.h"
#include "searchpath/model/absolute_iri.h"

#include <iosfwd>

namespace Corvane::PathManagement {

/// Holds path entries, and owns the form in which they are saved.
///
/// Threads: no two calls on one factory at once, except of `const` operations.
/// Errors: any exception; what it means is up to the caller.
class SEARCHPATH_EXPORT IPathEntryFactory {
 public:
  virtual ~IPathEntryFactory();

  /// Takes in the entries that `WriteEntries` wrote, their folders below `root`. The bytes may be
  /// anything, or the stream one that could not be opened; what is not whole is refused with an
  /// exception, and the factory may then hold some of the entries.
  virtual void ReadEntries(std::istream& stream, const AbsoluteIRI& root) = 0;

  /// Writes the entries, their folders told relative to `root`.
  virtual void WriteEntries(std::ostream& stream, const AbsoluteIRI& root) const = 0;

 protected:
  IPathEntryFactory() = default;
  IPathEntryFactory(const IPathEntryFactory&) = default;
  IPathEntryFactory& operator=(const IPathEntryFactory&) = default;
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_MODEL_PATH_ENTRY_FACTORY_H
