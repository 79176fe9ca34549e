#ifndef SEARCHPATH_MODEL_USTRING_H
#define SEARCHPATH_MODEL_USTRING_H

#include <string>

namespace foundation {

/// The text of the whole library: UTF-16 code units, compared unit by unit unless said otherwise.
using ustring = std::u16string;

}  // namespace foundation

namespace Corvane::PathManagement {

using foundation::ustring;

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_MODEL_USTRING_H
