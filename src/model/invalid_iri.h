#ifndef SEARCHPATH_SRC_MODEL_INVALID_IRI_H
#define SEARCHPATH_SRC_MODEL_INVALID_IRI_H

#include "searchpath/model/absolute_iri.h"

#include <string_view>

namespace foundation::storage::vfs::detail {

/// The exception that says what is wrong with which text and, unless `advice` is empty, what helps.
[[nodiscard]] InvalidIRIException InvalidIRI(std::string_view complaint, std::u16string_view text,
                                             std::string_view advice);

}  // namespace foundation::storage::vfs::detail

#endif  // SEARCHPATH_SRC_MODEL_INVALID_IRI_H
