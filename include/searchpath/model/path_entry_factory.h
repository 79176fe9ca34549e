#ifndef SEARCHPATH_MODEL_PATH_ENTRY_FACTORY_H
#define SEARCHPATH_MODEL_PATH_ENTRY_FACTORY_H

#include "searchpath/export.h"
#include "searchpath/model/absolute_iri.h"

#include <iosfwd>

namespace Corvane::PathManagement {

/// Holds path entries, and defines the format in which they are saved.
///
/// Threads: only `const` operations of one factory may be called at once.
/// Errors: any exception means that the operation failed.
class SEARCHPATH_EXPORT IPathEntryFactory {
 public:
  virtual ~IPathEntryFactory();

  /// Adds the entries that `WriteEntries` has written to `stream`, with their folders below `root`.
  /// The stream may hold any bytes, and may have failed to open. Anything but a complete list of
  /// entries raises an exception; the factory may then hold some of the entries.
  virtual void ReadEntries(std::istream& stream, const AbsoluteIRI& root) = 0;

  /// Writes the entries to `stream`, with their folders relative to `root`.
  virtual void WriteEntries(std::ostream& stream, const AbsoluteIRI& root) const = 0;

 protected:
  IPathEntryFactory() = default;
  IPathEntryFactory(const IPathEntryFactory&) = default;
  IPathEntryFactory& operator=(const IPathEntryFactory&) = default;
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_MODEL_PATH_ENTRY_FACTORY_H
