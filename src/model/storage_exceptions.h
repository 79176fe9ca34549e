#ifndef SEARCHPATH_SRC_MODEL_STORAGE_EXCEPTIONS_H
#define SEARCHPATH_SRC_MODEL_STORAGE_EXCEPTIONS_H

#include "searchpath/model/storage_exceptions.h"

#include <string_view>

namespace foundation::storage::vfs::detail {

/// The exception with the message `invalid IRI "text": complaint; advice`.
[[nodiscard]] InvalidIRIException InvalidIRI(std::string_view complaint, std::u16string_view text,
                                             std::string_view advice = "");

}  // namespace foundation::storage::vfs::detail

#endif  // SEARCHPATH_SRC_MODEL_STORAGE_EXCEPTIONS_H
