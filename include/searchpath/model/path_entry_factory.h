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

  /// Adds the entries that `WriteEntries` wrote, with their folders below `root`. The stream may
  /// hold any bytes, and may have failed to open. Whatever is not a complete list of entries is
  /// refused with an exception; the factory may then hold some of the entries.
  virtual void ReadEntries(std::istream& stream, const AbsoluteIRI& root) = 0;

  /// Writes the entries, with their folders relative to `root`.
  virtual void WriteEntries(std::ostream& stream, const AbsoluteIRI& root) const = 0;

 protected:
  IPathEntryFactory() = default;
  IPathEntryFactory(const IPathEntryFactory&) = default;
  IPathEntryFactory& operator=(const IPathEntryFactory&) = default;
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_MODEL_PATH_ENTRY_FACTORY_H
