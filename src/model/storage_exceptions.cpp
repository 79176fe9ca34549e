#include "model/storage_exceptions.h"

#include "model/quoted_text.h"

#include <utility>

namespace foundation::storage::vfs {

Exception::Exception(std::string explanation) : message(std::move(explanation)) {}

Exception::~Exception() = default;

const char* Exception::what() const noexcept { return message.c_str(); }

InvalidIRIException::InvalidIRIException(std::string explanation)
    : Exception(std::move(explanation)) {}

InvalidIRIException::~InvalidIRIException() = default;

namespace detail {

InvalidIRIException InvalidIRI(std::string_view complaint, std::u16string_view text,
                               std::string_view advice) {
  std::string message = "invalid IRI ";
  message += Corvane::PathManagement::detail::QuotedText(text);
  message += ": ";
  message += complaint;
  if (!advice.empty()) {
    message += "; ";
    message += advice;
  }
  return InvalidIRIException(std::move(message));
}

}  // namespace detail

}  // namespace foundation::storage::vfs
