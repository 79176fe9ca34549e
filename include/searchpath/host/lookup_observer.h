#ifndef SEARCHPATH_HOST_LOOKUP_OBSERVER_H
#define SEARCHPATH_HOST_LOOKUP_OBSERVER_H

#include "searchpath/export.h"
#include "searchpath/model/found_item.h"
#include "searchpath/model/path_entry.h"

#include <memory>
#include <vector>

namespace Corvane::PathManagement::host {

/// Is called for each folder in which a look-up searches, in order, with what was found there. A
/// look-up that is observed uses no index, which would answer for all folders at once, but asks one
/// folder after the other. The result of the look-up is the same.
///
/// Threads: calls come from the thread that looks up.
/// Errors: an exception thrown here ends the look-up and reaches its caller.
class SEARCHPATH_EXPORT ILookupObserver {
 public:
  virtual ~ILookupObserver();

  /// Called once for each folder asked. `files` are the matches in it, the best first; often none.
  virtual void FolderAsked(const std::shared_ptr<const IPathEntry>& folder,
                           const std::vector<FoundItem>& files) = 0;

 protected:
  ILookupObserver() = default;
  ILookupObserver(const ILookupObserver&) = default;
  ILookupObserver& operator=(const ILookupObserver&) = default;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_LOOKUP_OBSERVER_H
