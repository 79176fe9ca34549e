#include "searchpath/host/invalid_listing_exception.h"

namespace Corvane::PathManagement::host {

InvalidListingException::~InvalidListingException() = default;

}  // namespace Corvane::PathManagement::host
