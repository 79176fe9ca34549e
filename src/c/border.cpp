#include "c/border.h"

#include "searchpath/host/invalid_listing_exception.h"
#include "searchpath/platform/current_working_folder.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace Corvane::PathManagement::c {

searchpath_status Fail(searchpath_status status, const char* message, searchpath_error* error) {
  if (error != nullptr) {
    const std::size_t size = std::min(std::strlen(message), sizeof(error->message) - 1);
    std::memcpy(error->message, message, size);
    error->message[size] = '\0';
  }
  return status;
}

searchpath_status FailByException(searchpath_error* error) {
  try {
    throw;
  } catch (const current_working_folder::FailedToAbsolutizeException& failure) {
    return Fail(SEARCHPATH_FOLDER, failure.what(), error);
  } catch (const std::invalid_argument& failure) {
    return Fail(SEARCHPATH_INVALID, failure.what(), error);
  } catch (const host::InvalidListingException& failure) {
    return Fail(SEARCHPATH_FILE, failure.what(), error);
  } catch (const std::exception& failure) {
    return Fail(SEARCHPATH_SYSTEM, failure.what(), error);
  } catch (...) {
    return Fail(SEARCHPATH_SYSTEM, "an unknown error", error);
  }
}

}  // namespace Corvane::PathManagement::c
