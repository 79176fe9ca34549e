// The destructors of the interfaces, defined here so that each vtable is in the library once.

#include "searchpath/model/path.h"
#include "searchpath/model/path_entry.h"
#include "searchpath/model/path_entry_factory.h"

namespace Corvane::PathManagement {

IPath::~IPath() = default;

IPathEntry::~IPathEntry() = default;

IPathEntryFactory::~IPathEntryFactory() = default;

}  // namespace Corvane::PathManagement
