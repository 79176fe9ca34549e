#include "searchpath/host/lookup_observer.h"

namespace Corvane::PathManagement::host {

ILookupObserver::~ILookupObserver() = default;

}  // namespace Corvane::PathManagement::host
