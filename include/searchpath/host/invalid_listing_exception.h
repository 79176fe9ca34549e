#ifndef SEARCHPATH_HOST_INVALID_LISTING_EXCEPTION_H
#define SEARCHPATH_HOST_INVALID_LISTING_EXCEPTION_H

#include "searchpath/export.h"

#include <stdexcept>
#include <string>

namespace Corvane::PathManagement::host {

/// A cache, saved listing or receipt cannot be used: it cannot be opened or read, is none of these,
/// has another version, or is damaged. The message gives the reason, with "it" for what was read:
/// "it is cut off".
class SEARCHPATH_EXPORT InvalidListingException : public std::runtime_error {
 public:
  /// `why` is the message.
  explicit InvalidListingException(const std::string& why) : std::runtime_error(why) {}
  InvalidListingException(const InvalidListingException&) = default;
  InvalidListingException& operator=(const InvalidListingException&) = default;
  ~InvalidListingException() override;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_INVALID_LISTING_EXCEPTION_H
