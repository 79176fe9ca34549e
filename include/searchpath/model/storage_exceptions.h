#ifndef SEARCHPATH_MODEL_STORAGE_EXCEPTIONS_H
#define SEARCHPATH_MODEL_STORAGE_EXCEPTIONS_H

#include "searchpath/export.h"

#include <exception>
#include <string>

namespace foundation::storage::vfs {

/// The base of all errors of the storage layer.
class SEARCHPATH_EXPORT Exception : public std::exception {
 public:
  /// `explanation` is UTF-8 and says what could not be done, and with which file or text.
  explicit Exception(std::string explanation = "the storage operation failed");
  Exception(const Exception&) = default;
  Exception& operator=(const Exception&) = default;
  ~Exception() override;

  /// What failed, in English.
  [[nodiscard]] const char* what() const noexcept override;

 private:
  std::string message;
};

/// A text that is no IRI, or an operation that has no answer for this IRI.
class SEARCHPATH_EXPORT InvalidIRIException : public Exception {
 public:
  /// `explanation` says what is wrong with which text.
  explicit InvalidIRIException(std::string explanation = "invalid IRI");
  InvalidIRIException(const InvalidIRIException&) = default;
  InvalidIRIException& operator=(const InvalidIRIException&) = default;
  ~InvalidIRIException() override;
};

}  // namespace foundation::storage::vfs

#endif  // SEARCHPATH_MODEL_STORAGE_EXCEPTIONS_H
